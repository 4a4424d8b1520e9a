#include "Formulas/Lookups/ValueTable.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

std::vector<std::uint32_t> obtainAll(ValueTable& table, std::vector<Value> const& values) {
  std::vector<std::uint32_t> numbers(values.size());
  table.obtain(values, numbers);
  return numbers;
}

TEST(ValueTable, NumbersValuesInTheOrderInWhichTheyCome) {
  ValueTable table;
  EXPECT_EQ(obtainAll(table, {Value::number(5), Value::text("a"), Value::number(5),
                              Value::boolean(true), Value::text("A")}),
            (std::vector<std::uint32_t>{0, 1, 0, 2, 1}));
  EXPECT_EQ(obtainAll(table, {Value::boolean(true), Value::number(6)}),
            (std::vector<std::uint32_t>{2, 3}));
  EXPECT_EQ(table.size(), 4U);
}

TEST(ValueTable, KindsAreKeptApart) {
  ValueTable table;
  EXPECT_EQ(obtainAll(table, {Value::number(1), Value::boolean(true), Value::text("1"),
                              Value::error(FormulaErrorCode::Null), Value::number(0),
                              Value::boolean(false), Value::text("")}),
            (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 6}));
}

TEST(ValueTable, BothZerosAreOneNumber) {
  ValueTable table;
  EXPECT_EQ(obtainAll(table, {Value::number(0.0), Value::number(-0.0)}),
            (std::vector<std::uint32_t>{0, 0}));
}

TEST(ValueTable, TextsAreFoldedBeyondAscii) {
  ValueTable table;
  // The sign of the kelvin is a capital K, too.
  EXPECT_EQ(obtainAll(table, {Value::text("ÄK"), Value::text("äk"), Value::text("Ä\xE2\x84\xAA"),
                              Value::text("ä"), Value::text("\xFF")}),
            (std::vector<std::uint32_t>{0, 0, 0, 1, 2}));
}

TEST(ValueTable, FindsWhatIsThereAndNothingElse) {
  ValueTable table;
  static_cast<void>(obtainAll(table, {Value::number(5), Value::text("abc")}));
  EXPECT_EQ(table.find(Value::number(5)), 0U);
  EXPECT_EQ(table.find(Value::text("ABC")), 1U);
  EXPECT_EQ(table.find(Value::number(6)), std::nullopt);
  EXPECT_EQ(table.find(Value::text("ab")), std::nullopt);
  EXPECT_EQ(table.find(Value::boolean(false)), std::nullopt);
  EXPECT_EQ(table.find(Value()), std::nullopt);
  EXPECT_EQ(table.find(Value::missing()), std::nullopt);
  EXPECT_TRUE(table.isNumberOf(1, Value::text("Abc")));
  EXPECT_FALSE(table.isNumberOf(1, Value::number(5)));
  EXPECT_FALSE(table.isNumberOf(0, Value::number(6)));
}

TEST(ValueTable, GrowsWithItsValues) {
  constexpr std::uint32_t count = 20'000;
  std::vector<std::string> texts;
  for (std::uint32_t i = 0; i < count; ++i) {
    texts.push_back("text " + std::to_string(i));
  }
  ValueTable table;
  std::vector<Value> values;
  for (std::string const& text : texts) {
    values.push_back(Value::text(text));
    values.push_back(Value::number(static_cast<double>(values.size())));
  }
  auto const numbers = obtainAll(table, values);
  EXPECT_EQ(table.size(), 2 * count);
  for (std::uint32_t i = 0; i < 2 * count; ++i) {
    ASSERT_EQ(numbers[i], i);
    ASSERT_EQ(table.find(values[i]), i);
    ASSERT_TRUE(table.isNumberOf(i, values[i]));
  }
  EXPECT_GE(table.memory(), 2 * count * sizeof(double));
}

}  // namespace

}  // namespace Zorv::Formulas
