#include "tool/Text/TextTable.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <utility>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace Zorv::Tool {

namespace {

constexpr UChar32 replacementCharacter = 0xFFFD;

/// Calls `visit(codePoint)` for each character; bytes that are not UTF-8 give a negative number.
template <class Visitor>
void forEachCharacter(std::string_view text, Visitor const& visit) {
  auto const* bytes = reinterpret_cast<std::uint8_t const*>(text.data());
  auto const length = static_cast<std::int64_t>(text.size());
  for (std::int64_t at = 0; at < length;) {
    UChar32 character = 0;
    U8_NEXT(bytes, at, length, character);
    visit(character);
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

}  // namespace

std::string toPrintable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  forEachCharacter(text, [&](UChar32 character) {
    if (character < 0) {
      append(result, replacementCharacter);
    } else {
      append(result, isUnprintable(character) ? UChar32{' '} : character);
    }
  });
  return result;
}

std::size_t displayWidth(std::string_view text) noexcept {
  std::size_t width = 0;
  forEachCharacter(text, [&](UChar32 character) { width += widthOf(character); });
  return width;
}

std::string cutToWidth(std::string_view text, std::size_t width) {
  std::string front;
  std::size_t used = 0;
  forEachCharacter(text, [&](UChar32 character) {
    used += widthOf(character);
    if (used <= width) {
      append(front, character);
    }
  });
  return front;
}

TextTable::TextTable(std::vector<std::string> headings) : _widths(headings.size()) {
  addRow(std::move(headings));
}

void TextTable::addRow(std::vector<std::string> row) {
  assert(row.size() == _widths.size());
  for (std::size_t column = 0; column < row.size(); ++column) {
    row[column] = toPrintable(row[column]);
    _widths[column] = std::max(_widths[column], displayWidth(row[column]));
  }
  _rows.push_back(std::move(row));
}

std::string TextTable::format() const {
  std::string text;
  for (auto const& row : _rows) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      text += row[column];
      if (column + 1 < row.size()) {
        text.append(_widths[column] - displayWidth(row[column]) + 2, ' ');
      }
    }
    text += '\n';
  }
  return text;
}

}  // namespace Zorv::Tool
