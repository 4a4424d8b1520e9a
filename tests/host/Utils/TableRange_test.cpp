#include "Utils/TableRange.h"

#include <limits>

#include <gtest/gtest.h>

namespace Zorv {
namespace {

TEST(TableRange, HoldsItsFirstAndNotItsEnd) {
  TableRange const range{2, 3, 5, 6};
  EXPECT_TRUE(range.contains(2, 3));
  EXPECT_TRUE(range.contains(4, 5));
  EXPECT_FALSE(range.contains(1, 3));
  EXPECT_FALSE(range.contains(5, 3));
  EXPECT_FALSE(range.contains(2, 2));
  EXPECT_FALSE(range.contains(2, 6));
}

TEST(TableRange, ADefaultRangeHoldsNothing) { EXPECT_FALSE(TableRange().contains(0, 0)); }

TEST(TableRange, IsEmptyWithoutRowsOrColumns) {
  EXPECT_TRUE(TableRange().isEmpty());
  EXPECT_FALSE((TableRange{2, 3, 3, 4}).isEmpty());
  EXPECT_TRUE((TableRange{2, 3, 2, 4}).isEmpty());
  EXPECT_TRUE((TableRange{2, 3, 3, 3}).isEmpty());
  EXPECT_TRUE((TableRange{2, 3, 1, 4}).isEmpty());
  EXPECT_TRUE((TableRange{2, 3, 3, 2}).isEmpty());
}

TEST(TableRange, IntersectGivesTheSharedPositions) {
  EXPECT_EQ(intersect({0, 1, 5, 6}, {2, 0, 9, 4}), (TableRange{2, 1, 5, 4}));
  EXPECT_EQ(intersect({2, 0, 9, 4}, {0, 1, 5, 6}), (TableRange{2, 1, 5, 4}));
  EXPECT_EQ(intersect({0, 0, 9, 9}, {3, 4, 5, 6}), (TableRange{3, 4, 5, 6}));
}

TEST(TableRange, DisjointRangesIntersectInAnEmptyRangeThatDoesNotEndBeforeItsFirst) {
  EXPECT_EQ(intersect({0, 0, 2, 9}, {5, 0, 7, 9}), (TableRange{5, 0, 5, 9}));
  EXPECT_EQ(intersect({0, 0, 9, 2}, {0, 5, 9, 7}), (TableRange{0, 5, 9, 5}));
  EXPECT_TRUE(intersect({0, 0, 2, 2}, {2, 2, 4, 4}).isEmpty());
}

TEST(TableRange, PositionsAreComparedUnsigned) {
  constexpr auto largest = std::numeric_limits<unsigned long>::max();
  EXPECT_TRUE((TableRange{0, 0, largest, largest}).contains(largest - 1, largest - 1));
  EXPECT_FALSE((TableRange{0, 0, largest, largest}).contains(largest, 0));
}

}  // namespace
}  // namespace Zorv
