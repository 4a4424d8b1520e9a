#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "workbook/Limits.h"
#include "workbook/Package/ByteSource.h"

struct zip;

namespace Zorv::Workbook {

/// How a part is read, which decides the limit of its size.
enum class PartUse : std::uint8_t {
  Whole,     ///< kept in memory as a whole
  Streamed,  ///< read piece by piece
};

/// The parts of a file that is a zip archive.
///
/// Part names are paths without a leading slash; letter case does not matter, and archives that
/// part folders with backslashes are read, too. Streams that open() returned must not outlive the
/// archive. Threads: exclusive access only.
class Archive {
public:
  /// Throws PartError where the file is no archive, or damaged, or beyond the limits.
  Archive(std::filesystem::path const& file, Limits const& limits);
  ~Archive();
  Archive(Archive const&) = delete;
  Archive& operator=(Archive const&) = delete;

  [[nodiscard]] bool has(std::string_view part) const;

  /// The unpacked bytes of a part. Reading them throws PartError where the part is damaged or
  /// unpacks to more than the limits allow.
  /// Throws PartError where there is no such part, or where it is encrypted.
  [[nodiscard]] std::unique_ptr<ByteSource> open(std::string_view part, PartUse use);

private:
  void indexParts(Limits const& limits);

  struct Close {
    void operator()(zip* archive) const noexcept;
  };

  std::unique_ptr<zip, Close> _zip;
  Limits _limits;
  std::uint64_t _unpackedBytes = 0;
  std::unordered_map<std::string, std::uint64_t> _partsByName;
};

}  // namespace Zorv::Workbook
