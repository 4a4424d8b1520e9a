#include "ConditionalFormatters/Parallel/CndFrmt_CellWalk.h"

#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

using Position = std::pair<unsigned long, unsigned long>;

class RangesWalkTest : public testing::Test {
protected:
  /// The cells of a walk over ranges, block by block.
  std::vector<Position> walk(std::vector<TableRange> const& ranges, bool existingOnly) {
    RangeIndex const index(ranges);
    RangesWalk walk(_table, index, existingOnly);
    BlockList const blocks = RangesWalk::findBlocks(_table, index, existingOnly);
    std::vector<Position> positions;
    for (std::size_t block = 0; block < blocks.count(); ++block) {
      walk.forEachCellOf(blocks.at(block), [&](DOM::CellInfo const& cellInfo) {
        positions.emplace_back(cellInfo.getRowIndex(), cellInfo.getColIndex());
        EXPECT_EQ(cellInfo.getCell(),
                  _table.findCell(cellInfo.getRowIndex(), cellInfo.getColIndex()));
      });
    }
    return positions;
  }

  DOM::Table _table;
};

TEST_F(RangesWalkTest, VisitsEachPositionOnceRowByRow) {
  _table.setValue(1, 1, number(1));
  EXPECT_EQ(walk({{1, 1, 3, 2}, {0, 0, 2, 2}, {1, 4, 2, 5}}, false),
            (std::vector<Position>{{0, 0}, {0, 1}, {1, 0}, {1, 1}, {1, 4}, {2, 1}}));
  EXPECT_EQ(walk({{1, 1, 3, 2}, {0, 0, 2, 2}, {1, 4, 2, 5}}, true),
            (std::vector<Position>{{1, 1}}));
}

TEST_F(RangesWalkTest, WithoutRangesThereIsNothingToVisit) {
  _table.setValue(1, 1, number(1));
  EXPECT_TRUE(walk({}, false).empty());
  EXPECT_TRUE(walk({{3, 3, 3, 9}}, true).empty());
}

TEST_F(RangesWalkTest, CostsWhatTheCellsOfHugeRangesCost) {
  _table.setValue(1'000'000, 16'000, number(1));
  EXPECT_EQ(walk({{0, 0, 1'048'576, 16'384}, {5, 5, 1'048'576, 16'384}}, true),
            (std::vector<Position>{{1'000'000, 16'000}}));
}

TEST_F(RangesWalkTest, HasNoBlocksForRowsWithoutCells) {
  _table.setValue(500'000, 0, number(1));
  RangeIndex const column(std::vector<TableRange>{{0, 0, 1'048'576, 1}});
  EXPECT_EQ(RangesWalk::findBlocks(_table, column, true).count(), 1U);
  EXPECT_EQ(RangesWalk::findBlocks(_table, column, false).count(), 256U);
}

TEST_F(RangesWalkTest, GathersNarrowRowIntervalsIntoBlocks) {
  std::vector<TableRange> ranges;
  for (unsigned long row = 0; row < 10'000; ++row) {
    ranges.push_back({row, row % 2, row + 1, 2});
  }
  RangeIndex const index(ranges);
  EXPECT_LT(RangesWalk::findBlocks(_table, index, false).count(), 10U);
  EXPECT_GT(RangesWalk::findBlocks(_table, index, false, 100).count(), 140U);
  EXPECT_EQ(walk(ranges, false).size(), 15'000U);
}

TEST_F(RangesWalkTest, VisitsThePositionsThatAnyRangeHolds) {
  std::mt19937 random(3);
  std::uniform_int_distribution<unsigned long> draw(0, 39);
  for (int cell = 0; cell < 500; ++cell) {
    _table.setValue(draw(random), draw(random), number(1));
  }
  for (int round = 0; round < 60; ++round) {
    // Many ranges of one column give rows with many intervals.
    unsigned long const widest = round % 2 == 0 ? 1 : 12;
    std::vector<TableRange> ranges(draw(random) % 25);
    for (TableRange& range : ranges) {
      range = {draw(random), draw(random), 0, 0};
      range.endRow = range.firstRow + draw(random);
      range.endColumn = range.firstColumn + draw(random) % (widest + 1);
    }
    for (bool const existingOnly : {false, true}) {
      std::vector<Position> expected;
      for (unsigned long row = 0; row < 80; ++row) {
        for (unsigned long column = 0; column < 60; ++column) {
          bool const isHeld = std::ranges::any_of(
              ranges, [&](TableRange const& range) { return range.contains(row, column); });
          if (isHeld && (!existingOnly || _table.findCell(row, column) != nullptr)) {
            expected.emplace_back(row, column);
          }
        }
      }
      ASSERT_EQ(walk(ranges, existingOnly), expected) << round;
    }
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
