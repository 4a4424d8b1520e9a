#pragma once

#include <optional>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_LineMoves.h"
#include "DOM/Table.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

[[nodiscard]] inline LineInterval rowIntervalOf(TableRange const& range) noexcept {
  return {range.firstRow, range.endRow};
}
[[nodiscard]] inline LineInterval columnIntervalOf(TableRange const& range) noexcept {
  return {range.firstColumn, range.endColumn};
}

/// Where edits of rows and of columns put the cells of a sheet. A value.
///
/// Rows and columns move independently of each other, so that the order matters only among the
/// edits of one axis.
struct SheetMoves {
  LineMoves rows{DOM::Table::rowCount};
  LineMoves columns{DOM::Table::columnCount};

  [[nodiscard]] bool isEmpty() const noexcept { return rows.isEmpty() && columns.isEmpty(); }

  /// True if the range lies in the sheet, is not empty, and each of its cells stays where it is.
  [[nodiscard]] bool leave(TableRange const& range) const noexcept {
    return rows.findShift(rowIntervalOf(range)) == 0UL &&
           columns.findShift(columnIntervalOf(range)) == 0UL;
  }

  /// Where a cell is after the edits; none if it is gone.
  [[nodiscard]] std::optional<PositionKey> move(PositionKey cell) const noexcept;
  /// A range whose corners stay with their rows and columns; where these are gone, with the next
  /// ones inside.
  [[nodiscard]] TableRange move(TableRange const& range) const;
  /// Appends where the cells of an area are after the edits.
  void appendMoved(TableRange const& area, std::vector<TableRange>& areas) const;
};

/// The edits of a document's rows and columns, by table.
class DocumentMoves {
public:
  /// Those of a table, to add further ones.
  [[nodiscard]] SheetMoves& getOrCreate(DOM::Table const& table);
  /// Those of a table; null if it has none.
  [[nodiscard]] SheetMoves const* find(DOM::Table const& table) const noexcept;

private:
  struct OfTable {
    DOM::Table const* table;
    SheetMoves moves;
  };

  std::vector<OfTable> _tables;  ///< few
};

}  // namespace Zorv::ConditionalFormatters
