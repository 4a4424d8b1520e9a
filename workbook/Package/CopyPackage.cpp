#include "workbook/Package/CopyPackage.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <optional>
#include <string_view>

#include <fmt/format.h>
#include <zip.h>

#include "workbook/Package/PartError.h"
#include "workbook/Package/PartKey.h"

namespace Zorv::Workbook {

namespace {

struct DiscardZip {
  void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
};
using ZipPtr = std::unique_ptr<zip_t, DiscardZip>;

[[noreturn]] void failToWrite(std::string const& part, std::string const& reason) {
  throw PartError(part, {}, fmt::format("cannot be written ({})", reason));
}

ZipPtr openArchive(std::filesystem::path const& file, int flags) {
  int code = ZIP_ER_OK;
  ZipPtr archive(zip_open(file.c_str(), flags, &code));
  if (!archive) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    std::string const reason = zip_error_strerror(&error);
    zip_error_fini(&error);
    failToWrite({}, reason);
  }
  return archive;
}

/// The place of a part; the first of those that have its name counts.
std::optional<zip_uint64_t> findPart(zip_t* archive, std::string const& key) {
  auto const count = static_cast<zip_uint64_t>(zip_get_num_entries(archive, 0));
  for (zip_uint64_t place = 0; place < count; ++place) {
    char const* const name = zip_get_name(archive, place, ZIP_FL_ENC_GUESS);
    if (name != nullptr && toPartKey(name) == key) {
      return place;
    }
  }
  return std::nullopt;
}

/// The bytes must live until the archive is closed.
void replacePart(zip_t* archive, std::string const& part, std::string const& bytes) {
  auto const place = findPart(archive, toPartKey(part));
  if (!place) {
    failToWrite(part, "there is no such part");
  }
  zip_stat_t stat;
  zip_stat_init(&stat);
  if (zip_stat_index(archive, *place, 0, &stat) != 0) {
    failToWrite(part, zip_strerror(archive));
  }
  zip_source_t* const source = zip_source_buffer(archive, bytes.data(), bytes.size(), 0);
  if (source == nullptr) {
    failToWrite(part, zip_strerror(archive));
  }
  if (zip_file_replace(archive, *place, source, 0) != 0) {
    zip_source_free(source);
    failToWrite(part, zip_strerror(archive));
  }
  // A part that was stored as it is stays so, and the change leaves no date behind.
  bool const isStored =
      (stat.valid & ZIP_STAT_COMP_METHOD) != 0 && stat.comp_method == ZIP_CM_STORE;
  zip_set_file_compression(archive, *place, isStored ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0);
  if ((stat.valid & ZIP_STAT_MTIME) != 0) {
    zip_file_set_mtime(archive, *place, stat.mtime, 0);
  }
}

/// Copies a file without its access rights.
void copyBytes(std::filesystem::path const& source, std::filesystem::path const& target) {
  std::ifstream input(source, std::ios::binary);
  std::ofstream output(target, std::ios::binary | std::ios::trunc);
  output << input.rdbuf();
  output.close();
  if (!input || !output) {
    failToWrite({}, "the file could not be copied; is the disk full?");
  }
}

bool isSamePart(zip_t* a, zip_t* b, zip_uint64_t place, PartContents const& replaced) {
  zip_stat_t first;
  zip_stat_t second;
  if (zip_stat_index(a, place, 0, &first) != 0 || zip_stat_index(b, place, 0, &second) != 0 ||
      std::string_view(first.name) != second.name) {
    return false;
  }
  std::string const key = toPartKey(first.name);
  bool const isReplaced = std::ranges::any_of(
      replaced, [&key](auto const& part) { return toPartKey(part.first) == key; });
  return isReplaced || (first.size == second.size && first.comp_size == second.comp_size &&
                        first.crc == second.crc && first.comp_method == second.comp_method);
}

}  // namespace

void copyPackage(std::filesystem::path const& source, std::filesystem::path const& target,
                 PartContents const& replaced) {
  copyBytes(source, target);
  if (replaced.empty()) {
    return;
  }
  ZipPtr archive = openArchive(target, 0);
  for (auto const& [part, bytes] : replaced) {
    replacePart(archive.get(), part, bytes);
  }
  if (zip_close(archive.get()) != 0) {
    failToWrite({}, zip_strerror(archive.get()));
  }
  static_cast<void>(archive.release());  // closing frees it
}

bool hasSameOtherParts(std::filesystem::path const& a, std::filesystem::path const& b,
                       PartContents const& replaced) {
  ZipPtr const first = openArchive(a, ZIP_RDONLY);
  ZipPtr const second = openArchive(b, ZIP_RDONLY);
  zip_int64_t const count = zip_get_num_entries(first.get(), 0);
  if (zip_get_num_entries(second.get(), 0) != count) {
    return false;
  }
  for (zip_int64_t place = 0; place < count; ++place) {
    if (!isSamePart(first.get(), second.get(), static_cast<zip_uint64_t>(place), replaced)) {
      return false;
    }
  }
  return true;
}

}  // namespace Zorv::Workbook
