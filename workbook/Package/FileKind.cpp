#include "workbook/Package/FileKind.h"

#include <array>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include "workbook/Package/PartError.h"

namespace Zorv::Workbook {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view compoundFileMark = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;
constexpr std::string_view archiveMark = "PK"sv;
// The name of the stream that holds an encrypted package, in UTF-16 (MS-OFFCRYPTO, 2.3.1).
constexpr std::string_view encryptedStreamName =
    "E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0"sv;

/// Whether the rest of a stream holds a text; reads it in pieces.
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

}  // namespace

void refuseForeignFile(std::filesystem::path const& file) {
  std::error_code error;
  if (!std::filesystem::exists(file, error)) {
    refuse("there is no such file");
  }
  if (std::filesystem::is_directory(file, error)) {
    refuse("is a folder and no workbook");
  }
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    refuse("cannot be opened for reading");
  }
  std::array<char, 8> bytes{};
  stream.read(bytes.data(), bytes.size());
  std::string_view const beginning(bytes.data(), static_cast<std::size_t>(stream.gcount()));
  if (beginning.empty()) {
    refuse("is empty");
  }
  if (beginning == compoundFileMark) {
    refuse(contains(stream, encryptedStreamName)
               ? "is protected with a password; save it without one and try again"
               : "is a binary workbook of the older kind (.xls) or another compound file; save it "
                 "as .xlsx and try again");
  }
  if (!beginning.starts_with(archiveMark)) {
    refuse("is no .xlsx workbook: it is no zip archive");
  }
}

}  // namespace Zorv::Workbook
