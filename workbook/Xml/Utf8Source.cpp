#include "workbook/Xml/Utf8Source.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <string_view>
#include <utility>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include "workbook/Package/PartError.h"

namespace Zorv::Workbook {

namespace {

constexpr std::size_t largestPiece = 65'536;

using namespace std::string_view_literals;

/// Size of the well-formed character at the front of some bytes (The Unicode Standard, table 3-7);
/// 0 if there is none, or if it is cut off. NUL is not allowed in XML.
std::size_t sizeOfCharacter(unsigned char const* bytes, std::size_t size) noexcept {
  unsigned char const lead = bytes[0];
  if (lead < 0x80) {
    return lead == 0 ? 0 : 1;
  }
  std::size_t const expected = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || size < expected) {
    return 0;
  }
  unsigned const second = bytes[1];
  bool const isOverlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  bool const isOutside = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
  bool const areTrails = std::all_of(bytes + 1, bytes + expected,
                                     [](unsigned char byte) { return (byte & 0xC0U) == 0x80; });
  return areTrails && !isOverlong && !isOutside ? expected : 0;
}

/// Number of bytes at the front that are whole, well-formed characters.
std::size_t countWellFormed(unsigned char const* bytes, std::size_t size) noexcept {
  constexpr std::uint64_t highBits = 0x8080808080808080U;
  constexpr std::uint64_t lowBits = 0x0101010101010101U;
  std::size_t at = 0;
  while (at < size) {
    std::uint64_t word = 0;
    if (size - at >= sizeof word) {
      std::memcpy(&word, bytes + at, sizeof word);
      // Eight bytes of ASCII, none of them zero.
      if (((word | (word - lowBits)) & highBits) == 0) {
        at += sizeof word;
        continue;
      }
    }
    std::size_t const character = sizeOfCharacter(bytes + at, size - at);
    if (character == 0) {
      break;
    }
    at += character;
  }
  return at;
}

}  // namespace

Utf8Source::Utf8Source(std::unique_ptr<ByteSource> bytes) noexcept : _bytes(std::move(bytes)) {}

std::size_t Utf8Source::read(char* bytes, std::size_t size) {
  while (_textBegin == _text.size() && !_ended) {
    refill();
  }
  std::size_t const count = std::min(size, _text.size() - _textBegin);
  std::copy_n(_text.data() + _textBegin, count, bytes);
  _textBegin += count;
  return count;
}

void Utf8Source::refill() {
  _text.clear();
  _textBegin = 0;
  std::size_t const kept = _raw.size();
  _raw.resize(kept + _pieceSize);
  std::size_t const count = _bytes->read(_raw.data() + kept, _pieceSize);
  _raw.resize(kept + count);
  _pieceSize = std::min(2 * _pieceSize, largestPiece);
  _ended = count == 0;
  constexpr std::size_t markSize = 4;
  if (_encoding == Encoding::Unknown && (_raw.size() >= markSize || _ended)) {
    findEncoding();
  }
  if (_encoding == Encoding::Utf8) {
    takeUtf8();
  } else if (_encoding != Encoding::Unknown) {
    convertUtf16();
  }
  if (_ended && !_raw.empty()) {
    fail();
  }
}

/// Detects the encoding by the byte-order mark or, without one, by the first character, which is
/// `<` (Extensible Markup Language 1.0, appendix F).
void Utf8Source::findEncoding() {
  std::string_view const beginning(_raw.data(), _raw.size());
  std::size_t mark = 0;
  if (beginning.starts_with("\xFF\xFE"sv) || beginning.starts_with("<\0"sv)) {
    _encoding = Encoding::Utf16LittleEndian;
    mark = beginning.front() == '<' ? 0 : 2;
  } else if (beginning.starts_with("\xFE\xFF"sv) || beginning.starts_with("\0<"sv)) {
    _encoding = Encoding::Utf16BigEndian;
    mark = beginning.front() == '\0' ? 0 : 2;
  } else {
    _encoding = Encoding::Utf8;
    mark = beginning.starts_with("\xEF\xBB\xBF"sv) ? 3 : 0;
  }
  _raw.erase(_raw.begin(), _raw.begin() + static_cast<std::ptrdiff_t>(mark));
}

void Utf8Source::takeUtf8() {
  std::size_t const whole =
      countWellFormed(reinterpret_cast<unsigned char const*>(_raw.data()), _raw.size());
  constexpr std::size_t longestCharacter = 4;
  if (_raw.size() - whole >= longestCharacter) {
    fail();
  }
  std::vector<char> rest(_raw.begin() + static_cast<std::ptrdiff_t>(whole), _raw.end());
  _raw.resize(whole);
  _text.swap(_raw);
  _raw = std::move(rest);
}

void Utf8Source::convertUtf16() {
  auto const unitAt = [this](std::size_t at) {
    auto const first = static_cast<unsigned char>(_raw[at]);
    auto const second = static_cast<unsigned char>(_raw[at + 1]);
    bool const little = _encoding == Encoding::Utf16LittleEndian;
    return static_cast<char16_t>(little ? second << 8U | first : first << 8U | second);
  };
  std::size_t at = 0;
  while (at + 2 <= _raw.size()) {
    UChar32 character = unitAt(at);
    std::size_t next = at + 2;
    if (U16_IS_LEAD(character)) {
      if (next + 2 > _raw.size()) {
        break;
      }
      char16_t const trail = unitAt(next);
      character = U16_IS_TRAIL(trail) ? U16_GET_SUPPLEMENTARY(character, trail) : 0;
      next += 2;
    }
    if (character == 0 || U_IS_SURROGATE(character)) {
      fail();
    }
    std::array<char, U8_MAX_LENGTH> encoded{};
    int length = 0;
    U8_APPEND_UNSAFE(encoded, length, character);
    _text.insert(_text.end(), encoded.begin(), encoded.begin() + length);
    at = next;
  }
  _raw.erase(_raw.begin(), _raw.begin() + static_cast<std::ptrdiff_t>(at));
}

void Utf8Source::fail() const {
  throw PartError(
      getName(), {},
      "is written neither in UTF-8 nor in UTF-16, as XML in a workbook must be; the file is "
      "damaged, fetch it anew or save it again");
}

}  // namespace Zorv::Workbook
