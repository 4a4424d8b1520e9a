#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "FormulaModel/FormulaException.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Utils/Exceptions.h"
#include "support/RecordingHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr FormulaModel::FormulaValuesComarator<std::equal_to> equals;

CellIndex at(unsigned long row, unsigned long column) {
  return {RowIndex(row), ColumnIndex(column)};
}

class FormulaExprCalculatorTest : public testing::Test {
protected:
  RecordingHost host;
  Expr const expr = Expr::constant(number(1));
  FormulaExprCalculator const calculator{host.table, host.contextProvider, at(3, 4)};
};

using FormulaExprCalculatorDeathTest = FormulaExprCalculatorTest;

TEST_F(FormulaExprCalculatorTest, GivesTheContextProviderThatItGot) {
  EXPECT_EQ(&calculator.getFormulasContextProvider(), &host.contextProvider);
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(FormulaExprCalculatorTest, EvaluatesTheExpressionItselfForTheBaseCell) {
  host.engine.answer(number(42));
  auto const value = calculator.calculate(expr, at(3, 4));
  ASSERT_TRUE(value);
  EXPECT_TRUE(equals(*value, number(42)));
  EXPECT_THAT(host.journal.getEntries(), ElementsAre("getTableContext", "calcExpr(3,4)"));
  EXPECT_EQ(host.engine.getCalcCalls().front().expr, &expr);
}

TEST_F(FormulaExprCalculatorTest, EvaluatesAtTheJudgedCellAndNotAsAnArrayFormula) {
  (void)calculator.calculate(expr, at(10, 20));
  ASSERT_THAT(host.engine.getCalcCalls(), SizeIs(1));
  CalcCall const& call = host.engine.getCalcCalls().front();
  EXPECT_EQ(call.row, 10U);
  EXPECT_EQ(call.column, 20U);
  EXPECT_FALSE(call.asArrayFormula);
  EXPECT_EQ(call.rowID, 0U);
  EXPECT_EQ(call.columnID, 0U);
  EXPECT_EQ(call.tableContext, &host.contextProvider.getContext());
  EXPECT_EQ(call.contextProvider, &host.contextProvider);
}

TEST_F(FormulaExprCalculatorTest, StartsEachEvaluationWithoutDependencies) {
  (void)calculator.calculate(expr, at(3, 4));
  (void)calculator.calculate(expr, at(3, 4));
  ASSERT_THAT(host.engine.getCalcCalls(), SizeIs(2));
  EXPECT_TRUE(host.engine.getCalcCalls()[0].resolverIsEmpty);
  EXPECT_TRUE(host.engine.getCalcCalls()[1].resolverIsEmpty);
}

TEST_F(FormulaExprCalculatorTest, ShiftsByTheDistanceFromTheBaseCell) {
  struct Case {
    char const* name;
    CellIndex cell;
    int columns;
    int rows;
  };
  std::vector<Case> const cases{
      {"one column right, two rows below", at(5, 5), 1, 2},
      {"left and above", at(0, 0), -4, -3},
      {"same row", at(3, 9), 5, 0},
      {"same column", at(2, 4), 0, -1},
      {"as far as positions go", at(2147483647, 2147483647), 2147483643, 2147483644},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.name);
    (void)calculator.calculate(expr, c.cell);
    ShiftCall const& call = host.engine.getShiftCalls().back();
    EXPECT_EQ(call.expr, &expr);
    EXPECT_EQ(call.columnOffset, c.columns);
    EXPECT_EQ(call.rowOffset, c.rows);
    EXPECT_EQ(call.tableContext, &host.contextProvider.getContext());
    EXPECT_EQ(call.table, 7U);
    EXPECT_TRUE(call.wrapAround);
  }
  EXPECT_THAT(host.engine.getShiftCalls(), SizeIs(cases.size()));
}

TEST_F(FormulaExprCalculatorTest, EvaluatesTheShiftedExpressionInPlaceOfTheStoredOne) {
  Expr const* shifted = nullptr;
  host.engine.shiftBy([&](ShiftCall const&) {
    auto result = std::make_unique<Expr>();
    shifted = result.get();
    return result;
  });
  (void)calculator.calculate(expr, at(5, 5));
  EXPECT_EQ(host.engine.getCalcCalls().front().expr, shifted);
  EXPECT_THAT(host.journal.getEntries(), ElementsAre("getTableContext", "getDocTableIndex",
                                                     "shiftExpr(1,2)", "calcExpr(5,5)"));
}

TEST_F(FormulaExprCalculatorTest, ShiftsAndEvaluatesAnewOnEveryCall) {
  for (int i = 0; i < 3; ++i) {
    (void)calculator.calculate(expr, at(5, 5));
  }
  EXPECT_THAT(host.engine.getShiftCalls(), SizeIs(3));
  EXPECT_THAT(host.engine.getCalcCalls(), SizeIs(3));
}

TEST_F(FormulaExprCalculatorTest, GivesValuesOfEveryKind) {
  using FormulaModel::FormulaErrorCode;
  for (FormulaValue const& result :
       {empty(), number(-2.5), text("ab"), boolean(true), error(FormulaErrorCode::NotAvailable)}) {
    SCOPED_TRACE(result.which());
    host.engine.answer(result);
    auto const value = calculator.calculate(expr, at(5, 5));
    ASSERT_TRUE(value);
    EXPECT_TRUE(equals(*value, result));
  }
}

