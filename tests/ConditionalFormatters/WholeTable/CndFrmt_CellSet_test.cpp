#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace Zorv::ConditionalFormatters {

namespace {

TEST(CellSet, HoldsNothingAtFirst) {
  CellSet const cells;
  EXPECT_FALSE(cells.contains(0, 0));
  EXPECT_FALSE(cells.contains(1'048'575, 16'383));
}

TEST(CellSet, HoldsTheCellsThatWereInsertedAndNoOthers) {
  std::vector<std::pair<std::uint32_t, std::uint32_t>> const places = {
      {0, 0},   {511, 0},   {512, 0},       {1, 1},      {513, 0},
      {0, 512}, {1023, 16}, {1'048'575, 0}, {0, 16'383}, {1'048'575, 16'383}};
  CellSet cells;
  for (auto const& [row, column] : places) {
    cells.insert(row, column);
    cells.insert(row, column);
  }
  for (auto const& [row, column] : places) {
    EXPECT_TRUE(cells.contains(row, column)) << row << ',' << column;
  }
  for (auto const& [row, column] : {std::pair{1, 0}, {510, 0}, {514, 0}, {0, 1}, {512, 1}}) {
    EXPECT_FALSE(
        cells.contains(static_cast<unsigned long>(row), static_cast<unsigned long>(column)))
        << row << ',' << column;
  }
}

TEST(CellSet, HoldsAnErasedCellNoMore) {
  CellSet cells;
  cells.erase(5, 0);
  cells.insert(5, 0);
  cells.insert(6, 0);
  cells.erase(5, 0);
  cells.erase(5, 1);
  EXPECT_FALSE(cells.contains(5, 0));
  EXPECT_TRUE(cells.contains(6, 0));
}

TEST(CellSet, TellsWhatAnInsertionOrARemovalChanges) {
  CellSet cells;
  EXPECT_FALSE(cells.erase(5, 0));
  EXPECT_TRUE(cells.insert(5, 0));
  EXPECT_FALSE(cells.insert(5, 0));
  EXPECT_TRUE(cells.insert(6, 0)) << "beside the last one";
  EXPECT_FALSE(cells.erase(7, 0));
  EXPECT_TRUE(cells.erase(5, 0));
  EXPECT_FALSE(cells.erase(5, 0));
}

TEST(CellSet, KeepsItsCellsWhenItIsMoved) {
  CellSet cells;
  cells.insert(7, 3);
  CellSet moved = std::move(cells);
  moved.insert(8, 3);
  EXPECT_TRUE(moved.contains(7, 3));
  EXPECT_TRUE(moved.contains(8, 3));
}

}  // namespace

}  // namespace Zorv::ConditionalFormatters
