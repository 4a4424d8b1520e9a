#include "ConditionalFormatters/Formats/CndFrmt_FormulaBaseCell.h"

#include <algorithm>
#include <limits>

#include "Utils/Assert.h"

namespace Zorv::ConditionalFormatters {

CellIndex formulaBaseCell(std::vector<TableRange> const& ranges) {
  if (ranges.empty()) {
    doFailAssert("/code/ConditionalFormatters/CndFrmt_OperatorsFactory", 57, "!ranges.empty()");
  }
  auto row = std::numeric_limits<unsigned long>::max();
  auto column = std::numeric_limits<unsigned long>::max();
  for (TableRange const& range : ranges) {
    row = std::min(row, range.firstRow);
    column = std::min(column, range.firstColumn);
  }
  return {RowIndex(row), ColumnIndex(column)};
}

}  // namespace Zorv::ConditionalFormatters
