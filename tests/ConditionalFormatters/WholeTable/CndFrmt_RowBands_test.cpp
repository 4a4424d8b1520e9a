#include "ConditionalFormatters/WholeTable/CndFrmt_RowBands.h"

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {

namespace {

void fill(DOM::Table& table, unsigned long firstRow, unsigned long endRow, unsigned long columns) {
  for (unsigned long row = firstRow; row < endRow; ++row) {
    for (unsigned long column = 0; column < columns; ++column) {
      table.obtainCell(row, column);
    }
  }
}

/// The bands must follow each other without a gap from the first row to the last.
void expectBandsCover(RowBands const& bands, TableRange const& range) {
  unsigned long row = range.firstRow;
  for (std::size_t number = 0; number < bands.count(); ++number) {
    TableRange const band = bands.at(number);
    EXPECT_EQ(band.firstRow, row);
    EXPECT_GT(band.endRow, band.firstRow);
    EXPECT_EQ(band.firstColumn, range.firstColumn);
    EXPECT_EQ(band.endColumn, range.endColumn);
    row = band.endRow;
  }
  EXPECT_EQ(row, range.endRow);
}

TEST(RowBands, PositionsAreSharedOutByTheThousand) {
  TableRange const range{10, 2, 10'010, 6};
  auto const bands = RowBands::ofPositions(range);
  EXPECT_EQ(bands.count(), 10U);
  EXPECT_EQ(bands.at(0), (TableRange{10, 2, 1034, 6}));
  EXPECT_EQ(bands.at(9), (TableRange{9226, 2, 10'010, 6}));
  expectBandsCover(bands, range);
}

TEST(RowBands, EvenARowThatIsWiderThanABandIsNotCut) {
  TableRange const range{0, 0, 3, 16'384};
  auto const bands = RowBands::ofPositions(range);
  EXPECT_EQ(bands.count(), 3U);
  expectBandsCover(bands, range);
}

TEST(RowBands, OfCellsSkipTheRowsBeforeTheFirstCellAndAfterTheLast) {
  DOM::Table table;
  fill(table, 5000, 15'000, 1);
  auto const bands = RowBands::ofCells(table, {0, 0, 1'048'576, 16'384});
  expectBandsCover(bands, {5000, 0, 15'000, 16'384});
  EXPECT_EQ(bands.count(), 3U);  // not by positions: a row has one cell
}

TEST(RowBands, OfCellsAreNoWiderThanTheRange) {
  DOM::Table table;
  fill(table, 0, 5000, 4);
  auto const bands = RowBands::ofCells(table, {0, 1, 5000, 2});
  EXPECT_EQ(bands.count(), 2U);
  expectBandsCover(bands, {0, 1, 5000, 2});
}

TEST(RowBands, ThereAreNoneWhereThereIsNothing) {
  DOM::Table table;
  fill(table, 5, 10, 1);
  EXPECT_EQ(RowBands::ofPositions({7, 0, 7, 5}).count(), 0U);
  EXPECT_EQ(RowBands::ofPositions({7, 0, 3, 5}).count(), 0U);
  EXPECT_EQ(RowBands::ofCells(table, {0, 0, 5, 5}).count(), 0U);
  EXPECT_EQ(RowBands::ofCells(table, {10, 0, 20, 5}).count(), 0U);
  EXPECT_EQ(RowBands::ofCells(DOM::Table(), {0, 0, 20, 5}).count(), 0U);
}

}  // namespace

}  // namespace Zorv::ConditionalFormatters
