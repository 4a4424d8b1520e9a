#include "DOM/TableRangeByID.h"

#include <vector>

#include <gtest/gtest.h>

#include "DOM/Table.h"
#include "Utils/Exceptions.h"

namespace Zorv::DOM {
namespace {

using Ranges = std::vector<TableRange>;

/// Rows 10 to 19 and columns 5 to 8 of a table.
class TableRangeByIDTest : public testing::Test {
protected:
  [[nodiscard]] Ranges now() const { return convertToTableRanges(table, ranges); }

  Table table;
  std::vector<TableRangeByID> const ranges{table.toRangeByID({10, 5, 20, 9})};
};

TEST_F(TableRangeByIDTest, ComesBackWhileNothingMoves) {
  EXPECT_EQ(now(), (Ranges{{10, 5, 20, 9}}));
}

TEST_F(TableRangeByIDTest, MovesWithWhatIsInsertedOrDeletedBeforeIt) {
  table.insertRows(10, 3);
  table.insertColumns(0, 1);
  EXPECT_EQ(now(), (Ranges{{13, 6, 23, 10}}));
  table.deleteRows(0, 13);
  table.deleteColumns(0, 6);
  EXPECT_EQ(now(), (Ranges{{0, 0, 10, 4}}));
}

TEST_F(TableRangeByIDTest, GrowsWithWhatIsInsertedInside) {
  table.insertRows(11, 2);
  table.insertColumns(8, 1);
  EXPECT_EQ(now(), (Ranges{{10, 5, 22, 10}}));
}

TEST_F(TableRangeByIDTest, StaysWhenSomethingIsInsertedBehindIt) {
  table.insertRows(20, 2);
  table.insertColumns(9, 2);
  EXPECT_EQ(now(), (Ranges{{10, 5, 20, 9}}));
}

TEST_F(TableRangeByIDTest, ShrinksWithWhatIsDeletedAtEitherEndOrInside) {
  table.deleteRows(8, 4);  // two of them in the range
  EXPECT_EQ(now(), (Ranges{{8, 5, 16, 9}}));
  table.deleteRows(15, 4);  // one in the range
  EXPECT_EQ(now(), (Ranges{{8, 5, 15, 9}}));
  table.deleteColumns(6, 1);
  EXPECT_EQ(now(), (Ranges{{8, 5, 15, 8}}));
}

TEST_F(TableRangeByIDTest, DoesNotTakeWhatIsInsertedInPlaceOfItsLostCorner) {
  table.deleteRows(10, 1);
  table.insertRows(10, 1);
  EXPECT_EQ(now(), (Ranges{{11, 5, 20, 9}}));
  table.deleteRows(19, 1);
  table.insertRows(19, 1);
  EXPECT_EQ(now(), (Ranges{{11, 5, 19, 9}}));
}

TEST_F(TableRangeByIDTest, VanishesWhenNothingIsLeft) {
  table.deleteRows(9, 12);
  EXPECT_EQ(now(), Ranges());
  table.insertRows(9, 12);
  EXPECT_EQ(now(), Ranges());
  table.moveRows(8, 1, 30);
  EXPECT_EQ(now(), Ranges());
}

TEST_F(TableRangeByIDTest, VanishesWithItsColumnsToo) {
  table.deleteColumns(5, 2);
  EXPECT_EQ(now(), (Ranges{{10, 5, 20, 7}}));
  table.deleteColumns(5, 2);
  EXPECT_EQ(now(), Ranges());
}

TEST_F(TableRangeByIDTest, MovesWhole) {
  table.moveRows(10, 10, 0);
  EXPECT_EQ(now(), (Ranges{{0, 5, 10, 9}}));
  table.moveColumns(5, 4, 100);
  EXPECT_EQ(now(), (Ranges{{0, 96, 10, 100}}));
}

TEST(TableRangeByID, KeepsTheOrderAndLeavesOutOnlyTheVanished) {
  Table table;
  std::vector<TableRangeByID> const ranges{table.toRangeByID({20, 0, 30, 1}),
                                           table.toRangeByID({10, 0, 12, 1}),
                                           table.toRangeByID({0, 3, 1, 4})};
  table.deleteRows(10, 2);
  EXPECT_EQ(convertToTableRanges(table, ranges), (Ranges{{18, 0, 28, 1}, {0, 3, 1, 4}}));
  EXPECT_EQ(convertToTableRanges(table, {}), Ranges());
}

TEST(TableRangeByID, TheWholeSheetAndItsLastCellComeBack) {
  Table const table;
  TableRange const sheet{0, 0, Table::rowCount, Table::columnCount};
  TableRange const lastCell{1048575, 16383, 1048576, 16384};
  EXPECT_EQ(convertToTableRanges(table, {table.toRangeByID(sheet), table.toRangeByID(lastCell)}),
            (Ranges{sheet, lastCell}));
}

TEST(TableRangeByID, WhatIsPushedOffTheSheetIsGone) {
  Table table;
  std::vector<TableRangeByID> const ranges{
      table.toRangeByID({1048570, 0, 1048576, 1}),
      table.toRangeByID({1048575, 0, 1048576, 1}),
  };
  table.insertRows(0, 2);
  EXPECT_EQ(convertToTableRanges(table, ranges), (Ranges{{1048572, 0, 1048576, 1}}));
}

TEST(TableRangeByID, IdentitiesThatNeverWereYieldNoRange) {
  Table const table;
  EXPECT_EQ(convertToTableRanges(table, {TableRangeByID{}}), Ranges());
}

TEST(TableRangeByID, EmptyRangesAndThoseOutsideTheSheetHaveNone) {
  Table const table;
  for (TableRange const& range : {TableRange{}, TableRange{1, 1, 1, 2}, TableRange{1, 1, 2, 1},
                                  TableRange{0, 0, 1048577, 1}, TableRange{0, 0, 1, 16385}}) {
    EXPECT_THROW((void)table.toRangeByID(range), BaseRuntimeError);
  }
}

}  // namespace
}  // namespace Zorv::DOM
