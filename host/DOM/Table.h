#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "DOM/AxisIds.h"
#include "DOM/CellInfo.h"
#include "DOM/CellRangeIt.h"
#include "DOM/CellStore.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/Ids.h"
#include "DOM/TableRangeByID.h"
#include "Utils/Export.h"
#include "Utils/IDHolder.h"
#include "Utils/TableRange.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {

/// Table of one sheet: sparse cells, rows and columns with stable identities, and conditional
/// formats.
///
/// Positions start at 0. Only positions that were given a value or a style have a cell. Threads:
/// const members may run concurrently; the others need exclusive access and invalidate CellInfo
/// objects and iterators.
class ZORV_HOST_EXPORT Table : public IDHolder {
public:
  /// Size of a sheet, as spreadsheet programs use it for ISO/IEC 29500 documents.
  static constexpr unsigned long rowCount = 1'048'576;
  static constexpr unsigned long columnCount = 16'384;  ///< columns of a sheet

  /// Formats by priority, the highest first.
  using LiveConditionalFormats = std::vector<std::unique_ptr<ConditionalFormat const>>;

  /// An empty table.
  explicit Table(UUID uuid = UUID::generate());

  /// The identity by which styles of cells are cached.
  [[nodiscard]] UUID const& getUUID() const noexcept { return _uuid; }

  // Cells.

  /// The cell at a position; created if there is none. Appending in row order takes constant time.
  /// Throws BaseRuntimeError for a position outside the sheet.
  Cell& obtainCell(unsigned long row, unsigned long column);
  /// Sets the value of a cell, which is created if there is none. Throws as obtainCell().
  void setValue(unsigned long row, unsigned long column, FormulaValue value);
  /// Removes the cell at a position, if there is one.
  void removeCell(unsigned long row, unsigned long column);

  /// The cell at a position, or null. Logarithmic in the number of cells; allocates nothing.
  [[nodiscard]] Cell const* findCell(unsigned long row, unsigned long column) const noexcept;
  /// Look-up with a hint, best the position of the last cell found; see CellStore::find().
  [[nodiscard]] Cell const* findCell(unsigned long row, unsigned long column,
                                     CellStore::Position& hint) const noexcept {
    return row < rowCount && column < columnCount ? _cells.find(row, column, hint) : nullptr;
  }
  /// The position with its cell, if there is one.
  [[nodiscard]] CellInfo getCellInfo(unsigned long row, unsigned long column) const noexcept;
  /// The number of existing cells.
  [[nodiscard]] std::size_t getCellCount() const noexcept;
  /// The first row with a cell and the row after the last one; both 0 without cells. Constant time.
  [[nodiscard]] std::pair<unsigned long, unsigned long> getUsedRows() const noexcept;
  /// The smallest range that contains every cell; empty without cells. Linear in the number of
  /// cells.
  [[nodiscard]] TableRange getUsedRange() const noexcept;

  /// Begin and end of the existing cells of a range, row by row from the top, each row from the
  /// left. The cost grows with the visited cells, plus one search for each row with cells outside
  /// the range's columns, or one step for hundreds of cells among which none is in fewer than 64
  /// columns; the size of the range does not matter.
  [[nodiscard]] std::pair<CellRangeIt<true>, CellRangeIt<true>> getRangeIterators(
      TableRange const& range) const;

  /// A number that is another one after each edit that may move cells in memory or removes them,
  /// and so invalidates what was borrowed from cells, such as their texts. A new value of an
  /// existing cell invalidates what was borrowed from that cell alone.
  [[nodiscard]] std::uint64_t getLayoutVersion() const noexcept {
    return _cells.getLayoutVersion();
  }

  // Identities and edits. An edit moves cells and identities together.

  /// The identity of the row at a position.
  [[nodiscard]] RowID getRowID(unsigned long row) const noexcept;
  /// The identity of the column at a position.
  [[nodiscard]] ColumnID getColumnID(unsigned long column) const noexcept;
  /// The range by the identities of its corners. Requires a range that is not empty and inside the
  /// sheet.
  [[nodiscard]] TableRangeByID toRangeByID(TableRange const& range) const;
  /// The identities of all rows.
  [[nodiscard]] AxisIds const& getRowIds() const noexcept { return _rowIds; }
  /// The identities of all columns.
  [[nodiscard]] AxisIds const& getColumnIds() const noexcept { return _columnIds; }

  /// Inserts empty rows before a position and removes as many at the sheet's far edge.
  /// Throws BaseRuntimeError, changing nothing, if those have cells.
  void insertRows(unsigned long before, unsigned long count);
  /// The same for columns.
  void insertColumns(unsigned long before, unsigned long count);
  /// Removes rows with their cells and adds as many empty ones at the sheet's far edge.
  void deleteRows(unsigned long first, unsigned long count);
  /// The same for columns.
  void deleteColumns(unsigned long first, unsigned long count);
  /// Moves rows to the position `before`.
  void moveRows(unsigned long first, unsigned long count, unsigned long before);
  /// The same for columns.
  void moveColumns(unsigned long first, unsigned long count, unsigned long before);

  // Conditional formats.

  /// The formats by priority, the highest first. Requires that none is null: readers stop the
  /// process at a null element.
  [[nodiscard]] LiveConditionalFormats const& getLiveConditionalFormats() const noexcept {
    return _conditionalFormats;
  }
  /// Adds a format of lowest priority.
  void addConditionalFormat(std::unique_ptr<ConditionalFormat const> format);
  /// Creates a format of lowest priority for ranges at their current positions.
  /// Throws BaseRuntimeError, changing nothing, for a range that is empty or leaves the sheet.
  void addConditionalFormat(std::vector<TableRange> const& ranges,
                            ConditionalFormatOperator condition, UUID const& styleUUID,
                            bool stopCalculateConditions = false);
  /// Replaces all formats. Requires that none is null.
  void setConditionalFormats(LiveConditionalFormats formats) noexcept;

private:
  UUID _uuid;
  AxisIds _rowIds;
  AxisIds _columnIds;
  CellStore _cells;
  LiveConditionalFormats _conditionalFormats;
};

}  // namespace Zorv::DOM
