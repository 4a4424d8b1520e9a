#pragma once

#include "Utils/TaggedValue.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {

struct RowIDTag {};
struct ColumnIDTag {};

/// The stable identities of a table's rows and columns: they stay when positions change. 0 names
/// no row or column.
using RowID = TaggedValue<unsigned long, RowIDTag>;
using ColumnID = TaggedValue<unsigned long, ColumnIDTag>;

/// The stable identity of a cell.
struct CellID {
  UUID tableUUID;
  RowID rowID;
  ColumnID columnID;
};

}  // namespace Zorv::DOM
