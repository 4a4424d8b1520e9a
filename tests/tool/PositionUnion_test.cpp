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

struct CoverCase {
  std::string name;
  std::vector<TableRange> ranges;
  std::vector<TableRange> cover;
};

class PositionUnionCover : public testing::TestWithParam<CoverCase> {};

TEST_P(PositionUnionCover, HoldsFewOtherPositions) {
  EXPECT_EQ(PositionUnion(GetParam().ranges, wholeSheet).cover(), GetParam().cover);
}

INSTANTIATE_TEST_SUITE_P(
    Unions, PositionUnionCover,
    testing::Values(
        CoverCase{"Nothing", {}, {}}, CoverCase{"OneRange", {{1, 2, 30, 4}}, {{1, 2, 30, 4}}},
        CoverCase{"Overlapping", {{0, 0, 4, 2}, {2, 1, 6, 3}}, {{0, 0, 6, 3}}},
        CoverCase{"ColumnsWithSixBetween", {{0, 0, 9, 1}, {0, 7, 9, 8}}, {{0, 0, 9, 8}}},
        CoverCase{"ColumnsWithFifteenBetween",
                  {{0, 0, 2, 1}, {0, 16, 2, 17}},
                  {{0, 0, 1, 1}, {0, 16, 1, 17}, {1, 0, 2, 1}, {1, 16, 2, 17}}},
        CoverCase{"RowsWithSixBetween", {{0, 0, 1, 5}, {7, 0, 8, 5}}, {{0, 0, 8, 5}}},
        CoverCase{"RowsFarApart", {{0, 0, 1, 5}, {90, 0, 91, 5}}, {{0, 0, 1, 5}, {90, 0, 91, 5}}},
        CoverCase{"RowsAfterColumnsFarApart",
                  {{0, 0, 1, 1}, {0, 90, 1, 91}, {1, 0, 5, 91}},
                  {{0, 0, 1, 1}, {0, 90, 1, 91}, {1, 0, 5, 91}}}),
    [](auto const& test) { return test.param.name; });

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
