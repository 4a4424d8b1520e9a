#include "DOM/CellRangeIt.h"

namespace Zorv::DOM {

void CellRangeIt<true>::searchInRange() noexcept {
  while (_at != nullptr) {
    unsigned long const row = _at->getRow();
    unsigned long const column = _at->getColumn();
    if (row >= _endRow) {
      enter(_cells->end());
    } else if (column < _firstColumn) {
      search(row, _firstColumn);
    } else if (column - _firstColumn >= _columnCount) {
      search(row + 1, _firstColumn);
    } else {
      return;
    }
  }
}

/// In a table whose rows have equally many cells, it is as far to the next row as it was to this
/// one.
void CellRangeIt<true>::search(unsigned long row, unsigned long column) noexcept {
  CellEntry::Key const key = CellEntry::makeKey(row, column);
  if (_lastStep < _stretchEnd - _at && (_at + _lastStep - 1)->key < key &&
      key <= (_at + _lastStep)->key) {
    _at += _lastStep;
    return;
  }
  CellStore::Entry const* const before = _at;
  std::size_t const block = _block;
  auto const offset = static_cast<std::size_t>(before - _cells->getStretch({block, 0}).data());
  enter(_cells->lowerBoundFrom({block, offset}, row, column));
  if (_block == block) {
    _lastStep = _at - before;
  }
}

}  // namespace Zorv::DOM
