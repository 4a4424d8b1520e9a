#include "DOM/CellInfo.h"

#include "DOM/Table.h"

namespace Zorv::DOM {

CellID CellInfo::getCellID() const noexcept {
  return {_table->getUUID(), _table->getRowID(getRowIndex()), _table->getColumnID(getColIndex())};
}

}  // namespace Zorv::DOM
