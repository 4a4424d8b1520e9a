#include "Formulas/Parsing/A1Text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

#include "DOM/Table.h"
#include "Formulas/Parsing/Characters.h"

namespace Zorv::Formulas::A1Text {

namespace {

constexpr std::size_t maximalLetters = 3;

/// Takes a `$` away and tells whether there was none.
bool takeRelative(std::string_view& text) noexcept {
  bool const isRelative = text.empty() || text.front() != '$';
  text.remove_prefix(isRelative ? 0 : 1);
  return isRelative;
}

/// The number of a column, counted from 1.
std::uint32_t toColumnNumber(std::string_view letters) noexcept {
  std::uint32_t number = 0;
  for (char const letter : letters) {
    number = number * 26 + static_cast<std::uint32_t>(toUpperAscii(letter) - 'A' + 1);
  }
  return number;
}

/// A row's number counted from 1, or one too large for any sheet; nothing without digits, and for
/// numbers that begin with 0.
std::optional<unsigned long> toRowNumber(std::string_view digits) noexcept {
  if (digits.empty() || digits.front() == '0' || !std::ranges::all_of(digits, isDigit)) {
    return std::nullopt;
  }
  unsigned long number = 0;
  auto const read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return read.ec == std::errc() ? number : DOM::Table::rowCount + 1;
}

}  // namespace

CellText readCell(std::string_view text) noexcept {
  CellText result;
  result.cell.column.isRelative = takeRelative(text);
  auto const letters =
      static_cast<std::size_t>(std::ranges::find_if_not(text, isLetter) - text.begin());
  if (letters == 0 || letters > maximalLetters) {
    return result;
  }
  std::uint32_t const column = toColumnNumber(text.substr(0, letters));
  text.remove_prefix(letters);
  result.cell.row.isRelative = takeRelative(text);
  auto const row = toRowNumber(text);
  if (!row) {
    return result;
  }
  result.cell.column.position = column - 1;
  result.cell.row.position = static_cast<std::uint32_t>(*row - 1);
  result.shape = *row > DOM::Table::rowCount        ? Shape::PastRows
                 : column > DOM::Table::columnCount ? Shape::PastColumns
                                                    : Shape::Inside;
  return result;
}

std::optional<Coordinate> readColumn(std::string_view text) noexcept {
  bool const isRelative = takeRelative(text);
  if (text.empty() || text.size() > maximalLetters || !std::ranges::all_of(text, isLetter)) {
    return std::nullopt;
  }
  std::uint32_t const column = toColumnNumber(text);
  if (column > DOM::Table::columnCount) {
    return std::nullopt;
  }
  return Coordinate{column - 1, isRelative};
}

std::optional<Coordinate> readRow(std::string_view text) noexcept {
  bool const isRelative = takeRelative(text);
  auto const row = toRowNumber(text);
  if (!row || *row > DOM::Table::rowCount) {
    return std::nullopt;
  }
  return Coordinate{static_cast<std::uint32_t>(*row - 1), isRelative};
}

}  // namespace Zorv::Formulas::A1Text
