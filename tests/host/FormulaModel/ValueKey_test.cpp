#include "FormulaModel/ValueKey.h"

#include <functional>
#include <limits>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::FormulaModel {
namespace {

ValueKey keyOf(FormulaValue const& value) { return makeValueKey(value, std::hash<std::string>()); }

TEST(ValueKey, BothZerosHaveOneKey) {
  EXPECT_EQ(ValueKey::ofNumber(0.0), ValueKey::ofNumber(-0.0));
  EXPECT_NE(ValueKey::ofNumber(1.0), ValueKey::ofNumber(-1.0));
}

TEST(ValueKey, DifferentValuesHaveDifferentKeys) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  std::set<std::uint64_t> keys;
  for (double const number : {0.0, 1.0, -1.0, 256.0, infinity, -infinity}) {
    keys.insert(keyOf(FormulaNumber{FloatNumber(number)}).bits());
  }
  keys.insert(keyOf(FormulaBoolean{false}).bits());
  keys.insert(keyOf(FormulaBoolean{true}).bits());
  keys.insert(keyOf(FormulaError{FormulaErrorCode::Null}).bits());
  keys.insert(keyOf(FormulaError{FormulaErrorCode::Calculation}).bits());
  keys.insert(keyOf(FormulaString{""}).bits());
  keys.insert(keyOf(FormulaString{"1"}).bits());
  keys.insert(keyOf(FormulaEmpty()).bits());
  EXPECT_EQ(keys.size(), 13U);
}

TEST(ValueKey, TheCallersHashSaysWhichTextsAreEqual) {
  auto const length = [](std::string const& text) { return text.size(); };
  EXPECT_EQ(makeValueKey(FormulaString{"abc"}, length), makeValueKey(FormulaString{"xyz"}, length));
  EXPECT_NE(keyOf(FormulaString{"abc"}), keyOf(FormulaString{"xyz"}));
}

TEST(ValueKey, OnlyTextsAreTexts) {
  EXPECT_TRUE(ValueKey::ofTextHash(0).isText());
  EXPECT_TRUE(ValueKey::ofTextHash(~std::uint64_t{0}).isText());
  EXPECT_FALSE(ValueKey::ofNumber(-std::numeric_limits<double>::infinity()).isText());
  EXPECT_FALSE(ValueKey::ofBoolean(true).isText());
  EXPECT_FALSE(ValueKey::ofError(FormulaErrorCode::Value).isText());
  EXPECT_FALSE(ValueKey::ofEmpty().isText());
}

TEST(ValueKey, ATextMayBeKnownByItsIndex) {
  ValueKey const key = ValueKey::ofTextIndex(4'000'000'000);
  EXPECT_TRUE(key.isText());
  EXPECT_EQ(key.textIndex(), 4'000'000'000U);
}

TEST(ValueKey, HashesOfNumbersInARowDifferInTheirLowAndHighBits) {
  std::set<std::uint64_t> low;
  std::set<std::uint64_t> high;
  for (int number = 0; number < 256; ++number) {
    std::uint64_t const hash = ValueKey::ofNumber(number).hash();
    low.insert(hash & 0xFFFFU);
    high.insert(hash >> 48U);
  }
  EXPECT_GT(low.size(), 240U);
  EXPECT_GT(high.size(), 240U);
}

}  // namespace
}  // namespace Zorv::FormulaModel
