#include "words/Printable.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace Zorv::Words {

namespace {

constexpr UChar32 replacementCharacter = 0xFFFD;
constexpr std::string_view ellipsis = "...";

/// Calls `visit(codePoint)` for each character until it returns false; bytes that are not UTF-8
/// give a negative number.
template <class Visitor>
void visitCharacters(std::string_view text, Visitor const& visit) {
  auto const* bytes = reinterpret_cast<std::uint8_t const*>(text.data());
  auto const length = static_cast<std::int64_t>(text.size());
  for (std::int64_t at = 0; at < length;) {
    UChar32 character = 0;
    U8_NEXT(bytes, at, length, character);
    if (!visit(character)) {
      return;
    }
  }
}

void append(std::string& text, UChar32 character) {
  std::array<std::uint8_t, U8_MAX_LENGTH> bytes{};
  std::int32_t length = 0;
  U8_APPEND_UNSAFE(bytes, length, character);
  text.append(reinterpret_cast<char const*>(bytes.data()), static_cast<std::size_t>(length));
}

bool isUnprintable(UChar32 character) noexcept {
  // Format characters other than the joiners could reorder or hide the text around them.
  auto const type = u_charType(character);
  return type == U_CONTROL_CHAR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR ||
         (type == U_FORMAT_CHAR && character != 0x200C && character != 0x200D);
}

std::size_t widthOf(UChar32 character) noexcept {
  auto const type = u_charType(character);
  if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR) {
    return 0;
  }
  auto const eastAsian = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
  return eastAsian == U_EA_WIDE || eastAsian == U_EA_FULLWIDTH ? 2 : 1;
}

/// JSON escapes of a character: one, or two surrogates.
void appendEscaped(std::string& text, UChar32 character) {
  if (U_IS_BMP(character)) {
    text += fmt::format("\\u{:04x}", character);
  } else {
    text += fmt::format("\\u{:04x}\\u{:04x}", static_cast<unsigned>(U16_LEAD(character)),
                        static_cast<unsigned>(U16_TRAIL(character)));
  }
}

}  // namespace

bool isPlain(std::string_view text) noexcept {
  // No early exit, so that the compiler looks at many bytes at once.
  bool plain = true;
  for (char const character : text) {
    plain &= ' ' <= character && character <= '~';
  }
  return plain;
}

std::string toPrintable(std::string_view text) {
  if (isPlain(text)) {
    return std::string(text);
  }
  std::string result;
  result.reserve(text.size());
  visitCharacters(text, [&](UChar32 character) {
    if (character < 0) {
      append(result, replacementCharacter);
    } else {
      append(result, isUnprintable(character) ? UChar32{' '} : character);
    }
    return true;
  });
  return result;
}

std::size_t displayWidth(std::string_view text) noexcept {
  if (isPlain(text)) {
    return text.size();
  }
  std::size_t width = 0;
  visitCharacters(text, [&](UChar32 character) {
    width += widthOf(character);
    return true;
  });
  return width;
}

std::string cutToWidth(std::string_view text, std::size_t width) {
  std::string front;
  std::size_t used = 0;
  visitCharacters(text, [&](UChar32 character) {
    used += widthOf(character);
    if (used <= width) {
      append(front, character);
    }
    return used <= width;
  });
  return front;
}

std::string shorten(std::string_view text, std::size_t width) {
  // Marks without a width could make any number of bytes fit.
  constexpr std::size_t mostBytesPerColumn = 16;
  bool const isLong = text.size() > width * mostBytesPerColumn;
  auto front = toPrintable(isLong ? text.substr(0, width * mostBytesPerColumn) : text);
  return isLong || displayWidth(front) > width
             ? cutToWidth(front, width - ellipsis.size()).append(ellipsis)
             : front;
}

std::string escapeUnprintable(std::string json) {
  constexpr UChar32 deleteCharacter = 0x7F;
  // Few texts have a character beyond ASCII, or the last one of ASCII.
  if (std::all_of(json.begin(), json.end(), [](char c) { return '\0' <= c && c < '\x7F'; })) {
    return json;
  }
  std::string result;
  visitCharacters(json, [&](UChar32 character) {
    if (character < deleteCharacter || !isUnprintable(character)) {
      append(result, character);
    } else {
      appendEscaped(result, character);
    }
    return true;
  });
  return result;
}

std::string toMessageLine(std::string_view text) {
  constexpr std::size_t longestFront = 500;
  constexpr std::size_t longestEnd = 200;
  // Some bytes may be half a character; they are replaced like other bytes that are not UTF-8.
  if (text.size() <= longestFront + longestEnd) {
    return toPrintable(text);
  }
  return toPrintable(text.substr(0, longestFront)).append(" ... ") +
         toPrintable(text.substr(text.size() - longestEnd));
}

}  // namespace Zorv::Words
