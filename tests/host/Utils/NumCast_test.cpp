#include "Utils/NumCast.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace Zorv {
namespace {

constexpr char const* positiveOverflow = "bad numeric conversion: positive overflow";
constexpr char const* negativeOverflow = "bad numeric conversion: negative overflow";

template <class Convert>
std::string messageOf(Convert const& convert) {
  try {
    convert();
  } catch (BadNumCastError const& error) {
    return error.what();
  }
  return "no error";
}

template <class To, class From>
std::string messageOfCast(From value) {
  return messageOf([&] { (void)numCast<To>(value); });
}

TEST(NumCast, PositionsUpToTheLargestIntAreKept) {
  EXPECT_EQ((numCast<int, unsigned long>(0)), 0);
  EXPECT_EQ((numCast<int, unsigned long>(2147483647)), 2147483647);
}

TEST(NumCast, LargerPositionsOverflow) {
  EXPECT_EQ((messageOfCast<int, unsigned long>(2147483648)), positiveOverflow);
  EXPECT_EQ((messageOfCast<int>(std::numeric_limits<unsigned long>::max())), positiveOverflow);
}

TEST(NumCast, FractionsAreCutTowardZero) {
  EXPECT_EQ((numCast<unsigned long, double>(-0.5)), 0UL);
  EXPECT_EQ((numCast<unsigned long, double>(-0.9999999)), 0UL);
  EXPECT_EQ((numCast<unsigned long, double>(2.999)), 2UL);
}

TEST(NumCast, TheLargestDoubleBelowTheLimitIsKept) {
  EXPECT_EQ((numCast<unsigned long, double>(18446744073709549568.0)), 18446744073709549568UL);
}

TEST(NumCast, NumbersFromMinusOneDownOverflow) {
  EXPECT_EQ((messageOfCast<unsigned long>(-1.0)), negativeOverflow);
  EXPECT_EQ((messageOfCast<unsigned long>(-1e300)), negativeOverflow);
  EXPECT_EQ((messageOfCast<unsigned long>(-std::numeric_limits<double>::infinity())),
            negativeOverflow);
}

TEST(NumCast, NumbersFromTheLimitUpOverflow) {
  EXPECT_EQ((messageOfCast<unsigned long>(18446744073709551616.0)), positiveOverflow);
  EXPECT_EQ((messageOfCast<unsigned long>(std::numeric_limits<double>::infinity())),
            positiveOverflow);
}

TEST(NumCast, ANaNIsNoWholeNumber) {
  EXPECT_EQ((messageOfCast<unsigned long>(std::numeric_limits<double>::quiet_NaN())),
            "bad numeric conversion: overflow");
}

}  // namespace
}  // namespace Zorv
