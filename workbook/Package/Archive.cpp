#include "workbook/Package/Archive.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>
#include <zip.h>

#include "Utils/CaseFolding.h"
#include "workbook/Package/PartError.h"

namespace Zorv::Workbook {

namespace {

std::string toKey(std::string_view part) {
  std::string key = foldCase(part);
  std::replace(key.begin(), key.end(), '\\', '/');
  key.erase(0, std::min(key.find_first_not_of('/'), key.size()));
  return key;
}

/// XML of this size is about one cell.
constexpr std::uint64_t bytesPerStep = 32;

[[noreturn]] void failToOpen(int code) {
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  std::string const reason = zip_error_strerror(&error);
  zip_error_fini(&error);
  throw PartError({}, {},
                  fmt::format("is no .xlsx workbook, or is damaged or cut off: its list of parts "
                              "cannot be read ({}); fetch the file anew",
                              reason));
}

/// Unpacked bytes of one part, counted against the limits.
class PartSource final : public ByteSource {
public:
  PartSource(zip_file_t* file, std::string name, std::uint64_t packedBytes, PartUse use,
             Limits const& limits, WorkBudget* budget, std::uint64_t& archiveUnpackedBytes) noexcept
      : _file(file),
        _name(std::move(name)),
        _packedBytes(packedBytes),
        _byteLimit(use == PartUse::Whole ? limits.wholePartBytes : limits.unpackedBytes),
        _limits(limits),
        _budget(budget),
        _archiveUnpackedBytes(archiveUnpackedBytes) {}

  std::size_t read(char* bytes, std::size_t size) override {
    zip_int64_t const count = zip_fread(_file.get(), bytes, size);
    if (count < 0) {
      throw PartError(_name, {},
                      fmt::format("is damaged and cannot be unpacked ({}); fetch the file anew",
                                  zip_file_strerror(_file.get())));
    }
    auto const unpacked = static_cast<std::size_t>(count);
    _unpackedBytes += unpacked;
    _archiveUnpackedBytes += unpacked;
    checkLimits();
    if (_budget != nullptr) {
      _budget->spend(unpacked / bytesPerStep);
    }
    return unpacked;
  }

  [[nodiscard]] std::string const& getName() const noexcept override { return _name; }

private:
  void checkLimits() const {
    if (_unpackedBytes > _byteLimit) {
      throw PartError(_name, {},
                      fmt::format("unpacks to more than {} bytes, which is the limit", _byteLimit));
    }
    if (_archiveUnpackedBytes > _limits.unpackedBytes) {
      throw PartError(_name, {},
                      fmt::format("the file unpacks to more than {} bytes, which is the limit",
                                  _limits.unpackedBytes));
    }
    if (_unpackedBytes > _limits.ratioFreeBytes &&
        _unpackedBytes / std::max<std::uint64_t>(_packedBytes, 1) >= _limits.unpackRatio) {
      throw PartError(_name, {},
                      fmt::format("unpacks to more than {} times its size, as no honest workbook "
                                  "does; it is refused",
                                  _limits.unpackRatio));
    }
  }

  struct Close {
    void operator()(zip_file_t* file) const noexcept { zip_fclose(file); }
  };

  std::unique_ptr<zip_file_t, Close> _file;
  std::string _name;
  std::uint64_t _packedBytes;
  std::uint64_t _byteLimit;
  Limits const& _limits;
  WorkBudget* _budget;
  std::uint64_t _unpackedBytes = 0;
  std::uint64_t& _archiveUnpackedBytes;
};

}  // namespace

void Archive::Close::operator()(zip* archive) const noexcept { zip_discard(archive); }

Archive::Archive(std::filesystem::path const& file, Limits const& limits, WorkBudget* budget)
    : _limits(limits), _budget(budget) {
  int code = ZIP_ER_OK;
  _zip.reset(zip_open(file.c_str(), ZIP_RDONLY, &code));
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
      _partsByName.emplace(toKey(name), place);
    }
  }
}

bool Archive::has(std::string_view part) const { return _partsByName.contains(toKey(part)); }

std::unique_ptr<ByteSource> Archive::open(std::string_view part, PartUse use) {
  std::string name(part);
  auto const found = _partsByName.find(toKey(part));
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
  return std::make_unique<PartSource>(file, std::move(name), stat.comp_size, use, _limits, _budget,
                                      _unpackedBytes);
}

}  // namespace Zorv::Workbook
