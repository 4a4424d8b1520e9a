#include "workbook/Package/Archive.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <variant>

#include <fmt/format.h>
#include <zip.h>

#include "workbook/Package/PartError.h"
#include "workbook/Package/PartKey.h"

namespace Zorv::Workbook {

namespace {

/// XML of this size is about one cell.
constexpr std::uint64_t bytesPerStep = 32;

[[noreturn]] void failToOpen(int code) {
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  std::string const reason = zip_error_strerror(&error);
  zip_error_fini(&error);
  if (code == ZIP_ER_OPEN || code == ZIP_ER_READ || code == ZIP_ER_NOENT) {
    throw PartError({}, {}, fmt::format("cannot be read ({})", reason));
  }
  throw PartError({}, {},
                  fmt::format("is no .xlsx workbook, or is damaged or cut off: its list of parts "
                              "cannot be read ({}); fetch the file anew",
                              reason));
}

/// Limits and counts that the parts of one file share.
struct FileUse {
  Limits const& limits;
  std::uint64_t fileBytes;
  WorkBudget* budget;
  std::uint64_t& unpackedBytes;
};

/// Unpacked bytes of one part, counted against the limits.
class PartSource final : public ByteSource {
public:
  PartSource(zip_file_t* part, std::string name, std::uint64_t packedBytes, PartUse use,
             FileUse const& file) noexcept
      : _part(part),
        _name(std::move(name)),
        _packedBytes(packedBytes),
        _use(use),
        _byteLimit(use == PartUse::Whole ? file.limits.wholePartBytes : file.limits.unpackedBytes),
        _file(file) {}

  std::size_t read(char* bytes, std::size_t size) override {
    zip_int64_t const count = zip_fread(_part.get(), bytes, size);
    if (count < 0) {
      fail(fmt::format("is damaged and cannot be unpacked ({}); fetch the file anew",
                       zip_file_strerror(_part.get())));
    }
    auto const unpacked = static_cast<std::size_t>(count);
    _unpackedBytes += unpacked;
    checkPart();
    if (_use != PartUse::Again) {
      _file.unpackedBytes += unpacked;
      checkFile();
    }
    if (_file.budget != nullptr) {
      _file.budget->spend(unpacked / bytesPerStep);
    }
    return unpacked;
  }

  [[nodiscard]] std::string const& getName() const noexcept override { return _name; }

private:
  [[noreturn]] void fail(std::string problem) const {
    throw PartError(_name, {}, std::move(problem));
  }

  void checkPart() const {
    Limits const& limits = _file.limits;
    if (_unpackedBytes > _byteLimit) {
      fail(fmt::format("unpacks to more than {} bytes, which is the limit", _byteLimit));
    }
    if (_unpackedBytes > limits.ratioFreeBytes &&
        _unpackedBytes / std::max<std::uint64_t>(_packedBytes, 1) >= limits.unpackRatio) {
      fail(
          fmt::format("unpacks to more than {} times its size, as no honest workbook does; it is "
                      "refused",
                      limits.unpackRatio));
    }
  }

  void checkFile() const {
    Limits const& limits = _file.limits;
    if (_file.unpackedBytes > limits.unpackedBytes) {
      fail(fmt::format("the file unpacks to more than {} bytes, which is the limit",
                       limits.unpackedBytes));
    }
    if (_file.unpackedBytes / partsOfFreeRatio > limits.ratioFreeBytes &&
        _file.unpackedBytes / std::max<std::uint64_t>(_file.fileBytes, 1) >= limits.unpackRatio) {
      fail(
          fmt::format("the file unpacks to more than {} times its size, as no honest workbook "
                      "does; it is refused",
                      limits.unpackRatio));
    }
  }

  static constexpr std::uint64_t partsOfFreeRatio = 8;

  struct Close {
    void operator()(zip_file_t* part) const noexcept { zip_fclose(part); }
  };

  std::unique_ptr<zip_file_t, Close> _part;
  std::string _name;
  std::uint64_t _packedBytes;
  PartUse _use;
  std::uint64_t _byteLimit;
  FileUse _file;
  std::uint64_t _unpackedBytes = 0;
};

/// An archive in memory; the bytes must outlive it. Null and `code` on failure.
zip_t* openBytes(std::string_view bytes, int& code) {
  zip_error_t error;
  zip_error_init(&error);
  zip_t* archive = nullptr;
  if (zip_source_t* const source =
          zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error)) {
    archive = zip_open_from_source(source, ZIP_RDONLY, &error);
    if (archive == nullptr) {
      zip_source_free(source);
    }
  }
  code = zip_error_code_zip(&error);
  zip_error_fini(&error);
  return archive;
}

}  // namespace

void Archive::Close::operator()(zip* archive) const noexcept { zip_discard(archive); }

Archive::Archive(PackageFile file, Limits const& limits, WorkBudget* budget)
    : _file(std::move(file)), _fileBytes(_file.getSize()), _limits(limits), _budget(budget) {
  int code = ZIP_ER_OK;
  auto const bytes = _file.findBytes();
  _zip.reset(
      bytes ? openBytes(*bytes, code)
            : zip_open(std::get<std::filesystem::path>(_file.content).c_str(), ZIP_RDONLY, &code));
  if (!_zip) {
    failToOpen(code);
  }
  indexParts(limits);
}

Archive::~Archive() = default;

void Archive::indexParts(Limits const& limits) {
  zip_int64_t const count = zip_get_num_entries(_zip.get(), 0);
  if (count > 0 && static_cast<std::uint64_t>(count) > limits.partCount) {
    throw PartError({}, {},
                    fmt::format("holds {} parts, but {} is the limit", count, limits.partCount));
  }
  for (zip_int64_t index = 0; index < count; ++index) {
    auto const place = static_cast<zip_uint64_t>(index);
    if (char const* name = zip_get_name(_zip.get(), place, ZIP_FL_ENC_GUESS)) {
      _partsByName.emplace(toPartKey(name), place);
    }
  }
}

bool Archive::has(std::string_view part) const { return _partsByName.contains(toPartKey(part)); }

std::unique_ptr<ByteSource> Archive::open(std::string_view part, PartUse use) {
  std::string name(part);
  auto const found = _partsByName.find(toPartKey(part));
  if (found == _partsByName.end()) {
    throw PartError(name, {}, "is missing from the file; the file is damaged, fetch it anew");
  }
  zip_stat_t stat;
  zip_stat_init(&stat);
  zip_stat_index(_zip.get(), found->second, 0, &stat);
  if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE) {
    throw PartError(name, {}, "is encrypted; save the file without a password and try again");
  }
  zip_file_t* file = zip_fopen_index(_zip.get(), found->second, 0);
  if (!file) {
    throw PartError(name, {},
                    fmt::format("is damaged and cannot be unpacked ({}); fetch the file anew",
                                zip_strerror(_zip.get())));
  }
  return std::make_unique<PartSource>(file, std::move(name), stat.comp_size, use,
                                      FileUse{_limits, _fileBytes, _budget, _unpackedBytes});
}

}  // namespace Zorv::Workbook
