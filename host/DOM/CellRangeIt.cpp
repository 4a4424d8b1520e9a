#include "DOM/CellRangeIt.h"

namespace Zorv::DOM {

void CellRangeIt<true>::searchInRange() noexcept {
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
