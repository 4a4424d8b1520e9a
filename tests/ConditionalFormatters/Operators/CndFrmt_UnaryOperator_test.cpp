#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"

#include <functional>
#include <memory>
#include <stdexcept>

#include <gmock/gmock.h>

#include "ConditionalFormatters/Operators/FormulaOperatorTest.h"
#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaException.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using Record = DOM::UnaryConditionalFormatOperator;
using Type = DOM::UnaryConditionalFormatType;

constexpr int kindCount = 7;

class UnaryOperatorTest : public FormulaOperatorTest {
protected:
  static Record makeRecord(int type) { return {static_cast<Type>(type), Expr()}; }

  /// True if a comparison holds between a cell and the result of its formula.
  bool holds(Type type, FormulaValue const& cellValue, Formulas::CalcResult argument) {
    engine.answer(std::move(argument));
    Record const record(type, Expr());
    UnaryOperator const condition(record, table, contextProvider, baseCell);
    return condition(cell(cellValue));
  }
};

/// A comparison as it is to be between two places; see PlacedValue.
struct Comparison {
  Type type;
  char const* name;
  std::function<bool(int, int)> holds;
  bool holdsForNaN;
};

std::vector<Comparison> makeComparisons() {
  return {
      {Type::Equal, "==", std::equal_to<>(), false},
      {Type::NotEqual, "!=", std::not_equal_to<>(), true},
      {Type::Greater, ">", std::greater<>(), false},
      {Type::GreaterOrEqual, ">=", std::greater_equal<>(), false},
      {Type::Less, "<", std::less<>(), false},
      {Type::LessOrEqual, "<=", std::less_equal<>(), false},
  };
}

bool isExpectedToHold(Comparison const& comparison, PlacedValue const& a, PlacedValue const& b) {
  if (a.value.which() != b.value.which()) {
    return false;
  }
  if (!a.place || !b.place) {
    return comparison.holdsForNaN;
  }
  return comparison.holds(*a.place, *b.place);
}

TEST_F(UnaryOperatorTest, ComparesValuesOfOneKindAndNoOthers) {
  auto const values = makePlacedValues();
  for (auto const& comparison : makeComparisons()) {
    for (auto const& a : values) {
      for (auto const& b : values) {
        EXPECT_EQ(holds(comparison.type, a.value, b.value), isExpectedToHold(comparison, a, b))
            << a.name << ' ' << comparison.name << ' ' << b.name;
      }
    }
  }
}

TEST_F(UnaryOperatorTest, AnArrayOfOneValueIsThatValue) {
  EXPECT_TRUE(holds(Type::Equal, number(5), makeArrayResult(1, 1, {number(5)})));
  EXPECT_FALSE(holds(Type::Equal, number(5), makeArrayResult(1, 1, {number(6)})));
}

TEST_F(UnaryOperatorTest, NoComparisonHoldsWithAFormulaWithoutAValue) {
  for (auto const& comparison : makeComparisons()) {
    for (auto const& placed : makePlacedValues()) {
      EXPECT_FALSE(holds(comparison.type, placed.value, makeReferenceResult()))
          << placed.name << ' ' << comparison.name;
      EXPECT_FALSE(holds(comparison.type, placed.value, makeReferenceListResult()))
          << placed.name << ' ' << comparison.name;
    }
  }
}

TEST_F(UnaryOperatorTest, AFormulaIsTrueAsItsValueCastToATruthValueIs) {
  struct Row {
    char const* name;
    Formulas::CalcResult argument;
    bool expected;
  };
  std::vector<Row> const rows = {
      {"true", boolean(true), true},
      {"false", boolean(false), false},
      {"a number", number(-0.5), true},
      {"zero", number(0), false},
      {"negative zero", number(-0.0), false},
      {"empty", empty(), false},
      {"a text that says true", text("True"), true},
      {"a text that says false", text("FALSE"), false},
      {"a text that says neither", text("yes"), false},
      {"no letters", text(""), false},
      {"an error", error(FormulaModel::FormulaErrorCode::NotAvailable), false},
      {"an array of true", makeArrayResult(1, 1, {boolean(true)}), true},
      {"no value", makeReferenceResult(), false},
      {"no value either", makeReferenceListResult(), false},
  };
  for (auto const& row : rows) {
    for (auto const& placed : makePlacedValues()) {
      EXPECT_EQ(holds(Type::FormulaIsTrue, placed.value, row.argument), row.expected)
          << row.name << ", whatever the cell: " << placed.name;
    }
  }
}

