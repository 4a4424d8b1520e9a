#include "Formulas/Values/Comparison.h"

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

TEST(Comparison, NumbersComeBeforeTextsBeforeTruthValues) {
  EXPECT_EQ(compareValues(Value::number(1e300), Value::text("")), std::strong_ordering::less);
  EXPECT_EQ(compareValues(Value::text("z"), Value::boolean(false)), std::strong_ordering::less);
  EXPECT_EQ(compareValues(Value::boolean(false), Value::number(1)), std::strong_ordering::greater);
}

TEST(Comparison, ValuesOfOneKindCompare) {
  EXPECT_EQ(compareValues(Value::number(1), Value::number(2)), std::strong_ordering::less);
  EXPECT_EQ(compareValues(Value::number(0.0), Value::number(-0.0)), std::strong_ordering::equal);
  EXPECT_EQ(compareValues(Value::boolean(false), Value::boolean(true)), std::strong_ordering::less);
}

TEST(Comparison, TextsCompareWithoutLetterCase) {
  EXPECT_EQ(compareValues(Value::text("ÄPFEL"), Value::text("äpfel")), std::strong_ordering::equal);
  EXPECT_EQ(compareValues(Value::text("Apfel"), Value::text("banane")), std::strong_ordering::less);
  EXPECT_EQ(compareValues(Value::text("ab"), Value::text("A")), std::strong_ordering::greater);
}

TEST(Comparison, AnEmptyValueIsTheZeroTheEmptyTextOrFalse) {
  EXPECT_EQ(compareValues(Value(), Value::number(0)), std::strong_ordering::equal);
  EXPECT_EQ(compareValues(Value(), Value::number(1)), std::strong_ordering::less);
  EXPECT_EQ(compareValues(Value(), Value::number(-1)), std::strong_ordering::greater);
  EXPECT_EQ(compareValues(Value::text(""), Value()), std::strong_ordering::equal);
  EXPECT_EQ(compareValues(Value::text("a"), Value()), std::strong_ordering::greater);
  EXPECT_EQ(compareValues(Value(), Value::boolean(false)), std::strong_ordering::equal);
  EXPECT_EQ(compareValues(Value(), Value::missing()), std::strong_ordering::equal);
}

}  // namespace

}  // namespace Zorv::Formulas
