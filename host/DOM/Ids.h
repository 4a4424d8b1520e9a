#pragma once

#include "Utils/TaggedValue.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {

struct RowIDTag {};
struct ColumnIDTag {};

/// Stable identities of a table's rows and columns, which edits of the table do not change. 0 is
/// the identity of no row or column.
using RowID = TaggedValue<unsigned long, RowIDTag>;
using ColumnID = TaggedValue<unsigned long, ColumnIDTag>;

/// Stable identity of a cell.
struct CellID {
  UUID tableUUID;
  RowID rowID;
  ColumnID columnID;
};

}  // namespace Zorv::DOM
