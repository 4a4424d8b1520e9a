#include "Formulas/Lookups/ValueDictionary.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

/// Puts values into a dictionary, and gives their indexes.
std::vector<std::uint32_t> indexAll(ValueDictionary& dictionary, std::vector<Value> const& values) {
  std::vector<ValuePartition> partitions(dictionary.hashPartitions().count());
  std::vector<std::uint32_t> indexes;
  for (Value const& value : values) {
    KeyedValue const keyed(value);
    indexes.push_back(partitions[dictionary.partitionOf(keyed.key)].getOrCreate(keyed));
  }
  for (std::size_t partition = 0; partition < partitions.size(); ++partition) {
    dictionary.put(partition, std::move(partitions[partition]));
  }
  dictionary.join();
  dictionary.makeRoom();
  for (std::size_t partition = 0; partition < partitions.size(); ++partition) {
    dictionary.settle(partition);
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    indexes[i] += dictionary.firstIndex(dictionary.partitionOf(makeKey(values[i])));
  }
  return indexes;
}

TEST(ValueDictionary, IndexesValuesInTheOrderOfAdding) {
  ValueDictionary dictionary(10);
  EXPECT_EQ(indexAll(dictionary, {Value::number(5), Value::text("a"), Value::number(5),
                                  Value::boolean(true), Value::text("A")}),
            (std::vector<std::uint32_t>{0, 1, 0, 2, 1}));
  EXPECT_EQ(dictionary.size(), 3U);
}

TEST(ValueDictionary, KindsAreKeptApart) {
  ValueDictionary dictionary(10);
  EXPECT_EQ(indexAll(dictionary, {Value::number(1), Value::boolean(true), Value::text("1"),
                                  Value::error(FormulaErrorCode::Null), Value::number(0),
                                  Value::boolean(false), Value::text("")}),
            (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 6}));
}

TEST(ValueDictionary, BothZerosAreOneNumber) {
  ValueDictionary dictionary(10);
  EXPECT_EQ(indexAll(dictionary, {Value::number(0.0), Value::number(-0.0)}),
            (std::vector<std::uint32_t>{0, 0}));
}

TEST(ValueDictionary, TextsAreFoldedBeyondAscii) {
  ValueDictionary dictionary(10);
  // The sign of the kelvin is a capital K, too.
  EXPECT_EQ(
      indexAll(dictionary, {Value::text("ÄK"), Value::text("äk"), Value::text("Ä\xE2\x84\xAA"),
                            Value::text("ä"), Value::text("\xFF")}),
      (std::vector<std::uint32_t>{0, 0, 0, 1, 2}));
}

TEST(ValueDictionary, FindsWhatIsThereAndNothingElse) {
  ValueDictionary dictionary(10);
  static_cast<void>(indexAll(dictionary, {Value::number(5), Value::text("abc")}));
  EXPECT_EQ(dictionary.find(Value::number(5)), 0U);
  EXPECT_EQ(dictionary.find(Value::text("ABC")), 1U);
  EXPECT_EQ(dictionary.find(Value::number(6)), std::nullopt);
  EXPECT_EQ(dictionary.find(Value::text("ab")), std::nullopt);
  EXPECT_EQ(dictionary.find(Value::boolean(false)), std::nullopt);
  EXPECT_EQ(dictionary.find(Value()), std::nullopt);
  EXPECT_EQ(dictionary.find(Value::missing()), std::nullopt);
  EXPECT_TRUE(dictionary.isEqualAt(1, Value::text("Abc")));
  EXPECT_FALSE(dictionary.isEqualAt(1, Value::number(5)));
  EXPECT_FALSE(dictionary.isEqualAt(0, Value::number(6)));
}

TEST(ValueDictionary, TakesLaterValuesBehindTheOthers) {
  ValueDictionary dictionary(10);
  static_cast<void>(indexAll(dictionary, {Value::number(5), Value::text("abc")}));
  EXPECT_EQ(dictionary.getOrAdd(Value::text("later")), 2U);
  EXPECT_EQ(dictionary.getOrAdd(Value::number(5)), 0U);
  EXPECT_EQ(dictionary.getOrAdd(Value::number(7)), 3U);
  EXPECT_EQ(dictionary.getOrAdd(Value::text("LATER")), 2U);
  EXPECT_EQ(dictionary.size(), 4U);
  EXPECT_EQ(dictionary.find(Value::text("Later")), 2U);
  EXPECT_EQ(dictionary.find(Value::number(7)), 3U);
  EXPECT_EQ(dictionary.find(Value::number(8)), std::nullopt);
  EXPECT_TRUE(dictionary.isEqualAt(2, Value::text("lateR")));
}

TEST(ValueDictionary, HasRoomForSomeLaterValues) {
  ValueDictionary dictionary(160);
  static_cast<void>(indexAll(dictionary, {Value::number(-1)}));
  for (int number = 0; number < 74; ++number) {
    EXPECT_TRUE(dictionary.hasRoom());
    static_cast<void>(dictionary.getOrAdd(Value::number(number)));
  }
  EXPECT_FALSE(dictionary.hasRoom());
}

TEST(ValueDictionary, CopiesLaterTextsUnlessTheyAreLong) {
  ValueDictionary dictionary(10);
  static_cast<void>(indexAll(dictionary, {Value::number(5)}));
  std::string text = "one of the texts";
  static_cast<void>(dictionary.getOrAdd(Value::text(text)));
  text = "another text";
  EXPECT_TRUE(dictionary.find(Value::text("one of the texts")).has_value());
  EXPECT_FALSE(dictionary.borrowsTexts());
  std::string const longText(10'000, 'x');
  static_cast<void>(dictionary.getOrAdd(Value::text(longText)));
  EXPECT_TRUE(dictionary.borrowsTexts());
}

TEST(ValueDictionary, IndexesTheValuesOfSeveralPartitions) {
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
  ValueDictionary dictionary(values.size());
  EXPECT_EQ(dictionary.hashPartitions().count(), 8U);
  auto const indexes = indexAll(dictionary, values);
  EXPECT_EQ(dictionary.size(), 2 * count);
  std::vector<bool> isTaken(std::size_t{2} * count);
  for (std::uint32_t i = 0; i < 2 * count; ++i) {
    ASSERT_LT(indexes[i], 2 * count);
    ASSERT_FALSE(isTaken[indexes[i]]);
    isTaken[indexes[i]] = true;
    ASSERT_EQ(dictionary.find(values[i]), indexes[i]);
    ASSERT_TRUE(dictionary.isEqualAt(indexes[i], values[i]));
    ASSERT_FALSE(dictionary.isEqualAt(indexes[i], values[(i + 2) % values.size()]));
  }
  for (std::size_t partition = 0; partition + 1 < dictionary.hashPartitions().count();
       ++partition) {
    std::uint32_t const size =
        dictionary.firstIndex(partition + 1) - dictionary.firstIndex(partition);
    EXPECT_NEAR(size, 2 * count / 8, 1000) << "of partition " << partition;
  }
  EXPECT_GE(dictionary.memory(), 2 * count * (sizeof(double) + 16) + count * 16);
}

}  // namespace

}  // namespace Zorv::Formulas
