#include "DOM/A1Notation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <utility>

#include "DOM/Table.h"
#include "Utils/CaseFolding.h"

namespace Zorv::DOM::A1Notation {

namespace {

constexpr std::uint32_t letterCount = 26;

bool takeDollar(std::string_view& text) noexcept {
  bool const isThere = text.starts_with('$');
  text.remove_prefix(isThere ? 1 : 0);
  return isThere;
}

/// Takes a column of at most three letters; returns its number from 1, or 0 where there is none.
std::uint32_t takeColumn(std::string_view& text) noexcept {
  constexpr std::size_t maxLetters = 3;
  std::uint32_t number = 0;
  std::size_t size = 0;
  for (; size < std::min(text.size(), maxLetters) && isAsciiLetter(text[size]); ++size) {
    number = number * letterCount + static_cast<std::uint32_t>(toAsciiUpper(text[size]) - 'A' + 1);
  }
  text.remove_prefix(size);
  return number;
}

/// Takes a row; returns its number from 1, some number past the last row for any larger one, or 0
/// where there is none.
std::uint32_t takeRow(std::string_view& text) noexcept {
  std::uint32_t number = 0;
  std::size_t size = 0;
  for (; size < text.size() && isAsciiDigit(text[size]); ++size) {
    if (number <= Table::rowCount) {
      number = number * 10 + static_cast<std::uint32_t>(text[size] - '0');
    }
  }
  text.remove_prefix(size);
  return number;
}

/// One side of a range; a coordinate that is not written is missing.
struct Corner {
  std::optional<unsigned long> row;
  std::optional<unsigned long> column;
};

std::optional<Corner> readCorner(std::string_view text) noexcept {
  if (CellText const cell = readCell(text); cell.shape == Shape::Inside) {
    return Corner{cell.cell.row.position, cell.cell.column.position};
  }
  if (auto const column = readColumn(text)) {
    return Corner{std::nullopt, column->position};
  }
  auto const row = readRow(text);
  return row ? std::optional(Corner{row->position, std::nullopt}) : std::nullopt;
}

/// Text in place, long enough for two coordinates of any size and their dollar signs.
class CellWriter {
public:
  void addDollarUnless(bool isRelative) noexcept {
    if (!isRelative) {
      _text[_size++] = '$';
    }
  }

  void addColumn(unsigned long column) noexcept {
    std::size_t const begin = _size;
    for (unsigned long rest = column + 1; rest > 0; rest = (rest - 1) / letterCount) {
      _text[_size++] = static_cast<char>('A' + (rest - 1) % letterCount);
    }
    std::reverse(_text.begin() + begin, _text.begin() + _size);
  }

  void addRow(unsigned long row) noexcept {
    char* const end = std::to_chars(_text.data() + _size, _text.data() + _text.size(), row + 1).ptr;
    _size = static_cast<std::size_t>(end - _text.data());
  }

  [[nodiscard]] std::string toString() const { return {_text.data(), _size}; }

private:
  std::array<char, 40> _text;
  std::size_t _size = 0;
};

bool isSeparator(char character) noexcept {
  return character == ',' || character == ' ' || character == '\t' || character == '\n';
}

}  // namespace

CellText readCell(std::string_view text) noexcept {
  CellText result;
  result.cell.column.isRelative = !takeDollar(text);
  std::uint32_t const column = takeColumn(text);
  if (column == 0) {
    return result;
  }
  result.cell.row.isRelative = !takeDollar(text);
  std::uint32_t const row = takeRow(text);
  if (row == 0 || !text.empty()) {
    return result;
  }
  result.cell.column.position = column - 1;
  result.cell.row.position = row - 1;
  result.shape = row > Table::rowCount         ? Shape::PastRows
                 : column > Table::columnCount ? Shape::PastColumns
                                               : Shape::Inside;
  return result;
}

std::optional<Coordinate> readColumn(std::string_view text) noexcept {
  bool const isRelative = !takeDollar(text);
  std::uint32_t const column = takeColumn(text);
  bool const isColumn = column != 0 && column <= Table::columnCount && text.empty();
  return isColumn ? std::optional(Coordinate{column - 1, isRelative}) : std::nullopt;
}

std::optional<Coordinate> readRow(std::string_view text) noexcept {
  bool const isRelative = !takeDollar(text);
  std::uint32_t const row = takeRow(text);
  bool const isRow = row != 0 && row <= Table::rowCount && text.empty();
  return isRow ? std::optional(Coordinate{row - 1, isRelative}) : std::nullopt;
}

std::optional<CellIndex> parseCell(std::string_view text) noexcept {
  CellText const result = readCell(text);
  if (result.shape != Shape::Inside) {
    return std::nullopt;
  }
  return CellIndex(RowIndex(result.cell.row.position), ColumnIndex(result.cell.column.position));
}

std::optional<TableRange> parseRange(std::string_view text) noexcept {
  std::size_t const colon = text.find(':');
  bool const isPair = colon != std::string_view::npos;
  auto const first = readCorner(text.substr(0, colon));
  auto const second = isPair ? readCorner(text.substr(colon + 1)) : first;
  if (!first || !second) {
    return std::nullopt;
  }
  bool const isCell = first->row && first->column;
  bool const isOfOneKind = first->row.has_value() == second->row.has_value() &&
                           first->column.has_value() == second->column.has_value();
  if (!isOfOneKind || (!isCell && !isPair)) {
    return std::nullopt;
  }
  auto const rows =
      std::minmax({first->row.value_or(0), second->row.value_or(Table::rowCount - 1)});
  auto const columns =
      std::minmax({first->column.value_or(0), second->column.value_or(Table::columnCount - 1)});
  return TableRange{rows.first, columns.first, rows.second + 1, columns.second + 1};
}

std::optional<std::vector<TableRange>> parseRanges(std::string_view text) {
  std::vector<TableRange> ranges;
  while (!text.empty()) {
    auto const size = static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isSeparator) -
                                               text.begin());
    if (size > 0) {
      auto const range = parseRange(text.substr(0, size));
      if (!range) {
        return std::nullopt;
      }
      ranges.push_back(*range);
    }
    text.remove_prefix(std::min(text.size(), size + 1));
  }
  return ranges.empty() ? std::nullopt : std::optional(std::move(ranges));
}

std::string toText(Cell const& cell) {
  CellWriter writer;
  writer.addDollarUnless(cell.column.isRelative);
  writer.addColumn(cell.column.position);
  writer.addDollarUnless(cell.row.isRelative);
  writer.addRow(cell.row.position);
  return writer.toString();
}

std::string toAddress(CellIndex index) {
  CellWriter writer;
  writer.addColumn(index.getColumn().get());
  writer.addRow(index.getRow().get());
  return writer.toString();
}

std::string toAddress(TableRange const& range) {
  CellIndex const first(RowIndex(range.firstRow), ColumnIndex(range.firstColumn));
  CellIndex const last(RowIndex(range.endRow - 1), ColumnIndex(range.endColumn - 1));
  return first == last ? toAddress(first) : toAddress(first) + ":" + toAddress(last);
}

std::string toAddress(std::vector<TableRange> const& ranges) {
  std::string text;
  for (TableRange const& range : ranges) {
    text += text.empty() ? "" : " ";
    text += toAddress(range);
  }
  return text;
}

}  // namespace Zorv::DOM::A1Notation
