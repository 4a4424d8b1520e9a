#include "Formulas/Values/Comparison.h"

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

TEST(Comparison, NumbersComeBeforeTextsBeforeTruthValues) {
  EXPECT_LT(compareValues(Value::number(1e300), Value::text("")), 0);
  EXPECT_LT(compareValues(Value::text("z"), Value::boolean(false)), 0);
  EXPECT_GT(compareValues(Value::boolean(false), Value::number(1)), 0);
}

TEST(Comparison, ValuesOfOneKindCompare) {
  EXPECT_LT(compareValues(Value::number(1), Value::number(2)), 0);
  EXPECT_EQ(compareValues(Value::number(0.0), Value::number(-0.0)), 0);
  EXPECT_LT(compareValues(Value::boolean(false), Value::boolean(true)), 0);
}

TEST(Comparison, TextsCompareWithoutLetterCase) {
  EXPECT_EQ(compareValues(Value::text("ÄPFEL"), Value::text("äpfel")), 0);
  EXPECT_LT(compareValues(Value::text("Apfel"), Value::text("banane")), 0);
  EXPECT_GT(compareValues(Value::text("ab"), Value::text("A")), 0);
}

TEST(Comparison, AnEmptyValueIsTheZeroTheEmptyTextOrFalse) {
  EXPECT_EQ(compareValues(Value(), Value::number(0)), 0);
  EXPECT_LT(compareValues(Value(), Value::number(1)), 0);
  EXPECT_GT(compareValues(Value(), Value::number(-1)), 0);
  EXPECT_EQ(compareValues(Value::text(""), Value()), 0);
  EXPECT_GT(compareValues(Value::text("a"), Value()), 0);
  EXPECT_EQ(compareValues(Value(), Value::boolean(false)), 0);
  EXPECT_EQ(compareValues(Value(), Value::missing()), 0);
}

}  // namespace

}  // namespace Zorv::Formulas
