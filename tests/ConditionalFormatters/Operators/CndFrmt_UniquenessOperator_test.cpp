#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "DOM/ConditionalFormatOperator.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using DOM::UniquenessType;
using FormulaModel::FormulaErrorCode;

static_assert(std::is_final_v<UniquenessOperator>);

CellIndex const anyCell{RowIndex(0), ColumnIndex(0)};

FormulaValueMultiset makeMultiset(std::vector<FormulaValue> const& values) {
  return {values.begin(), values.end()};
}

bool judge(UniquenessType type, std::vector<FormulaValue> const& values,
           FormulaValue const& value) {
  UniquenessOperator const condition({type}, makeMultiset(values));
  return condition({value, anyCell});
}

TEST(UniquenessOperator, HoldsByTheCountOfTheValue) {
  FormulaValue const one = number(1);
  struct Case {
    char const* name;
    std::vector<FormulaValue> values;
    FormulaValue judged;
    bool duplicate;
  };
  std::vector<Case> const cases{
      {"a repeated number", {number(3), number(3), number(4)}, number(3), true},
      {"a number that stands once", {number(3), number(3), number(4)}, number(4), false},
      {"many times", {one, one, one, one, one}, one, true},
      {"texts that differ in case", {text("Abc"), text("abc")}, text("abc"), false},
      {"equal texts", {text("abc"), text("abc")}, text("abc"), true},
      {"a text with a zero byte", {text(std::string("a\0b", 3)), text("a")}, text("a"), false},
      {"a number, a truth value and a text", {one, boolean(true), text("1")}, one, false},
      {"a truth value beside a number", {one, boolean(true)}, boolean(true), false},
      {"equal truth values", {boolean(false), boolean(false)}, boolean(false), true},
      {"both truth values", {boolean(false), boolean(true)}, boolean(false), false},
      {"equal errors",
       {error(FormulaErrorCode::Name), error(FormulaErrorCode::Name)},
       error(FormulaErrorCode::Name),
       true},
      {"errors of different codes",
       {error(FormulaErrorCode::Name), error(FormulaErrorCode::Value)},
       error(FormulaErrorCode::Name),
       false},
      {"the error whose code is 1 beside what hashes alike",
       {error(FormulaErrorCode::Null), boolean(true)},
       error(FormulaErrorCode::Null),
       false},
      {"the two zeros", {number(0.0), number(-0.0)}, number(0.0), true},
      {"the negative zero alone", {number(-0.0)}, number(0.0), false},
      {"the empty text", {text(""), text("")}, text(""), true},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(judge(UniquenessType::Duplicate, c.values, c.judged), c.duplicate);
    EXPECT_EQ(judge(UniquenessType::Unique, c.values, c.judged), !c.duplicate);
  }
}

TEST(UniquenessOperator, AnEmptyCellIsNeitherDuplicateNorUnique) {
  EXPECT_FALSE(judge(UniquenessType::Duplicate, {}, empty()));
  EXPECT_FALSE(judge(UniquenessType::Unique, {}, empty()));
}

TEST(UniquenessOperator, ARecordOfAnotherKindNeverHolds) {
  for (int kind : {2, 3, 255}) {
    SCOPED_TRACE(kind);
    auto const type = static_cast<UniquenessType>(kind);
    EXPECT_FALSE(judge(type, {number(1)}, number(1)));
    EXPECT_FALSE(judge(type, {number(1), number(1)}, number(1)));
    EXPECT_FALSE(judge(type, {}, empty()));
  }
}

TEST(UniquenessOperator, AnswersForAnyNumberOfCells) {
  UniquenessOperator const condition({UniquenessType::Unique},
                                     makeMultiset({number(1), number(2), number(2)}));
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(condition({number(1), anyCell}));
    EXPECT_FALSE(condition({number(2), anyCell}));
  }
}

TEST(UniquenessOperator, TakesTheValuesOver) {
  FormulaValueMultiset values = makeMultiset({number(1)});
  UniquenessOperator const condition({UniquenessType::Unique}, std::move(values));
  EXPECT_TRUE(values.empty());
  EXPECT_TRUE(condition({number(1), anyCell}));
}

// Counting the equal values for each cell would compare 10^10 times here and not end in time.
TEST(UniquenessOperator, CostsTheSameHoweverOftenTheValueStandsInTheRanges) {
  constexpr int count = 100'000;
  FormulaValueMultiset values;
  for (int i = 0; i < count; ++i) {
    values.insert(text("all the same"));
  }
  UniquenessOperator const condition({UniquenessType::Duplicate}, std::move(values));
  FormulaValueData const data{text("all the same"), anyCell};
  for (int i = 0; i < count; ++i) {
    ASSERT_TRUE(condition(data));
  }
}

TEST(UniquenessOperatorDeathTest, AValueThatWasNotCollectedIsFatal) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  constexpr char const* message =
      "^/code/ConditionalFormatters/Operators/CndFrmt_UniquenessOperator:62: assertion failed: "
      "\"valueCount != 0\"\n$";
  EXPECT_DEATH((void)judge(UniquenessType::Unique, {number(1)}, number(2)), message);
  EXPECT_DEATH((void)judge(UniquenessType::Duplicate, {}, text("a")), message);
  EXPECT_DEATH((void)judge(UniquenessType::Duplicate, {number(nan), number(nan)}, number(nan)),
               message);
  // The count is looked at before the kind.
  EXPECT_DEATH((void)judge(static_cast<UniquenessType>(2), {}, number(1)), message);
}

TEST(FormulaValueHasher, HashesThePayload) {
  FormulaValueHasher const hash;
  EXPECT_EQ(hash(number(2.5)), std::hash<double>()(2.5));
  EXPECT_EQ(hash(number(0.0)), 0U);
  EXPECT_EQ(hash(number(-0.0)), 0U);
  EXPECT_EQ(hash(text("Abc")), std::hash<std::string>()("Abc"));
  EXPECT_NE(hash(text("Abc")), hash(text("abc")));
  EXPECT_EQ(hash(boolean(false)), 0U);
  EXPECT_EQ(hash(boolean(true)), 1U);
  EXPECT_EQ(hash(error(FormulaErrorCode::NotAvailable)), 7U);
}

TEST(FormulaValueHasherDeathTest, HashingAnEmptyValueIsFatal) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH((void)FormulaValueHasher()(empty()),
               "^/code/ConditionalFormatters/Operators/CndFrmt_UniquenessOperator:42: assertion "
               "failed: \"\": Empty shouldn't be hashed.\n$");
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
