#include "DOM/CellRangeIt.h"

namespace Zorv::DOM {

void CellRangeIt<true>::searchInRange() noexcept {
  while (_at != nullptr) {
    unsigned long const row = _at->getRow();
    unsigned long const column = _at->getColumn();
    if (row >= _range.endRow) {
      enter(_cells->end());
    } else if (column < _range.firstColumn) {
      enter(_cells->lowerBoundFrom({_block, 0}, row, _range.firstColumn));
    } else if (column >= _range.endColumn) {
      enter(_cells->lowerBoundFrom({_block, 0}, row + 1, _range.firstColumn));
    } else {
      return;
    }
  }
}

}  // namespace Zorv::DOM
