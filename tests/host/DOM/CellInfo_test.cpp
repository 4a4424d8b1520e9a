#include "DOM/CellInfo.h"

#include <gtest/gtest.h>

#include "DOM/Table.h"

namespace Zorv::DOM {
namespace {

TEST(CellInfo, TellsThePositionInEveryForm) {
  Table table;
  table.obtainCell(3, 7);
  CellInfo const info = table.getCellInfo(3, 7);
  EXPECT_EQ(&info.getTable(), &table);
  EXPECT_EQ(info.getCell(), table.findCell(3, 7));
  EXPECT_EQ(info.getRowIndex(), 3UL);
  EXPECT_EQ(info.getColIndex(), 7UL);
  EXPECT_EQ(info.getCellIndex(), CellIndex(RowIndex(3), ColumnIndex(7)));
}

TEST(CellInfo, APositionWithoutACellHasNone) {
  Table const table;
  EXPECT_EQ(table.getCellInfo(0, 0).getCell(), nullptr);
  EXPECT_EQ(table.getCellInfo(1'048'576, 0).getCell(), nullptr);
}

TEST(CellInfo, TheCellsIdentityStaysWhenTheCellMoves) {
  Table table;
  table.obtainCell(3, 7);
  CellID const before = table.getCellInfo(3, 7).getCellID();
  EXPECT_EQ(before.tableUUID, table.getUUID());
  table.insertRows(1, 2);
  table.moveColumns(7, 1, 0);
  CellID const after = table.getCellInfo(5, 0).getCellID();
  EXPECT_EQ(after.tableUUID, before.tableUUID);
  EXPECT_EQ(after.rowID, before.rowID);
  EXPECT_EQ(after.columnID, before.columnID);
}

}  // namespace
}  // namespace Zorv::DOM
