#include "ConditionalFormatters/Formats/CndFrmt_PointIndex.h"

#include <algorithm>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

TEST(PointIndex, FindsThePositionsOfItsRanges) {
  PointIndex const index({{5, 1, 7, 3}, {0, 0, 2, 2}, {6, 8, 7, 9}});
  EXPECT_TRUE(index.contains(5, 1));
  EXPECT_TRUE(index.contains(1, 1));
  EXPECT_TRUE(index.contains(6, 8));
  EXPECT_FALSE(index.contains(2, 0));
  EXPECT_FALSE(index.contains(6, 3));
  EXPECT_FALSE(index.contains(7, 8));
}

TEST(PointIndex, HoldsNothingWithoutRanges) { EXPECT_FALSE(PointIndex({}).contains(0, 0)); }

TEST(PointIndex, AgreesWithEachOfManyRanges) {
  constexpr unsigned seed = 7;
  constexpr unsigned long size = 20;
  std::mt19937 random(seed);
  auto const draw = [&](unsigned long below) { return random() % below; };
  for (int round = 0; round < 200; ++round) {
    std::vector<TableRange> ranges(draw(12));
    for (TableRange& range : ranges) {
      range.firstRow = draw(size);
      range.firstColumn = draw(size);
      range.endRow = range.firstRow + draw(6);
      range.endColumn = range.firstColumn + draw(6);
    }
    PointIndex const index(ranges);
    for (unsigned long row = 0; row < size + 6; ++row) {
      for (unsigned long column = 0; column < size + 6; ++column) {
        bool const expected = std::ranges::any_of(
            ranges, [&](TableRange const& range) { return range.contains(row, column); });
        ASSERT_EQ(index.contains(row, column), expected)
            << "round " << round << " of seed " << seed << ", row " << row << ", column " << column;
      }
    }
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
