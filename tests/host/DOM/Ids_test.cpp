#include "DOM/Ids.h"

#include <type_traits>

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

TEST(Ids, RowsAndColumnsAreNotInterchangeable) {
  EXPECT_FALSE((std::is_convertible_v<RowID, ColumnID>));
  EXPECT_FALSE((std::is_constructible_v<RowID, ColumnID>));
  EXPECT_LT(RowID(1), RowID(2));
}

TEST(Ids, ADefaultCellIDNamesNothing) {
  CellID const id;
  EXPECT_TRUE(id.tableUUID.isEmpty());
  EXPECT_EQ(id.rowID, RowID(0));
  EXPECT_EQ(id.columnID, ColumnID(0));
}

}  // namespace
}  // namespace Zorv::DOM
