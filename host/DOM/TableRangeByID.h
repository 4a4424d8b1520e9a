#pragma once

#include <vector>

#include "DOM/Ids.h"
#include "Utils/Export.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {

class Table;

/// A range told by the identities of its corner rows and columns, all four of which belong to it.
struct TableRangeByID {
  RowID firstRow;
  ColumnID firstColumn;
  RowID lastRow;
  ColumnID lastColumn;
};

/// The ranges at the rows' and columns' current positions, in the order given.
///
/// A range grows with what is inserted inside it and shrinks with what is deleted from it; one of
/// which nothing is left is missing from the result. Cost: logarithmic in the number of edits that
/// the table has seen, for each range.
[[nodiscard]] ZORV_HOST_EXPORT std::vector<TableRange> convertToTableRanges(
    Table const& table, std::vector<TableRangeByID> const& ranges);

}  // namespace Zorv::DOM
