#pragma once

#include "DOM/Cell.h"
#include "DOM/Ids.h"
#include "Utils/CellIndex.h"
#include "Utils/Export.h"

namespace Zorv::DOM {

class Table;

/// Position of a table and the cell there, if any.
///
/// A small value. Borrows the table and the cell; valid until the table changes.
class ZORV_HOST_EXPORT CellInfo {
public:
  /// `cell` is null where the position holds no cell.
  CellInfo(Table const& table, CellIndex index, Cell const* cell) noexcept
      : _table(&table), _index(index), _cell(cell) {}

  /// The table of the position.
  [[nodiscard]] Table const& getTable() const noexcept { return *_table; }
  /// Null where the position holds no cell.
  [[nodiscard]] Cell const* getCell() const noexcept { return _cell; }
  /// The row, from 0.
  [[nodiscard]] unsigned long getRowIndex() const noexcept { return _index.getRow().get(); }
  /// The column, from 0.
  [[nodiscard]] unsigned long getColIndex() const noexcept { return _index.getColumn().get(); }
  /// Row and column.
  [[nodiscard]] CellIndex getCellIndex() const noexcept { return _index; }

  /// The identity of the position, which moves along with the cell. Allocates nothing; logarithmic
  /// in the number of edits of the table.
  [[nodiscard]] CellID getCellID() const noexcept;

private:
  Table const* _table;
  CellIndex _index;
  Cell const* _cell;
};

}  // namespace Zorv::DOM
