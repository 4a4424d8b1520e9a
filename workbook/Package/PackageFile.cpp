#include "workbook/Package/PackageFile.h"

#include <array>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "workbook/Package/PartError.h"

namespace Zorv::Workbook {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view compoundFileMark = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;
constexpr std::string_view archiveMark = "PK"sv;
// The name of the stream that holds an encrypted package, in UTF-16 (MS-OFFCRYPTO, 2.3.1).
constexpr std::string_view encryptedStreamName =
    "E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0"sv;

/// True if the rest of a stream holds a text; reads it in pieces.
bool contains(std::istream& stream, std::string_view wanted) {
  std::string window;
  std::array<char, 65'536> piece{};
  while (stream.read(piece.data(), piece.size()) || stream.gcount() > 0) {
    window.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
    if (window.find(wanted) != std::string::npos) {
      return true;
    }
    if (window.size() > wanted.size()) {
      window.erase(0, window.size() - wanted.size());
    }
  }
  return false;
}

[[noreturn]] void refuse(std::string problem) { throw PartError({}, {}, std::move(problem)); }

/// Refuses what does not begin as an archive does. `isEncrypted()` searches the whole file.
template <class IsEncrypted>
void refuseForeign(std::string_view beginning, IsEncrypted const& isEncrypted) {
  if (beginning.empty()) {
    refuse("is empty");
  }
  if (beginning.starts_with(compoundFileMark)) {
    refuse(isEncrypted()
               ? "is protected with a password; save it without one and try again"
               : "is a binary workbook of the older kind (.xls) or another compound file; save it "
                 "as .xlsx and try again");
  }
  if (!beginning.starts_with(archiveMark)) {
    refuse("is no .xlsx workbook: it is no zip archive");
  }
}

void refuseForeignFile(std::istream& stream) {
  std::array<char, compoundFileMark.size()> bytes{};
  stream.read(bytes.data(), bytes.size());
  std::string_view const beginning(bytes.data(), static_cast<std::size_t>(stream.gcount()));
  refuseForeign(beginning, [&stream] { return contains(stream, encryptedStreamName); });
}

void refuseForeignBytes(std::string_view bytes) {
  refuseForeign(bytes, [bytes] { return bytes.find(encryptedStreamName) != std::string::npos; });
}

std::string readPipe(std::istream& stream, std::uint64_t limit) {
  std::string bytes;
  std::array<char, 65'536> piece{};
  while (stream.read(piece.data(), piece.size()) || stream.gcount() > 0) {
    bytes.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
    if (bytes.size() > limit) {
      refuse(
          fmt::format("is a pipe with more than {} bytes, which is the limit; write it to a file "
                      "and try again",
                      limit));
    }
  }
  return bytes;
}

}  // namespace

std::uint64_t PackageFile::getSize() const {
  if (auto const* path = std::get_if<std::filesystem::path>(&content)) {
    std::error_code error;
    std::uintmax_t const size = std::filesystem::file_size(*path, error);
    return error ? 0 : size;
  }
  return findBytes()->size();
}

std::optional<std::string_view> PackageFile::findBytes() const noexcept {
  if (auto const* pipe = std::get_if<std::string>(&content)) {
    return *pipe;
  }
  auto const* memory = std::get_if<std::string_view>(&content);
  return memory != nullptr ? std::optional(*memory) : std::nullopt;
}

PackageFile openPackageFile(std::filesystem::path const& file, std::uint64_t pipeLimit) {
  std::error_code error;
  if (!std::filesystem::exists(file, error)) {
    refuse(error ? fmt::format("cannot be opened for reading ({})", error.message())
                 : "there is no such file");
  }
  if (std::filesystem::is_directory(file, error)) {
    refuse("is a folder and no workbook");
  }
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    refuse("cannot be opened for reading");
  }
  if (std::filesystem::is_regular_file(file, error)) {
    refuseForeignFile(stream);
    return {file};
  }
  std::string bytes = readPipe(stream, pipeLimit);
  refuseForeignBytes(bytes);
  return {std::move(bytes)};
}

PackageFile openPackageBytes(std::string_view bytes) {
  refuseForeignBytes(bytes);
  return {bytes};
}

}  // namespace Zorv::Workbook
