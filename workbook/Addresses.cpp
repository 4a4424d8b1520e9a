#include "workbook/Addresses.h"

#include <algorithm>

#include "DOM/Table.h"

namespace Zorv::Workbook {

namespace {

constexpr unsigned long letterCount = 26;

std::string toLetters(unsigned long column) {
  std::string letters;
  for (unsigned long rest = column + 1; rest > 0; rest = (rest - 1) / letterCount) {
    letters.insert(letters.begin(), static_cast<char>('A' + (rest - 1) % letterCount));
  }
  return letters;
}

/// One side of a range; a coordinate that is not written is missing.
struct Corner {
  std::optional<unsigned long> row;
  std::optional<unsigned long> column;
};

char toUpper(char character) noexcept {
  bool const isLower = 'a' <= character && character <= 'z';
  return isLower ? static_cast<char>(character - 'a' + 'A') : character;
}

/// Takes a number off the front of a text, in digits or in letters: those count from `first` on.
/// Returns it less one, as positions count, or nothing where there is none up to `limit`.
std::optional<unsigned long> takeNumber(std::string_view& text, char first, unsigned long base,
                                        unsigned long limit) noexcept {
  unsigned long const bias = first == 'A' ? 1 : 0;
  unsigned long number = 0;
  std::size_t size = 0;
  for (; size < text.size(); ++size) {
    auto const digit = static_cast<unsigned long>(toUpper(text[size]) - first);
    if (digit >= base) {
      break;
    }
    number = number * base + digit + bias;
    if (number > limit) {
      return std::nullopt;
    }
  }
  text.remove_prefix(size);
  return number == 0 ? std::nullopt : std::optional(number - 1);
}

void skipDollar(std::string_view& text) noexcept {
  text.remove_prefix(text.starts_with('$') ? 1 : 0);
}

Corner takeCorner(std::string_view& text) noexcept {
  Corner corner;
  skipDollar(text);
  corner.column = takeNumber(text, 'A', letterCount, DOM::Table::columnCount);
  if (corner.column) {
    skipDollar(text);
  }
  corner.row = takeNumber(text, '0', 10, DOM::Table::rowCount);
  return corner;
}

bool isSeparator(char character) noexcept {
  return character == ',' || character == ' ' || character == '\t' || character == '\n';
}

}  // namespace

std::string toAddress(CellIndex index) {
  return toLetters(index.getColumn().get()) + std::to_string(index.getRow().get() + 1);
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

std::optional<CellIndex> parseCell(std::string_view text) noexcept {
  Corner const corner = takeCorner(text);
  if (!text.empty() || !corner.row || !corner.column) {
    return std::nullopt;
  }
  return CellIndex(RowIndex(*corner.row), ColumnIndex(*corner.column));
}

std::optional<TableRange> parseRange(std::string_view text) noexcept {
  Corner const first = takeCorner(text);
  Corner second = first;
  bool const isPair = text.starts_with(':');
  if (isPair) {
    text.remove_prefix(1);
    second = takeCorner(text);
  }
  bool const isCell = first.row && first.column;
  bool const isOfOneKind = first.row.has_value() == second.row.has_value() &&
                           first.column.has_value() == second.column.has_value();
  if (!text.empty() || !isOfOneKind || (!isCell && !isPair) || (!first.row && !first.column)) {
    return std::nullopt;
  }
  auto const rows =
      std::minmax({first.row.value_or(0), second.row.value_or(DOM::Table::rowCount - 1)});
  auto const columns =
      std::minmax({first.column.value_or(0), second.column.value_or(DOM::Table::columnCount - 1)});
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

}  // namespace Zorv::Workbook
