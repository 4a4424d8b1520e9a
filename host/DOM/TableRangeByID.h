#pragma once

#include <vector>

#include "DOM/Ids.h"
#include "Utils/Export.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {

class Table;

/// Range named by the identities of its first and last row and column, all inclusive.
struct TableRangeByID {
  RowID firstRow;        ///< inside the range
  ColumnID firstColumn;  ///< inside the range
  RowID lastRow;         ///< inside the range
  ColumnID lastColumn;   ///< inside the range
};

/// The ranges at the current positions of their rows and columns, in the order given.
///
/// A range grows by insertions inside it and shrinks by deletions. The result omits a range of
/// which nothing is left. Cost: logarithmic in the number of edits of the table, for each range.
[[nodiscard]] ZORV_HOST_EXPORT std::vector<TableRange> convertToTableRanges(
    Table const& table, std::vector<TableRangeByID> const& ranges);

}  // namespace Zorv::DOM
