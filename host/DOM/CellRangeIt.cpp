#include "DOM/CellRangeIt.h"

namespace Zorv::DOM {

CellRangeIt<true>::CellRangeIt(Table const& table, CellStore const& cells, TableRange const& range,
                               CellStore::Position position) noexcept
    : _table(&table), _cells(&cells), _range(range), _position(position) {
  skipToRange();
}

CellInfo CellRangeIt<true>::getCellInfo() const noexcept {
  CellIndex const index(RowIndex(_cells->rowAt(_position)),
                        ColumnIndex(_cells->columnAt(_position)));
  return {*_table, index, &_cells->cellAt(_position)};
}

CellRangeIt<true>& CellRangeIt<true>::operator++() noexcept {
  _position = _cells->next(_position);
  skipToRange();
  return *this;
}

void CellRangeIt<true>::skipToRange() noexcept {
  while (_position != _cells->end()) {
    unsigned long const row = _cells->rowAt(_position);
    unsigned long const column = _cells->columnAt(_position);
    if (row >= _range.endRow) {
      _position = _cells->end();
    } else if (column < _range.firstColumn) {
      _position = _cells->lowerBoundFrom(_position, row, _range.firstColumn);
    } else if (column >= _range.endColumn) {
      _position = _cells->lowerBoundFrom(_position, row + 1, _range.firstColumn);
    } else {
      return;
    }
  }
}

}  // namespace Zorv::DOM