TEST_F(UnaryOperatorTest, EveryKindAsksForTheLocaleOnceWhenItIsMade) {
  for (int type = 0; type <= kindCount; ++type) {
    journal.clear();
    Record const record = makeRecord(type);
    UnaryOperator const condition(record, table, contextProvider, baseCell);
    EXPECT_THAT(journal.getEntries(), ElementsAre("getLocaleContext")) << type;
  }
}

TEST_F(UnaryOperatorTest, TheTruthTestKeepsTheLocaleThatItWasMadeWith) {
  contextProvider.setLocaleContext(OfficeUtils::LocaleContext("de-DE"));
  Record const record(Type::FormulaIsTrue, Expr());
  UnaryOperator const germanCondition(record, table, contextProvider, baseCell);
  contextProvider.setLocaleContext(OfficeUtils::LocaleContext("en-US"));
  UnaryOperator const englishCondition(record, table, contextProvider, baseCell);

  engine.answer(text("wahr"));
  EXPECT_TRUE(germanCondition(cell(empty())));
  EXPECT_FALSE(englishCondition(cell(empty())));
}

TEST_F(UnaryOperatorTest, EvaluatesItsArgumentAnewOnEveryCall) {
  for (int type = 0; type < kindCount; ++type) {
    Record const record = makeRecord(type);
    UnaryOperator const condition(record, table, contextProvider, baseCell);
    journal.clear();
    static_cast<void>(condition(cell(number(1))));
    static_cast<void>(condition(cell(number(1))));
    EXPECT_THAT(journal.getEntries(),
                ElementsAre("getTableContext", "calcExpr(4,2)", "getTableContext", "calcExpr(4,2)"))
        << type;
    EXPECT_EQ(engine.getCalcCalls().back().expr, &record.getArgument());
  }
}

TEST_F(UnaryOperatorTest, TheArgumentFollowsTheCell) {
  engine.answerBy([](CalcCall const& call) { return number(static_cast<double>(call.row)); });
  Record const record(Type::Equal, Expr());
  UnaryOperator const condition(record, table, contextProvider, baseCell);

  EXPECT_TRUE(condition(cell(number(4), at(4, 2))));
  EXPECT_TRUE(condition(cell(number(9), at(9, 1))));
  EXPECT_FALSE(condition(cell(number(4), at(9, 1))));
  ASSERT_EQ(engine.getShiftCalls().size(), 2);
  EXPECT_EQ(engine.getShiftCalls().front().expr, &record.getArgument());
  EXPECT_EQ(engine.getShiftCalls().front().columnOffset, -1);
  EXPECT_EQ(engine.getShiftCalls().front().rowOffset, 5);
}

TEST_F(UnaryOperatorTest, AnUnknownKindIsMadeAndThrowsWhenItIsAskedAfterTheEvaluation) {
  for (int const type : {7, 8, 255}) {
    Record const record = makeRecord(type);
    std::unique_ptr<Operator> const condition =
        std::make_unique<UnaryOperator>(record, table, contextProvider, baseCell);
    journal.clear();
    EXPECT_THROW(static_cast<void>((*condition)(cell(number(1)))), std::bad_function_call) << type;
    EXPECT_THAT(journal.getEntries(), ElementsAre("getTableContext", "calcExpr(4,2)")) << type;
  }
}

TEST_F(UnaryOperatorTest, WhatTheEvaluationThrowsReachesTheCaller) {
  for (int type = 0; type <= kindCount; ++type) {
    Record const record = makeRecord(type);
    UnaryOperator const condition(record, table, contextProvider, baseCell);
    // The truth test stands for its own cast alone.
    engine.answerBy([](CalcCall const&) -> Formulas::CalcResult {
      throw FormulaModel::FormulaException("no way");
    });
    EXPECT_THROW(static_cast<void>(condition(cell(number(1)))), FormulaModel::FormulaException)
        << type;
    engine.answerBy(
        [](CalcCall const&) -> Formulas::CalcResult { throw std::logic_error("no way"); });
    EXPECT_THROW(static_cast<void>(condition(cell(number(1)))), std::logic_error) << type;
  }
}

TEST_F(UnaryOperatorTest, PositionsOfTwoToThe31AndMoreThrow) {
  Record const record(Type::Equal, Expr());
  UnaryOperator const condition(record, table, contextProvider, baseCell);
  for (auto const& index : {at(2147483648, 0), at(0, 2147483648)}) {
    try {
      static_cast<void>(condition(cell(number(1), index)));
      ADD_FAILURE() << "nothing was thrown";
    } catch (BadNumCastError const& e) {
      EXPECT_STREQ(e.what(), "bad numeric conversion: positive overflow");
    }
  }
  EXPECT_TRUE(engine.getCalcCalls().empty());
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
