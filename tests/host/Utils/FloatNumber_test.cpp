#include "Utils/FloatNumber.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace Zorv {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(FloatNumber, ComparesWithoutTolerance) {
  FloatNumber const sum(0.1 + 0.2);
  FloatNumber const literal(0.3);
  EXPECT_FALSE(sum == literal);
  EXPECT_TRUE(sum > literal);
  EXPECT_TRUE(literal < sum);
  EXPECT_TRUE(literal <= literal);
  EXPECT_TRUE(sum >= literal);
}

TEST(FloatNumber, NothingComparesWithNaN) {
  FloatNumber const one(1.0);
  for (FloatNumber const& other : {one, FloatNumber(nan)}) {
    EXPECT_FALSE(FloatNumber(nan) == other);
    EXPECT_FALSE(FloatNumber(nan) < other);
    EXPECT_FALSE(FloatNumber(nan) > other);
    EXPECT_FALSE(FloatNumber(nan) <= other);
    EXPECT_FALSE(FloatNumber(nan) >= other);
  }
}

TEST(FloatNumber, SumsProductsAndQuotientsCarryNoNegativeZero) {
  FloatNumber const negativeZero(-0.0);
  EXPECT_FALSE(std::signbit((negativeZero + negativeZero).get()));
  EXPECT_FALSE(std::signbit((negativeZero * FloatNumber(1.0)).get()));
  EXPECT_FALSE(std::signbit((negativeZero / FloatNumber(1.0)).get()));
  EXPECT_FALSE(std::signbit((FloatNumber(-1.0) + FloatNumber(1.0)).get()));
  FloatNumber sum(-0.0);
  sum += negativeZero;
  EXPECT_FALSE(std::signbit(sum.get()));
}

TEST(FloatNumber, SumsAreOrdinaryOtherwise) {
  EXPECT_EQ((FloatNumber(-2.5) + FloatNumber(1.0)).get(), -1.5);
  EXPECT_EQ((FloatNumber(5.0) - FloatNumber(7.0)).get(), -2.0);
}

TEST(FloatNumber, Swaps) {
  FloatNumber a(1.0);
  FloatNumber b(2.0);
  a.swap(b);
  EXPECT_EQ(a.get(), 2.0);
  EXPECT_EQ(b.get(), 1.0);
}

TEST(FloatNumber, FloorIsTheWholeNumberNotAbove) {
  EXPECT_EQ(floor(FloatNumber(2.75)).get(), 2.0);
  EXPECT_EQ(floor(FloatNumber(-2.25)).get(), -3.0);
  EXPECT_EQ(floor(FloatNumber(3.0)).get(), 3.0);
  EXPECT_TRUE(std::isnan(floor(FloatNumber(nan)).get()));
}

}  // namespace
}  // namespace Zorv
