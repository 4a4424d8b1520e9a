#include "ConditionalFormatters/Formats/CndFrmt_Positions.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

constexpr TableRange wholeSheet{0, 0, 1'048'576, 16'384};

TEST(Positions, CountsThePositionsOfARange) {
  std::vector<TableRange> const ranges{{0, 0, 2, 2}};
  EXPECT_EQ(countPositions(ranges), 4U);
}

TEST(Positions, CountsOverlappingPositionsOnce) {
  std::vector<TableRange> const ranges{{0, 0, 2, 2}, {1, 1, 3, 3}, {0, 0, 2, 2}};
  EXPECT_EQ(countPositions(ranges), 7U);
}

TEST(Positions, CountsNothingInEmptyRanges) {
  for (auto const& ranges :
       {std::vector<TableRange>(), std::vector<TableRange>{{3, 3, 3, 9}, {5, 5, 9, 2}}}) {
    EXPECT_EQ(countPositions(ranges), 0U);
  }
}

TEST(Positions, CountsMoreThanCanBeVisited) {
  EXPECT_EQ(countPositions({wholeSheet}), 17'179'869'184U);
  // Up to the last row that a number can name.
  constexpr unsigned long last = ~0UL;
  EXPECT_EQ(countPositions({{last - 3, 0, last, 2}}), 6U);
}

TEST(Positions, CountsThePositionsThatAnyRangeHolds) {
  std::mt19937 random(5);
  std::uniform_int_distribution<unsigned long> draw(0, 11);
  for (int round = 0; round < 300; ++round) {
    std::vector<TableRange> ranges(draw(random));
    for (TableRange& range : ranges) {
      range = {draw(random), draw(random), draw(random), draw(random)};
    }
    std::uint64_t count = 0;
    for (unsigned long row = 0; row < 13; ++row) {
      for (unsigned long column = 0; column < 13; ++column) {
        bool const isHeld = std::ranges::any_of(
            ranges, [&](TableRange const& range) { return range.contains(row, column); });
        count += isHeld ? 1 : 0;
      }
    }
    ASSERT_EQ(countPositions(ranges), count) << round;
  }
}

TEST(Positions, CountsNestedRangesAsTheOutermostOne) {
  std::vector<TableRange> ranges;
  for (unsigned long i = 0; i < 5'000; ++i) {
    ranges.push_back({i, i % 5'000, 20'000 - i, 10'000 - i % 5'000});
  }
  EXPECT_EQ(countPositions(ranges), 20'000U * 10'000U);
}

TEST(Positions, AreClippedToBounds) {
  std::vector<TableRange> const clipped{{1, 1, 3, 2}};
  EXPECT_EQ(clip({wholeSheet, {7, 7, 9, 9}}, {1, 1, 3, 2}), clipped);
  EXPECT_TRUE(clip({{0, 0, 2, 2}}, {5, 5, 9, 9}).empty());
  EXPECT_TRUE(clip({{0, 0, 2, 2}}, {}).empty());
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
