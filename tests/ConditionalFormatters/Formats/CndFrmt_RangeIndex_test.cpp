#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"

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

class RangeIndexTest : public testing::Test {
protected:
  void add(std::vector<TableRange> ranges) {
    _refs.emplace_back(std::move(ranges), std::cref(addFormat(_table, {}, holdsAlways())));
  }

  DOM::Table _table;
  ConditionalFormatRefs _refs;
};

TEST_F(RangeIndexTest, FindsTheFormatsOfAPositionByPriorityAndEachOnce) {
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

TEST_F(RangeIndexTest, FormatsWithoutPositionsAreNowhere) {
  add({});
  add({{3, 3, 3, 8}, {5, 5, 4, 9}});
  RangeIndex const index(_refs);
  FormatCursor cursor(index);
  EXPECT_THAT(cursor.moveTo(3, 3), IsEmpty());
  EXPECT_THAT(cursor.moveTo(4, 7), IsEmpty());
}

TEST_F(RangeIndexTest, TellsPositionsApartThatDoublesDoNot) {
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

TEST_F(RangeIndexTest, AgreesWithTheHoldTestInAnyOrderOfPositions) {
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
