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

/// One sheet's table: sparse cells, rows and columns with stable identities, and conditional
/// formats.
///
/// Positions count from 0. Every position exists; only those that were given a value or a style
/// hold a cell. Threads: const members may run concurrently; the others need exclusive access, and
/// end the validity of CellInfo objects and iterators.
class ZORV_HOST_EXPORT Table : public IDHolder {
public:
  /// The size of a sheet (ISO/IEC 29500 documents of the widespread programs).
  static constexpr unsigned long rowCount = 1'048'576;
  static constexpr unsigned long columnCount = 16'384;

  using LiveConditionalFormats = std::vector<std::unique_ptr<ConditionalFormat const>>;

  explicit Table(UUID uuid = UUID::generate());

  [[nodiscard]] UUID const& getUUID() const noexcept { return _uuid; }

  // Cells.

  /// The cell at a position, made if there is none. Appending in row order costs constant time.
  /// Throws BaseRuntimeError for a position outside the sheet.
  Cell& obtainCell(unsigned long row, unsigned long column);
  void setValue(unsigned long row, unsigned long column, FormulaValue value);
  /// Removes the cell at a position, if there is one.
  void removeCell(unsigned long row, unsigned long column);

  /// The cell at a position, or null. Logarithmic in the number of cells; allocates nothing.
  [[nodiscard]] Cell const* findCell(unsigned long row, unsigned long column) const noexcept;
  /// The same, with a hint: any position, best that of the last cell found. In constant time for
  /// that cell and the one behind it; sets the hint.
  [[nodiscard]] Cell const* findCell(unsigned long row, unsigned long column,
                                     CellStore::Position& hint) const noexcept {
    return row < rowCount && column < columnCount ? _cells.find(row, column, hint) : nullptr;
  }
  [[nodiscard]] CellInfo getCellInfo(unsigned long row, unsigned long column) const noexcept;
  [[nodiscard]] std::size_t getCellCount() const noexcept;
  /// The rows from the first to the last that hold a cell, half-open; none where there is no cell.
  /// Constant time.
  [[nodiscard]] std::pair<unsigned long, unsigned long> getUsedRows() const noexcept;
  /// The smallest range that holds every cell; empty where there is none. Linear in the number of
  /// cells.
  [[nodiscard]] TableRange getUsedRange() const noexcept;

  /// Begin and end of the existing cells of a range, row by row from the top, each row from the
  /// left. The walk costs what it visits, and one search for each row of cells that reaches beyond
  /// the range's columns; the range's size costs nothing.
  [[nodiscard]] std::pair<CellRangeIt<true>, CellRangeIt<true>> getRangeIterators(
      TableRange const& range) const;

  // Identities and edits. An edit moves cells and identities together.

  [[nodiscard]] RowID getRowID(unsigned long row) const noexcept;
  [[nodiscard]] ColumnID getColumnID(unsigned long column) const noexcept;
  [[nodiscard]] TableRangeByID toRangeByID(TableRange const& range) const;
  [[nodiscard]] AxisIds const& getRowIds() const noexcept { return _rowIds; }
  [[nodiscard]] AxisIds const& getColumnIds() const noexcept { return _columnIds; }

  /// Inserts empty rows or columns before a position; as many at the sheet's far edge go.
  /// Throws BaseRuntimeError, changing nothing, when those hold cells.
  void insertRows(unsigned long before, unsigned long count);
  void insertColumns(unsigned long before, unsigned long count);
  void deleteRows(unsigned long first, unsigned long count);
  void deleteColumns(unsigned long first, unsigned long count);
  /// Moves rows or columns so that the first of them stands where `before` stood.
  void moveRows(unsigned long first, unsigned long count, unsigned long before);
  void moveColumns(unsigned long first, unsigned long count, unsigned long before);

  // Conditional formats.

  /// In order of priority, the highest first. No element may be null: what reads them stops the
  /// process at one that is.
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
  void setConditionalFormats(LiveConditionalFormats formats) noexcept;

private:
  UUID _uuid;
  AxisIds _rowIds;
  AxisIds _columnIds;
  CellStore _cells;
  LiveConditionalFormats _conditionalFormats;
};

}  // namespace Zorv::DOM
