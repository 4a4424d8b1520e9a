#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Utils/CellIndex.h"
#include "Utils/Export.h"
#include "Utils/TableRange.h"

/// Reads and writes cells and ranges in A1 notation (ISO/IEC 29500-1, 18.17.2.3).
///
/// Letter case does not matter, and a `$` may stand before each coordinate. A row may have leading
/// zeros: `A01` is `A1`, as in spreadsheet programs, and so it is no name. Positions count from 0.
/// Reading allocates nothing, but for lists, and takes time linear in the text.
namespace Zorv::DOM::A1Notation {

/// A row or a column.
struct Coordinate {
  std::uint32_t position = 0;  ///< from 0
  bool isRelative = true;      ///< written without a `$`
};

/// A cell as a text names it.
struct Cell {
  Coordinate row;     ///< the row, as written
  Coordinate column;  ///< the column, as written
};

/// Kind of text, as a cell.
enum class Shape : std::uint8_t {
  Other,        ///< no cell
  Inside,       ///< a cell of the sheet
  PastColumns,  ///< written as a cell, but right of the last column
  PastRows,     ///< written as a cell, but below the last row
};

/// A text, read as a cell.
struct CellText {
  Shape shape = Shape::Other;  ///< says whether `cell` counts
  Cell cell;                   ///< meaningful for Shape::Inside only
};

/// Reads a whole text as a cell such as `B7` or `$B$7`.
[[nodiscard]] ZORV_HOST_EXPORT CellText readCell(std::string_view text) noexcept;
/// Reads a whole text as a column such as `B` or `$B`. Nothing for any other text, or for a column
/// outside the sheet.
[[nodiscard]] ZORV_HOST_EXPORT std::optional<Coordinate> readColumn(std::string_view text) noexcept;
/// Reads a whole text as a row such as `7` or `$7`. Nothing for any other text, or for a row
/// outside the sheet.
[[nodiscard]] ZORV_HOST_EXPORT std::optional<Coordinate> readRow(std::string_view text) noexcept;

/// The cell that a text such as `C9` names. Nothing for any other text, or outside the sheet.
[[nodiscard]] ZORV_HOST_EXPORT std::optional<CellIndex> parseCell(std::string_view text) noexcept;
/// The range that a text such as `A1:C9`, `B2`, `A:C` or `3:5` names, with the corners in any
/// order. Nothing for any other text, or outside the sheet.
[[nodiscard]] ZORV_HOST_EXPORT std::optional<TableRange> parseRange(std::string_view text) noexcept;
/// The ranges of a list that spaces or commas separate. Nothing for an empty list, or one with a
/// text that is no range.
[[nodiscard]] ZORV_HOST_EXPORT std::optional<std::vector<TableRange>> parseRanges(
    std::string_view text);

/// The text of a cell with its dollar signs, such as `$B7`.
[[nodiscard]] ZORV_HOST_EXPORT std::string toText(Cell const& cell);
/// `F5`. Allocates nothing.
[[nodiscard]] ZORV_HOST_EXPORT std::string toAddress(CellIndex index);
/// `F5:G9`, or `F5` for a single cell. Requires a range that is not empty.
[[nodiscard]] ZORV_HOST_EXPORT std::string toAddress(TableRange const& range);
/// All ranges, separated by spaces, as workbook files list them.
[[nodiscard]] ZORV_HOST_EXPORT std::string toAddress(std::vector<TableRange> const& ranges);

}  // namespace Zorv::DOM::A1Notation
