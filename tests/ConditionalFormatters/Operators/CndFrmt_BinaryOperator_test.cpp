#include "ConditionalFormatters/Operators/CndFrmt_BinaryOperator.h"

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
using Record = DOM::BinaryConditionalFormatOperator;
using Type = DOM::BinaryConditionalFormatType;

class BinaryOperatorTest : public FormulaOperatorTest {
protected:
  static Record makeRecord(int type) { return {static_cast<Type>(type), Expr(), Expr()}; }

  bool holds(int type, FormulaValue const& cellValue, Formulas::CalcResult first,
             Formulas::CalcResult second) {
    Record const record = makeRecord(type);
    engine.answerFor(record.getFirstArgument(), std::move(first));
    engine.answerFor(record.getSecondArgument(), std::move(second));
    BinaryOperator const condition(record, table, contextProvider, baseCell);
    return condition(cell(cellValue));
  }
  bool isBetween(FormulaValue const& cellValue, Formulas::CalcResult const& first,
                 Formulas::CalcResult const& second) {
    return holds(0, cellValue, first, second);
  }
  bool isNotBetween(FormulaValue const& cellValue, Formulas::CalcResult const& first,
                    Formulas::CalcResult const& second) {
    return holds(1, cellValue, first, second);
  }
};

enum class Place { Incomparable, Below, Same, Above };

Place placeOf(PlacedValue const& value, PlacedValue const& bound) {
  if (value.value.which() != bound.value.which() || !value.place || !bound.place) {
    return Place::Incomparable;
  }
  if (*value.place == *bound.place) {
    return Place::Same;
  }
  return *value.place < *bound.place ? Place::Below : Place::Above;
}

TEST_F(BinaryOperatorTest, JudgesEveryValueByEveryPairOfBounds) {
  auto const values = makePlacedValues();
  for (auto const& first : values) {
    for (auto const& second : values) {
      for (auto const& value : values) {
        auto const atFirst = placeOf(value, first);
        auto const atSecond = placeOf(value, second);
        bool const between = (atFirst == Place::Same || atFirst == Place::Above) &&
                             (atSecond == Place::Same || atSecond == Place::Below);
        bool const outside = atFirst == Place::Below || atSecond == Place::Above;
        EXPECT_EQ(isBetween(value.value, first.value, second.value), between)
            << value.name << " between " << first.name << " and " << second.name;
        EXPECT_EQ(isNotBetween(value.value, first.value, second.value), outside)
            << value.name << " not between " << first.name << " and " << second.name;
      }
    }
  }
}

TEST_F(BinaryOperatorTest, BothBoundsAreInside) {
  struct Row {
    double value;
    bool between;
  };
  for (auto const& [value, between] :
       {Row{0.5, false}, Row{1, true}, Row{5, true}, Row{10, true}, Row{10.5, false}}) {
    EXPECT_EQ(isBetween(number(value), number(1), number(10)), between) << value;
    EXPECT_EQ(isNotBetween(number(value), number(1), number(10)), !between) << value;
  }
}

TEST_F(BinaryOperatorTest, ReversedBoundsAreNotSwapped) {
  for (double const value : {0.0, 1.0, 5.0, 10.0, 11.0}) {
    EXPECT_FALSE(isBetween(number(value), number(10), number(1))) << value;
    EXPECT_TRUE(isNotBetween(number(value), number(10), number(1))) << value;
  }
}

TEST_F(BinaryOperatorTest, TextsLieBetweenTextsByTheirBytes) {
  EXPECT_TRUE(isBetween(text("m"), text("a"), text("z")));
  EXPECT_FALSE(isNotBetween(text("m"), text("a"), text("z")));
  EXPECT_FALSE(isBetween(text("m"), text("A"), text("Z")));
  EXPECT_TRUE(isNotBetween(text("m"), text("A"), text("Z")));
}

TEST_F(BinaryOperatorTest, AValueOfAnotherKindIsNeitherBetweenNorOutside) {
  EXPECT_FALSE(isBetween(number(5), text("1"), text("9")));
  EXPECT_FALSE(isNotBetween(number(5), text("1"), text("9")));
}

TEST_F(BinaryOperatorTest, OneBoundOfTheValuesKindIsEnoughToBeOutsideAndNotToBeBetween) {
  EXPECT_TRUE(isNotBetween(number(0), number(1), text("9")));
  EXPECT_TRUE(isNotBetween(number(9), text("1"), number(5)));
  EXPECT_FALSE(isBetween(number(3), number(1), text("9")));
  EXPECT_FALSE(isBetween(number(3), text("1"), number(5)));
}

TEST_F(BinaryOperatorTest, AnEmptyCellLiesBetweenEmptyBounds) {
  EXPECT_TRUE(isBetween(empty(), empty(), empty()));
  EXPECT_FALSE(isNotBetween(empty(), empty(), empty()));
}

TEST_F(BinaryOperatorTest, TrueLiesBetweenFalseAndTrue) {
  EXPECT_TRUE(isBetween(boolean(true), boolean(false), boolean(true)));
  EXPECT_FALSE(isBetween(boolean(true), boolean(false), boolean(false)));
}

TEST_F(BinaryOperatorTest, ANaNIsNeitherBetweenNorOutside) {
  EXPECT_FALSE(isBetween(number(std::nan("")), number(1), number(10)));
  EXPECT_FALSE(isNotBetween(number(std::nan("")), number(1), number(10)));
}

