#include "ConditionalFormatters/Formats/CndFrmt_FormatCursor.h"

#include <functional>
#include <random>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ConditionalFormatters/Formats/CndFrmt_FormatWalk.h"
#include "DOM/Table.h"
#include "support/Documents.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;

class FormatCursorTest : public testing::Test {
protected:
  void add(std::vector<TableRange> ranges) {
    _refs.emplace_back(std::move(ranges), std::cref(addFormat(_table, {}, holdsAlways())));
  }

  DOM::Table _table;
  ConditionalFormatRefs _refs;
};

TEST_F(FormatCursorTest, FindsTheFormatsOfAPositionByPriorityAndEachOnce) {
  add({{0, 0, 9, 9}, {2, 2, 4, 4}});
  add({{2, 2, 3, 3}});
  add({{2, 0, 4, 4}, {2, 2, 9, 9}});
  RangeIndex const index(_refs);
  FormatCursor cursor(index);
  EXPECT_THAT(cursor.moveTo(2, 2), ElementsAre(0, 1, 2));
  EXPECT_THAT(cursor.moveTo(2, 3), ElementsAre(0, 2));
  EXPECT_THAT(cursor.moveTo(0, 8), ElementsAre(0));
  EXPECT_THAT(cursor.moveTo(9, 8), IsEmpty());
}

TEST_F(FormatCursorTest, FormatsWithoutPositionsAreNowhere) {
  add({});
  add({{3, 3, 3, 8}, {5, 5, 4, 9}});
  RangeIndex const index(_refs);
  FormatCursor cursor(index);
  EXPECT_THAT(cursor.moveTo(3, 3), IsEmpty());
  EXPECT_THAT(cursor.moveTo(4, 7), IsEmpty());
}

TEST_F(FormatCursorTest, TellsPositionsApartThatDoublesDoNot) {
  for (unsigned const bits : {53U, 63U}) {
    unsigned long const big = 1UL << bits;
    _refs.clear();
    add({{big, 0, big + 1, 1}});
    add({{big + 1, 0, big + 2, 1}});
    RangeIndex const index(_refs);
    FormatCursor cursor(index);
    EXPECT_THAT(cursor.moveTo(big - 1, 0), IsEmpty()) << bits;
    EXPECT_THAT(cursor.moveTo(big, 0), ElementsAre(0)) << bits;
    EXPECT_THAT(cursor.moveTo(big + 1, 0), ElementsAre(1)) << bits;
    EXPECT_THAT(cursor.moveTo(big + 2, 0), IsEmpty()) << bits;
  }
}

TEST_F(FormatCursorTest, CountsTheRangesOfAPosition) {
  add({{0, 0, 9, 9}, {2, 2, 4, 4}, {2, 2, 4, 4}});
  add({{2, 0, 3, 9}});
  RangeIndex const index(_refs);
  FormatCursor cursor(index);
  EXPECT_EQ(cursor.countRanges(2, 2), 4U);
  EXPECT_EQ(cursor.countRanges(3, 2), 3U);
  EXPECT_EQ(cursor.countRanges(2, 5), 2U);
  EXPECT_EQ(cursor.countRanges(9, 9), 0U);
}

TEST_F(FormatCursorTest, ListsTheColumnsOfARowInterval) {
  RangeIndex const index(std::vector<TableRange>{{1, 0, 5, 2}, {1, 4, 5, 6}, {3, 1, 7, 5}});
  FormatCursor cursor(index);
  EXPECT_EQ(cursor.enterRow(0), 1U);
  EXPECT_EQ(cursor.getWidth(), 0U);
  EXPECT_EQ(cursor.enterRow(2), 3U);
  EXPECT_EQ(cursor.getWidth(), 4U);
  EXPECT_THAT(cursor.listColumns(), ElementsAre(ColumnInterval{0, 2}, ColumnInterval{4, 6}));
  EXPECT_EQ(cursor.enterRow(3), 5U);
  EXPECT_THAT(cursor.listColumns(), ElementsAre(ColumnInterval{0, 6}));
  EXPECT_EQ(cursor.enterRow(6), 7U);
  EXPECT_THAT(cursor.listColumns(), ElementsAre(ColumnInterval{1, 5}));
  EXPECT_EQ(cursor.enterRow(1), 3U) << "a step upwards begins a new sweep";
  EXPECT_THAT(cursor.listColumns(), ElementsAre(ColumnInterval{0, 2}, ColumnInterval{4, 6}));
}

TEST_F(FormatCursorTest, AStepUpwardsDoesNotLeaveRangesThatItNeverEntered) {
  RangeIndex const index(std::vector<TableRange>{{0, 0, 2, 2}, {5, 0, 9, 2}});
  FormatCursor cursor(index);
  EXPECT_EQ(cursor.enterRow(8), 9U);
  EXPECT_EQ(cursor.enterRow(3), 5U);
  EXPECT_EQ(cursor.getWidth(), 0U);
  EXPECT_EQ(cursor.enterRow(1), 2U);
  EXPECT_EQ(cursor.getWidth(), 2U);
}

TEST_F(FormatCursorTest, AgreesWithTheHoldTestInAnyOrderOfPositions) {
  std::mt19937 random(7);
  std::uniform_int_distribution<unsigned long> draw(0, 15);
  for (int format = 0; format < 40; ++format) {
    std::vector<TableRange> ranges(draw(random) % 4);
    for (TableRange& range : ranges) {
      range = {draw(random), draw(random), draw(random), draw(random)};
    }
    add(ranges);
  }
  RangeIndex const index(_refs);
  FormatCursor cursor(index);
  for (int step = 0; step < 3'000; ++step) {
    DOM::CellInfo const cell = _table.getCellInfo(draw(random), draw(random));
    FormatIndices expected;
    for (FormatIndex const format : findFormatsOn(_refs, cell)) {
      expected.push_back(format);
    }
    ASSERT_EQ(cursor.moveTo(cell.getRowIndex(), cell.getColIndex()), expected) << step;
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
