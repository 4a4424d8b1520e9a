#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace Zorv::Workbook {

/// File that holds an archive: an ordinary file, which is read in place, or the bytes of a pipe,
/// which can be read only once.
struct PackageFile {
  std::filesystem::path path;
  std::optional<std::string> bytes;  ///< of a pipe; nothing for an ordinary file

  [[nodiscard]] std::uint64_t getSize() const;
};

/// Reads the first bytes of an ordinary file, or all bytes of a pipe. Throws PartError if the file
/// cannot be read, if a pipe has more than `pipeLimit` bytes, and if the first bytes show that the
/// file is not an archive. The message names what it is: an encrypted workbook, a binary workbook
/// of the older kind, a text.
[[nodiscard]] PackageFile openPackageFile(std::filesystem::path const& file,
                                          std::uint64_t pipeLimit);

}  // namespace Zorv::Workbook
