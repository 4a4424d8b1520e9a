#include "DOM/RowBlocks.h"

#include <gtest/gtest.h>

namespace Zorv::DOM {

namespace {

void fill(Table& table, unsigned long firstRow, unsigned long endRow, unsigned long columns) {
  for (unsigned long row = firstRow; row < endRow; ++row) {
    for (unsigned long column = 0; column < columns; ++column) {
      table.obtainCell(row, column);
    }
  }
}

/// The blocks must follow each other without a gap from the first row to the last.
void expectBlocksCover(RowBlocks const& blocks, TableRange const& range) {
  unsigned long row = range.firstRow;
  for (std::size_t index = 0; index < blocks.count(); ++index) {
    TableRange const block = blocks.at(index);
    EXPECT_EQ(block.firstRow, row);
    EXPECT_GT(block.endRow, block.firstRow);
    EXPECT_EQ(block.firstColumn, range.firstColumn);
    EXPECT_EQ(block.endColumn, range.endColumn);
    row = block.endRow;
  }
  EXPECT_EQ(row, range.endRow);
}

TEST(RowBlocks, PositionsAreSharedOutByTheThousand) {
  TableRange const range{10, 2, 10'010, 6};
  auto const blocks = RowBlocks::ofPositions(range);
  EXPECT_EQ(blocks.count(), 10U);
  EXPECT_EQ(blocks.at(0), (TableRange{10, 2, 1034, 6}));
  EXPECT_EQ(blocks.at(9), (TableRange{9226, 2, 10'010, 6}));
  expectBlocksCover(blocks, range);
}

TEST(RowBlocks, MayBeSmallerThanUsual) {
  TableRange const range{10, 2, 110, 6};
  auto const blocks = RowBlocks::ofPositions(range, 100);
  EXPECT_EQ(blocks.count(), 4U);
  expectBlocksCover(blocks, range);
  Table table;
  fill(table, 0, 50, 4);
  EXPECT_EQ(RowBlocks::ofCells(table, {0, 0, 50, 4}, 100).count(), 2U);
  EXPECT_EQ(RowBlocks::ofRows(range, 50, 100).count(), 50U);
  EXPECT_EQ(RowBlocks::ofRows(range, 50, 1).count(), 100U);
}

TEST(RowBlocks, EvenARowThatIsWiderThanABlockIsNotCut) {
  TableRange const range{0, 0, 3, 16'384};
  auto const blocks = RowBlocks::ofPositions(range);
  EXPECT_EQ(blocks.count(), 3U);
  expectBlocksCover(blocks, range);
}

TEST(RowBlocks, OfCellsSkipTheRowsBeforeTheFirstCellAndAfterTheLast) {
  Table table;
  fill(table, 5000, 15'000, 1);
  auto const blocks = RowBlocks::ofCells(table, {0, 0, 1'048'576, 16'384});
  expectBlocksCover(blocks, {5000, 0, 15'000, 16'384});
  EXPECT_EQ(blocks.count(), 3U);  // not by positions: a row has one cell
}

TEST(RowBlocks, OfCellsAreNoWiderThanTheRange) {
  Table table;
  fill(table, 0, 5000, 4);
  auto const blocks = RowBlocks::ofCells(table, {0, 1, 5000, 2});
  EXPECT_EQ(blocks.count(), 2U);
  expectBlocksCover(blocks, {0, 1, 5000, 2});
}

TEST(RowBlocks, OfCellsCoverTheRowsThatARangeAndTheTableShare) {
  Table table;
  fill(table, 100, 20'100, 3);
  expectBlocksCover(RowBlocks::ofCells(table, {0, 0, Table::rowCount, 2}), {100, 0, 20'100, 2});
  expectBlocksCover(RowBlocks::ofCells(table, {5000, 1, 15'000, 2}), {5000, 1, 15'000, 2});
  expectBlocksCover(RowBlocks::ofCells(table, {20'000, 0, 30'000, Table::columnCount}),
                    {20'000, 0, 20'100, Table::columnCount});
}

TEST(RowBlocks, EachHasSomeThousandCells) {
  Table table;
  fill(table, 0, 20'000, 5);
  for (unsigned long const columns : {1UL, 2UL, 5UL}) {
    std::size_t const cells = 20'000 * columns;
    auto const blocks = RowBlocks::ofCells(table, {0, 0, 20'000, columns});
    EXPECT_GE(blocks.count(), cells / 8192);
    EXPECT_LE(blocks.count(), cells / 2048);
  }
  // Cells that lie far apart are no reason for as many blocks as there are rows.
  Table sparse;
  fill(sparse, 0, 1, 1);
  fill(sparse, Table::rowCount - 1, Table::rowCount, 1);
  EXPECT_LE(RowBlocks::ofCells(sparse, {0, 0, Table::rowCount, 1}).count(), 1024U);
}

TEST(RowBlocks, ThereAreNoneWhereThereIsNothing) {
  Table table;
  fill(table, 5, 10, 1);
  EXPECT_EQ(RowBlocks::ofPositions({7, 0, 7, 5}).count(), 0U);
  EXPECT_EQ(RowBlocks::ofPositions({7, 0, 3, 5}).count(), 0U);
  EXPECT_EQ(RowBlocks::ofCells(table, {0, 0, 5, 5}).count(), 0U);
  EXPECT_EQ(RowBlocks::ofCells(table, {10, 0, 20, 5}).count(), 0U);
  EXPECT_EQ(RowBlocks::ofCells(table, {3, 0, 5, 5}).count(), 0U);
  EXPECT_EQ(RowBlocks::ofCells(Table(), {0, 0, 20, 5}).count(), 0U);
}

}  // namespace

}  // namespace Zorv::DOM
