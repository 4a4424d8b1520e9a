#pragma once

#include "Utils/TaggedValue.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {

struct RowIDTag {};
struct ColumnIDTag {};

/// Stable identity of a row, which edits of the table do not change. 0 is the identity of no row.
using RowID = TaggedValue<unsigned long, RowIDTag>;
/// Stable identity of a column. 0 is the identity of no column.
using ColumnID = TaggedValue<unsigned long, ColumnIDTag>;

/// Stable identity of a cell.
struct CellID {
  UUID tableUUID;     ///< the table of the cell
  RowID rowID;        ///< the row of the cell
  ColumnID columnID;  ///< the column of the cell
};

}  // namespace Zorv::DOM
