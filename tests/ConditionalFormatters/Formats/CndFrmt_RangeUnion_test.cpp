#include "ConditionalFormatters/Formats/CndFrmt_RangeUnion.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

constexpr TableRange wholeSheet{0, 0, 1'048'576, 16'384};

/// The positions of the first rows and columns as text: `A1 C2 `.
std::string positionsOf(RangeUnion const& positions) {
  std::string text;
  for (unsigned long row = 0; row < 12; ++row) {
    for (unsigned long column = 0; column < 12; ++column) {
      if (positions.contains(row, column)) {
        text += static_cast<char>('A' + column);
        text += std::to_string(row + 1) + " ";
      }
    }
  }
  return text;
}

TEST(RangeUnion, HoldsThePositionsOfItsRange) {
  std::vector<TableRange> const ranges{{0, 0, 2, 2}};
  EXPECT_EQ(positionsOf(RangeUnion(ranges)), "A1 B1 A2 B2 ");
  EXPECT_EQ(countPositions(ranges), 4U);
}

TEST(RangeUnion, CountsOverlappingPositionsOnce) {
  std::vector<TableRange> const ranges{{0, 0, 2, 2}, {1, 1, 3, 3}, {0, 0, 2, 2}};
  EXPECT_EQ(positionsOf(RangeUnion(ranges)), "A1 B1 A2 B2 C2 B3 C3 ");
  EXPECT_EQ(countPositions(ranges), 7U);
}

TEST(RangeUnion, KeepsGapsBetweenRangesInRowsAndColumns) {
  EXPECT_EQ(positionsOf(RangeUnion({{4, 0, 5, 1}, {0, 2, 1, 3}, {0, 0, 1, 1}})), "A1 C1 A5 ");
}

TEST(RangeUnion, MayBeEmpty) {
  for (auto const& ranges :
       {std::vector<TableRange>(), std::vector<TableRange>{{3, 3, 3, 9}, {5, 5, 9, 2}}}) {
    EXPECT_EQ(countPositions(ranges), 0U);
    EXPECT_FALSE(RangeUnion(ranges).contains(3, 3));
    EXPECT_TRUE(RangeUnion(ranges).cover().empty());
  }
}

TEST(RangeUnion, CountsMoreThanCanBeVisited) {
  EXPECT_EQ(countPositions({wholeSheet}), 17'179'869'184U);
}

TEST(RangeUnion, HoldsThePositionsThatTheRangesHold) {
  std::mt19937 random(5);
  std::uniform_int_distribution<unsigned long> draw(0, 11);
  for (int round = 0; round < 300; ++round) {
    std::vector<TableRange> ranges(draw(random));
    for (TableRange& range : ranges) {
      range = {draw(random), draw(random), draw(random), draw(random)};
    }
    RangeUnion const positions(ranges);
    std::uint64_t count = 0;
    for (unsigned long row = 0; row < 13; ++row) {
      for (unsigned long column = 0; column < 13; ++column) {
        bool const isHeld = std::ranges::any_of(
            ranges, [&](TableRange const& range) { return range.contains(row, column); });
        count += isHeld ? 1 : 0;
        ASSERT_EQ(positions.contains(row, column), isHeld) << round << ": " << row << "," << column;
      }
    }
    ASSERT_EQ(countPositions(ranges), count) << round;
  }
}

TEST(RangeUnion, OfNestedRangesIsTheOutermostOne) {
  std::vector<TableRange> ranges;
  for (unsigned long i = 0; i < 5'000; ++i) {
    ranges.push_back({i, i % 5'000, 20'000 - i, 10'000 - i % 5'000});
  }
  EXPECT_EQ(countPositions(ranges), 20'000U * 10'000U);
  EXPECT_EQ(RangeUnion(ranges).cover(), std::vector{ranges.front()});
}

TEST(RangeUnion, IsClippedToBounds) {
  std::vector<TableRange> const clipped{{1, 1, 3, 2}};
  EXPECT_EQ(clip({wholeSheet, {7, 7, 9, 9}}, {1, 1, 3, 2}), clipped);
  EXPECT_TRUE(clip({{0, 0, 2, 2}}, {5, 5, 9, 9}).empty());
  EXPECT_TRUE(clip({{0, 0, 2, 2}}, {}).empty());
}

struct CoverCase {
  std::string name;
  std::vector<TableRange> ranges;
  std::vector<TableRange> cover;
};

class RangeUnionCover : public testing::TestWithParam<CoverCase> {};

TEST_P(RangeUnionCover, HoldsFewOtherPositions) {
  EXPECT_EQ(RangeUnion(GetParam().ranges).cover(), GetParam().cover);
}

INSTANTIATE_TEST_SUITE_P(
    Unions, RangeUnionCover,
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

}  // namespace
}  // namespace Zorv::ConditionalFormatters
