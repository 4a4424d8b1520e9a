#include "DOM/CellBlock.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

using BlockPlaces = std::vector<std::pair<unsigned long, unsigned long>>;

CellBlock makeBlock(BlockPlaces const& places) {
  CellBlock block;
  for (auto const& [row, column] : places) {
    block.append({CellEntry::makeKey(row, column), {}});
  }
  return block;
}

BlockPlaces listPlaces(CellBlock const& block) {
  BlockPlaces places;
  for (CellEntry const& entry : block.getCells()) {
    places.emplace_back(entry.getRow(), entry.getColumn());
  }
  return places;
}

/// The columns below 64 that the block says that it may have.
std::vector<unsigned long> listColumns(CellBlock const& block) {
  std::vector<unsigned long> columns;
  for (unsigned long column = 0; column < 64; ++column) {
    if (block.getColumns().mayMeet({column, 1})) {
      columns.push_back(column);
    }
  }
  return columns;
}

using ColumnList = std::vector<unsigned long>;

TEST(CellBlock, KnowsTheColumnsOfItsCells) {
  CellBlock block = makeBlock({{1, 5}, {1, 9}, {2, 5}});
  EXPECT_EQ(listColumns(block), (ColumnList{5, 9}));
  block.insert(1, CellEntry::makeKey(1, 7));
  EXPECT_EQ(listPlaces(block), (BlockPlaces{{1, 5}, {1, 7}, {1, 9}, {2, 5}}));
  EXPECT_EQ(listColumns(block), (ColumnList{5, 7, 9}));
  block.remove(2);
  EXPECT_EQ(listPlaces(block), (BlockPlaces{{1, 5}, {1, 7}, {2, 5}}));
  block.shiftRows(3);
  EXPECT_EQ(listPlaces(block), (BlockPlaces{{4, 5}, {4, 7}, {5, 5}}));
  EXPECT_TRUE(block.getColumns().mayMeet({7, 1}));
  block.clear();
  EXPECT_EQ(block.size(), 0U);
  EXPECT_EQ(listColumns(block), ColumnList());
}

TEST(CellBlock, PartsKnowOnlyTheirOwnColumns) {
  CellBlock lower = makeBlock({{1, 5}, {1, 9}, {2, 6}, {2, 9}});
  CellBlock const upper = lower.cutOff(2, 100);
  EXPECT_EQ(listPlaces(lower), (BlockPlaces{{1, 5}, {1, 9}}));
  EXPECT_EQ(listColumns(lower), (ColumnList{5, 9}));
  EXPECT_EQ(listPlaces(upper), (BlockPlaces{{2, 6}, {2, 9}}));
  EXPECT_EQ(listColumns(upper), (ColumnList{6, 9}));
}

TEST(CellBlock, TakesTheNextCellsWithTheirColumnsIfThereIsRoom) {
  CellBlock lower = makeBlock({{1, 5}});
  lower.reserve(3);
  CellBlock upper = makeBlock({{2, 6}, {2, 7}});
  EXPECT_TRUE(lower.takeAll(upper));
  EXPECT_EQ(listPlaces(lower), (BlockPlaces{{1, 5}, {2, 6}, {2, 7}}));
  EXPECT_EQ(listColumns(lower), (ColumnList{5, 6, 7}));
  EXPECT_EQ(upper.size(), 0U);
  CellBlock tooMany = makeBlock(BlockPlaces(100, {3, 8}));
  EXPECT_FALSE(lower.takeAll(tooMany));
  EXPECT_EQ(tooMany.size(), 100U);
  EXPECT_EQ(listColumns(lower), (ColumnList{5, 6, 7}));
}

TEST(CellBlock, ForgetsTheColumnsThatAnEditMovesOrRemoves) {
  CellBlock block = makeBlock({{1, 0}, {1, 1}, {1, 2}, {2, 1}});
  block.removeColumns({false, true, false});
  std::array<unsigned long, 3> const shifts{20, 0, 0UL - 2};
  block.shiftColumns(shifts);
  EXPECT_EQ(listPlaces(block), (BlockPlaces{{1, 20}, {1, 0}}));
  EXPECT_EQ(listColumns(block), (ColumnList{0, 20}));
  block.putRowsInOrder();
  EXPECT_EQ(listPlaces(block), (BlockPlaces{{1, 0}, {1, 20}}));
}

TEST(CellBlock, ACellThatReplacesAnotherBringsItsColumn) {
  CellBlock block = makeBlock({{1, 0}, {1, 1}});
  CellBlock other = makeBlock({{1, 30}});
  block.replace(1, other.takeOut(0));
  EXPECT_EQ(listPlaces(block), (BlockPlaces{{1, 0}, {1, 30}}));
  EXPECT_TRUE(block.getColumns().mayMeet({30, 1}));
}

}  // namespace
}  // namespace Zorv::DOM
