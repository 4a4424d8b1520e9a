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

TEST(TableRange, PositionsAreComparedUnsigned) {
  constexpr auto largest = std::numeric_limits<unsigned long>::max();
  EXPECT_TRUE((TableRange{0, 0, largest, largest}).contains(largest - 1, largest - 1));
  EXPECT_FALSE((TableRange{0, 0, largest, largest}).contains(largest, 0));
}

}  // namespace
}  // namespace Zorv
