#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "Utils/WorkBudget.h"
#include "workbook/Limits.h"
#include "workbook/Package/ByteSource.h"
#include "workbook/Package/PackageFile.h"

struct zip;

namespace Zorv::Workbook {

/// Use of a part, which decides the limit of its size.
enum class PartUse : std::uint8_t {
  Whole,     ///< held in memory as a whole
  Streamed,  ///< read piece by piece
  Again,     ///< read piece by piece once more; does not count towards the limits of the file
};

/// Zip archive of the parts of a workbook file.
///
/// Part names are paths without a leading slash; letter case does not matter, and backslashes in
/// the archive count as slashes. Streams that open() returned must not outlive the archive.
/// Threads: exclusive access only.
class Archive {
public:
  /// Reading spends from the budget, which is borrowed and may be null. Throws PartError if the
  /// file is not an archive, damaged, or beyond the limits.
  Archive(PackageFile file, Limits const& limits, WorkBudget* budget);
  ~Archive();
  Archive(Archive const&) = delete;
  Archive& operator=(Archive const&) = delete;

  /// Size of the file.
  [[nodiscard]] std::uint64_t getFileBytes() const noexcept { return _fileBytes; }

  [[nodiscard]] bool has(std::string_view part) const;

  /// The unpacked bytes of a part. Throws PartError if there is no such part, or if it is
  /// encrypted. Reading the stream throws PartError if the part is damaged or unpacks to more than
  /// the limits allow, and what the budget throws.
  [[nodiscard]] std::unique_ptr<ByteSource> open(std::string_view part, PartUse use);

private:
  void indexParts(Limits const& limits);

  struct Close {
    void operator()(zip* archive) const noexcept;
  };

  PackageFile _file;
  std::uint64_t _fileBytes;
  std::unique_ptr<zip, Close> _zip;  ///< reads the bytes of the file
  Limits _limits;
  WorkBudget* _budget;
  std::uint64_t _unpackedBytes = 0;
  std::unordered_map<std::string, std::uint64_t> _partsByName;
};

}  // namespace Zorv::Workbook