TEST_F(FormulaExprCalculatorTest, GivesTheOnlyValueOfAnArray) {
  host.engine.answer(makeArrayResult(1, 1, {text("only")}));
  auto const value = calculator.calculate(expr, at(3, 4));
  ASSERT_TRUE(value);
  EXPECT_TRUE(equals(*value, text("only")));
}

TEST_F(FormulaExprCalculatorTest, GivesNothingForReferences) {
  for (auto const& result : {makeReferenceListResult(), makeReferenceResult()}) {
    SCOPED_TRACE(result.which());
    host.engine.answer(result);
    EXPECT_FALSE(calculator.calculate(expr, at(3, 4)));
  }
}

TEST_F(FormulaExprCalculatorTest, ReleasesTheResultAndTheShiftedExpression) {
  auto const array = std::make_shared<FormulaModel::FormulaArray const>(
      1, 1, std::vector<FormulaValue>{number(1)});
  host.engine.answerBy([&](CalcCall const&) { return Formulas::CalcResult(array); });
  (void)calculator.calculate(expr, at(5, 5));
  EXPECT_EQ(array.use_count(), 1);
}

TEST_F(FormulaExprCalculatorTest, RefusesPositionsBeyondTheRangeOfOffsetsBeforeEvaluating) {
  constexpr unsigned long tooFar = 2147483648;
  constexpr auto max = std::numeric_limits<unsigned long>::max();
  struct Case {
    char const* name;
    CellIndex base;
    CellIndex cell;
  };
  for (Case const& c :
       {Case{"row", at(0, 0), at(tooFar, 0)}, Case{"column", at(0, 0), at(0, tooFar)},
        Case{"largest row", at(0, 0), at(max, 0)}, Case{"base row", at(tooFar, 0), at(0, 0)},
        Case{"base column", at(0, tooFar), at(0, 0)},
        Case{"row 0 in its lower 32 bits", at(0, 0), at(1UL << 32U, 0)},
        Case{"row 2^63", at(0, 0), at(1UL << 63U, 0)},
        Case{"column beyond 2^63", at(0, 0), at(0, (1UL << 63U) + 5)},
        Case{"base row 2^63", at(1UL << 63U, 0), at(0, 0)},
        Case{"the base cell itself", at(tooFar, 0), at(tooFar, 0)}}) {
    SCOPED_TRACE(c.name);
    FormulaExprCalculator const farCalculator(host.table, host.contextProvider, c.base);
    host.journal.clear();
    try {
      (void)farCalculator.calculate(expr, c.cell);
      ADD_FAILURE() << "nothing thrown";
    } catch (BadNumCastError const& error) {
      EXPECT_STREQ(error.what(), "bad numeric conversion: positive overflow");
    }
    // The positions are converted after the table context is asked for.
    EXPECT_THAT(host.journal.getEntries(), ElementsAre("getTableContext"));
  }
  EXPECT_THAT(host.engine.getShiftCalls(), IsEmpty());
  EXPECT_THAT(host.engine.getCalcCalls(), IsEmpty());
}

TEST_F(FormulaExprCalculatorTest, LetsExceptionsOfTheEngineThrough) {
  host.engine.answerBy([](CalcCall const&) -> Formulas::CalcResult {
    throw FormulaModel::FormulaException("cannot be evaluated");
  });
  EXPECT_THROW((void)calculator.calculate(expr, at(3, 4)), FormulaModel::FormulaException);
  host.engine.shiftBy([](ShiftCall const&) -> std::unique_ptr<Expr> {
    throw std::out_of_range("cannot be shifted");
  });
  EXPECT_THROW((void)calculator.calculate(expr, at(3, 5)), std::out_of_range);
}

TEST_F(FormulaExprCalculatorDeathTest, ANullShiftedExpressionIsFatal) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  host.engine.shiftBy([](ShiftCall const&) { return std::unique_ptr<Expr>(); });
  EXPECT_DEATH((void)calculator.calculate(expr, at(5, 5)),
               "^/code/Utils/Public/Ptr/PtrUtils:246: assertion failed: \"plainPtr\"\n$");
}

TEST_F(FormulaExprCalculatorDeathTest, ANullArrayIsFatal) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  host.engine.answer(makeNullArrayResult());
  EXPECT_DEATH((void)calculator.calculate(expr, at(3, 4)),
               "^/code/Utils/Public/Ptr/CheckedPtr:145: assertion failed: \"_ptr\"\n$");
}

TEST_F(FormulaExprCalculatorDeathTest, AnArrayOfMoreThanOneRowIsFatal) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  std::string const message =
      "^/code/ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator:65: assertion failed: "
      "\"array->getHeight\\(\\) == 1\"\n$";
  host.engine.answer(makeArrayResult(2, 1, {number(1), number(2)}));
  EXPECT_DEATH((void)calculator.calculate(expr, at(3, 4)), message);
  // The height is looked at before the width.
  host.engine.answer(makeArrayResult(2, 2, std::vector<FormulaValue>(4)));
  EXPECT_DEATH((void)calculator.calculate(expr, at(3, 4)), message);
  host.engine.answer(makeArrayResult(0, 0, {}));
  EXPECT_DEATH((void)calculator.calculate(expr, at(3, 4)), message);
}

TEST_F(FormulaExprCalculatorDeathTest, AnArrayOfMoreThanOneColumnIsFatal) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  host.engine.answer(makeArrayResult(1, 3, std::vector<FormulaValue>(3)));
  EXPECT_DEATH((void)calculator.calculate(expr, at(3, 4)),
               "^/code/ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator:66: assertion "
               "failed: \"array->getWidth\\(\\) == 1\"\n$");
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
