#include "DOM/TableRangeByID.h"

#include "DOM/Table.h"

namespace Zorv::DOM {

std::vector<TableRange> convertToTableRanges(Table const& table,
                                             std::vector<TableRangeByID> const& ranges) {
  AxisIds const& rows = table.getRowIds();
  AxisIds const& columns = table.getColumnIds();
  std::vector<TableRange> converted;
  converted.reserve(ranges.size());
  for (TableRangeByID const& range : ranges) {
    TableRange const current{
        rows.beginOf(range.firstRow.get()), columns.beginOf(range.firstColumn.get()),
        rows.endOf(range.lastRow.get()), columns.endOf(range.lastColumn.get())};
    if (!current.isEmpty()) {
      converted.push_back(current);
    }
  }
  return converted;
}

}  // namespace Zorv::DOM
