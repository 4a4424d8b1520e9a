#include "tool/PositionUnion.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "workbook/Addresses.h"

namespace Zorv::Tool {
namespace {

constexpr TableRange wholeSheet{0, 0, DOM::Table::rowCount, DOM::Table::columnCount};

std::string positionsOf(PositionUnion const& positions) {
  DOM::Table const table;
  std::string text;
  positions.forEachPosition(table, [&](DOM::CellInfo const& cellInfo) {
    text += Workbook::toAddress(cellInfo.getCellIndex()) + " ";
  });
  return text;
}

TEST(PositionUnion, GoesRowByRow) {
  PositionUnion const positions({{0, 0, 2, 2}}, wholeSheet);
  EXPECT_EQ(positionsOf(positions), "A1 B1 A2 B2 ");
  EXPECT_EQ(positions.size(), 4U);
}

TEST(PositionUnion, VisitsOverlappingPositionsOnce) {
  PositionUnion const positions({{0, 0, 2, 2}, {1, 1, 3, 3}, {0, 0, 2, 2}}, wholeSheet);
  EXPECT_EQ(positionsOf(positions), "A1 B1 A2 B2 C2 B3 C3 ");
  EXPECT_EQ(positions.size(), 7U);
}

TEST(PositionUnion, KeepsGapsBetweenRangesInRowsAndColumns) {
  PositionUnion const positions({{4, 0, 5, 1}, {0, 2, 1, 3}, {0, 0, 1, 1}}, wholeSheet);
  EXPECT_EQ(positionsOf(positions), "A1 C1 A5 ");
}

TEST(PositionUnion, TakesWhatLiesInTheBounds) {
  PositionUnion const positions({wholeSheet, {7, 7, 9, 9}}, {1, 1, 3, 2});
  EXPECT_EQ(positionsOf(positions), "B2 B3 ");
}

TEST(PositionUnion, MayBeEmpty) {
  EXPECT_EQ(PositionUnion({}, wholeSheet).size(), 0U);
  EXPECT_EQ(PositionUnion({{0, 0, 2, 2}}, {5, 5, 9, 9}).size(), 0U);
  EXPECT_EQ(PositionUnion({{0, 0, 2, 2}}, {}).size(), 0U);
}

TEST(PositionUnion, RangesAreExtendedDownAndRightAsFarAsTheSheetGoes) {
  EXPECT_EQ(extend({2, 3, 4, 5}, 10), (TableRange{2, 3, 14, 15}));
  EXPECT_EQ(extend({0, 0, DOM::Table::rowCount - 1, DOM::Table::columnCount}, 10), wholeSheet);
  EXPECT_EQ(extend(TableRange{}, 10), TableRange{});
}

TEST(PositionUnion, CountsMoreThanCanBeVisited) {
  EXPECT_EQ(PositionUnion({wholeSheet}, wholeSheet).size(), 17'179'869'184U);
}

TEST(PositionUnion, VisitsExistingCellsAlone) {
  DOM::Table table;
  for (auto const column : {0UL, 1UL, 2UL, 5UL}) {
    table.setValue(0, column, FormulaModel::FormulaBoolean{true});
    table.setValue(900'000, column, FormulaModel::FormulaBoolean{true});
  }
  // Column B lies in neither range.
  PositionUnion const positions({{0, 0, DOM::Table::rowCount, 1}, {0, 2, DOM::Table::rowCount, 4}},
                                wholeSheet);
  std::string text;
  positions.forEachCell(table, [&](DOM::CellInfo const& cellInfo) {
    text += Workbook::toAddress(cellInfo.getCellIndex()) + " ";
  });
  EXPECT_EQ(text, "A1 C1 A900001 C900001 ");
}

}  // namespace
}  // namespace Zorv::Tool
