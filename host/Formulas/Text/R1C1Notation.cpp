#include "Formulas/Text/R1C1Notation.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>

#include <fmt/format.h>

#include "DOM/Table.h"
#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas::R1C1Notation {

namespace {

/// A row or a column of a corner; not given in references to whole columns or rows.
struct Axis {
  bool isGiven = false;
  std::uint32_t position = 0;
};

struct Corner {
  Axis row;
  Axis column;
};

/// Takes a number, with a sign where that is allowed; nothing where there is none.
std::optional<long> takeNumber(std::string_view& text) noexcept {
  long number = 0;
  auto const read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc()) {
    return std::nullopt;
  }
  text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
  return number;
}

/// Takes the distance from `base` in brackets, or a number from 1 on, or nothing, which is `base`.
std::optional<long> takePosition(std::string_view& text, long base) noexcept {
  if (!text.empty() && isAsciiDigit(text.front())) {
    auto const number = takeNumber(text);
    return number ? std::optional(*number - 1) : std::nullopt;
  }
  if (text.empty() || text.front() != '[') {
    return base;
  }
  text.remove_prefix(1);
  auto const distance = takeNumber(text);
  constexpr long farthest = DOM::Table::rowCount;
  if (!distance || std::abs(*distance) > farthest || text.empty() || text.front() != ']') {
    return std::nullopt;
  }
  text.remove_prefix(1);
  return base + *distance;
}

/// Takes a row or a column, if its letter is next. False where it is off the sheet or malformed.
bool takeAxis(std::string_view& text, char letter, std::uint32_t base, unsigned long count,
              Axis& axis) noexcept {
  if (text.empty() || toAsciiUpper(text.front()) != letter) {
    return true;
  }
  text.remove_prefix(1);
  auto const position = takePosition(text, base);
  if (!position || *position < 0 || static_cast<unsigned long>(*position) >= count) {
    return false;
  }
  axis = {true, static_cast<std::uint32_t>(*position)};
  return true;
}

std::optional<Corner> readCorner(std::string_view text, std::uint32_t row,
                                 std::uint32_t column) noexcept {
  Corner corner;
  bool const isRead = takeAxis(text, 'R', row, DOM::Table::rowCount, corner.row) &&
                      takeAxis(text, 'C', column, DOM::Table::columnCount, corner.column) &&
                      text.empty() && (corner.row.isGiven || corner.column.isGiven);
  return isRead ? std::optional(corner) : std::nullopt;
}

std::string writeAxis(char letter, std::uint32_t position, bool isAbsolute) {
  return isAbsolute ? fmt::format("{}{}", letter, position + 1)
                    : fmt::format("{}[{}]", letter, position + 1);
}

}  // namespace

std::optional<Corners> read(std::string_view text, std::uint32_t row,
                            std::uint32_t column) noexcept {
  std::size_t const colon = text.find(':');
  auto const first = readCorner(text.substr(0, colon), row, column);
  auto const last =
      colon == std::string_view::npos ? first : readCorner(text.substr(colon + 1), row, column);
  bool const isAlike = first && last && first->row.isGiven == last->row.isGiven &&
                       first->column.isGiven == last->column.isGiven;
  if (!isAlike) {
    return std::nullopt;
  }
  Corners corners{0, 0, DOM::Table::rowCount - 1, DOM::Table::columnCount - 1};
  if (first->row.isGiven) {
    corners.firstRow = std::min(first->row.position, last->row.position);
    corners.lastRow = std::max(first->row.position, last->row.position);
  }
  if (first->column.isGiven) {
    corners.firstColumn = std::min(first->column.position, last->column.position);
    corners.lastColumn = std::max(first->column.position, last->column.position);
  }
  return corners;
}

std::string write(std::uint32_t row, std::uint32_t column, bool isRowAbsolute,
                  bool isColumnAbsolute) {
  return writeAxis('R', row, isRowAbsolute) + writeAxis('C', column, isColumnAbsolute);
}

}  // namespace Zorv::Formulas::R1C1Notation
