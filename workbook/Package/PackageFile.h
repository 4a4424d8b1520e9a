#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace Zorv::Workbook {

/// File that holds an archive.
struct PackageFile {
  /// An ordinary file, which is read in place; the bytes of a pipe, which can be read only once; or
  /// bytes that the caller keeps in memory.
  std::variant<std::filesystem::path, std::string, std::string_view> content;

  [[nodiscard]] std::uint64_t getSize() const;
  /// The bytes, unless they are in an ordinary file. Borrowed.
  [[nodiscard]] std::optional<std::string_view> findBytes() const noexcept;
};

/// Reads the first bytes of an ordinary file, or all bytes of a pipe. Throws PartError if the file
/// cannot be read, if a pipe has more than `pipeLimit` bytes, and if the first bytes show that the
/// file is not an archive. The message names what it is: an encrypted workbook, a binary workbook
/// of the older kind, a text.
[[nodiscard]] PackageFile openPackageFile(std::filesystem::path const& file,
                                          std::uint64_t pipeLimit);

/// The same for a file in memory, which is borrowed.
[[nodiscard]] PackageFile openPackageBytes(std::string_view bytes);

}  // namespace Zorv::Workbook