TEST_F(BinaryOperatorTest, AMissingBoundIsKeptByBetweenAndOversteppedByNotBetween) {
  for (auto const& none : {makeReferenceResult(), makeReferenceListResult()}) {
    EXPECT_TRUE(isBetween(number(-99), none, number(10)));
    EXPECT_FALSE(isBetween(number(11), none, number(10)));
    EXPECT_FALSE(isBetween(text("a"), none, number(10)));
    EXPECT_TRUE(isBetween(number(99), number(1), none));
    EXPECT_FALSE(isBetween(number(0), number(1), none));
    EXPECT_FALSE(isBetween(text("a"), number(1), none));

    EXPECT_TRUE(isNotBetween(number(5), none, number(10)));
    EXPECT_TRUE(isNotBetween(text("a"), none, number(10)));
    EXPECT_TRUE(isNotBetween(number(5), number(1), none));
    EXPECT_TRUE(isNotBetween(text("a"), number(1), none));

    for (auto const& placed : makePlacedValues()) {
      EXPECT_TRUE(isBetween(placed.value, none, none)) << placed.name;
      EXPECT_TRUE(isNotBetween(placed.value, none, none)) << placed.name;
    }
  }
}

TEST_F(BinaryOperatorTest, AsksNothingOfTheHostWhenItIsMade) {
  Record const record = makeRecord(0);
  BinaryOperator const condition(record, table, contextProvider, baseCell);
  EXPECT_THAT(journal.getEntries(), ElementsAre());
}

TEST_F(BinaryOperatorTest, EvaluatesTheUpperBoundAndThenTheLowerOneOnEveryCall) {
  for (int const type : {0, 1}) {
    Record const record = makeRecord(type);
    // Each bound alone would decide.
    engine.answer(type == 0 ? Formulas::CalcResult(text("")) : makeReferenceResult());
    BinaryOperator const condition(record, table, contextProvider, baseCell);
    for (int call = 0; call < 2; ++call) {
      journal.clear();
      static_cast<void>(condition(cell(number(1))));
      EXPECT_THAT(journal.getEntries(), ElementsAre("getTableContext", "calcExpr(4,2)",
                                                    "getTableContext", "calcExpr(4,2)"));
      auto const& calls = engine.getCalcCalls();
      EXPECT_EQ(calls[calls.size() - 2].expr, &record.getSecondArgument());
      EXPECT_EQ(calls[calls.size() - 1].expr, &record.getFirstArgument());
    }
  }
}

TEST_F(BinaryOperatorTest, BothBoundsFollowTheCell) {
  Record const record = makeRecord(0);
  BinaryOperator const condition(record, table, contextProvider, baseCell);
  static_cast<void>(condition(cell(number(1), at(7, 0))));
  ASSERT_EQ(engine.getShiftCalls().size(), 2);
  for (auto const& call : engine.getShiftCalls()) {
    EXPECT_EQ(call.columnOffset, -2);
    EXPECT_EQ(call.rowOffset, 3);
  }
}

TEST_F(BinaryOperatorTest, AnUnknownKindNeverHolds) {
  for (int const type : {2, 255}) {
    for (auto const& placed : makePlacedValues()) {
      EXPECT_FALSE(holds(type, placed.value, placed.value, placed.value)) << placed.name;
      EXPECT_FALSE(holds(type, placed.value, makeReferenceResult(), makeReferenceResult()))
          << placed.name;
    }
  }
}

TEST_F(BinaryOperatorTest, WhatTheEvaluationThrowsReachesTheCaller) {
  for (int const type : {0, 1}) {
    Record const record = makeRecord(type);
    std::unique_ptr<Operator> const condition =
        std::make_unique<BinaryOperator>(record, table, contextProvider, baseCell);
    for (auto const* throwing : {&record.getFirstArgument(), &record.getSecondArgument()}) {
      engine.answerBy([throwing](CalcCall const& call) -> Formulas::CalcResult {
        if (call.expr == throwing) {
          throw FormulaModel::FormulaException("no way");
        }
        return text("of another kind");
      });
      EXPECT_THROW(static_cast<void>((*condition)(cell(number(1)))),
                   FormulaModel::FormulaException);
    }
  }
}

TEST_F(BinaryOperatorTest, NoLowerBoundIsEvaluatedWhenTheUpperOneThrows) {
  Record const record = makeRecord(0);
  BinaryOperator const condition(record, table, contextProvider, baseCell);
  engine.answerBy(
      [](CalcCall const&) -> Formulas::CalcResult { throw std::runtime_error("no way"); });
  EXPECT_THROW(static_cast<void>(condition(cell(number(1)))), std::runtime_error);
  ASSERT_EQ(engine.getCalcCalls().size(), 1);
  EXPECT_EQ(engine.getCalcCalls().front().expr, &record.getSecondArgument());
}

TEST_F(BinaryOperatorTest, PositionsOfTwoToThe31AndMoreThrow) {
  Record const record = makeRecord(0);
  BinaryOperator const condition(record, table, contextProvider, baseCell);
  EXPECT_THROW(static_cast<void>(condition(cell(number(1), at(2147483648, 0)))), BadNumCastError);
  EXPECT_THROW(static_cast<void>(condition(cell(number(1), at(0, 2147483648)))), BadNumCastError);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
