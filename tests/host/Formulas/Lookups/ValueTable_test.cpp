#include "Formulas/Lookups/ValueTable.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

/// Puts values into a table with one piece for so many cells, and gives their numbers.
std::vector<std::uint32_t> obtainAll(ValueTable& table, std::vector<Value> const& values) {
  std::vector<ValuePiece> pieces(table.pieceCount());
  std::vector<std::uint32_t> numbers;
  for (Value const& value : values) {
    KeyedValue const keyed(value);
    numbers.push_back(pieces[table.pieceOf(keyed.key)].obtain(keyed));
  }
  for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
    table.put(piece, std::move(pieces[piece]));
  }
  table.join();
  for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
    table.settle(piece);
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    numbers[i] += table.firstNumber(table.pieceOf(makeKey(values[i])));
  }
  return numbers;
}

TEST(ValueTable, NumbersValuesInTheOrderInWhichTheyCome) {
  ValueTable table(10);
  EXPECT_EQ(obtainAll(table, {Value::number(5), Value::text("a"), Value::number(5),
                              Value::boolean(true), Value::text("A")}),
            (std::vector<std::uint32_t>{0, 1, 0, 2, 1}));
  EXPECT_EQ(table.size(), 3U);
}

TEST(ValueTable, KindsAreKeptApart) {
  ValueTable table(10);
  EXPECT_EQ(obtainAll(table, {Value::number(1), Value::boolean(true), Value::text("1"),
                              Value::error(FormulaErrorCode::Null), Value::number(0),
                              Value::boolean(false), Value::text("")}),
            (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 6}));
}

TEST(ValueTable, BothZerosAreOneNumber) {
  ValueTable table(10);
  EXPECT_EQ(obtainAll(table, {Value::number(0.0), Value::number(-0.0)}),
            (std::vector<std::uint32_t>{0, 0}));
}

TEST(ValueTable, TextsAreFoldedBeyondAscii) {
  ValueTable table(10);
  // The sign of the kelvin is a capital K, too.
  EXPECT_EQ(obtainAll(table, {Value::text("ÄK"), Value::text("äk"), Value::text("Ä\xE2\x84\xAA"),
                              Value::text("ä"), Value::text("\xFF")}),
            (std::vector<std::uint32_t>{0, 0, 0, 1, 2}));
}

TEST(ValueTable, FindsWhatIsThereAndNothingElse) {
  ValueTable table(10);
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

TEST(ValueTable, NumbersTheValuesOfSeveralPieces) {
  constexpr std::uint32_t count = 60'000;
  std::vector<std::string> texts;
  for (std::uint32_t i = 0; i < count; ++i) {
    texts.push_back("text " + std::to_string(i));
  }
  std::vector<Value> values;
  for (std::string const& text : texts) {
    values.push_back(Value::text(text));
    values.push_back(Value::number(static_cast<double>(values.size())));
  }
  ValueTable table(values.size());
  EXPECT_EQ(table.pieceCount(), 8U);
  auto const numbers = obtainAll(table, values);
  EXPECT_EQ(table.size(), 2 * count);
  std::vector<bool> isTaken(std::size_t{2} * count);
  for (std::uint32_t i = 0; i < 2 * count; ++i) {
    ASSERT_LT(numbers[i], 2 * count);
    ASSERT_FALSE(isTaken[numbers[i]]);
    isTaken[numbers[i]] = true;
    ASSERT_EQ(table.find(values[i]), numbers[i]);
    ASSERT_TRUE(table.isNumberOf(numbers[i], values[i]));
    ASSERT_FALSE(table.isNumberOf(numbers[i], values[(i + 2) % values.size()]));
  }
  for (std::size_t piece = 0; piece + 1 < table.pieceCount(); ++piece) {
    std::uint32_t const size = table.firstNumber(piece + 1) - table.firstNumber(piece);
    EXPECT_NEAR(size, 2 * count / 8, 1000) << "of piece " << piece;
  }
  EXPECT_GE(table.memory(), 2 * count * (sizeof(double) + 16) + count * 16);
}

}  // namespace

}  // namespace Zorv::Formulas
