#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedFormula.h"

#include <type_traits>

#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_FormulaConditions.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/LookupCache.h"
#include "Formulas/OneTableDocument.h"
#include "Utils/Exceptions.h"
#include "support/RecordingEngine.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using DOM::FormulaSyntaxTree::ExprParts;

// What a getter of an expression or the constructor of a session throws reaches the caller.
static_assert(!std::is_nothrow_constructible_v<PreparedFormula, FormulaOrigin const&, Expr const&>);
static_assert(!std::is_nothrow_constructible_v<ComparisonCondition, Comparison,
                                               FormulaOrigin const&, Expr const&>);
static_assert(!std::is_nothrow_constructible_v<BoundsCondition, BoundsTest, FormulaOrigin const&,
                                               Expr const&, Expr const&>);
static_assert(!std::is_nothrow_constructible_v<FormulaTextCondition, TextTest, FormulaOrigin const&,
                                               Expr const&>);
static_assert(
    !std::is_nothrow_constructible_v<PassContext, Formulas::LookupCache&,
                                     OfficeUtils::Clock::TimePoint, PassResources const&>);

CellIndex cellAt(unsigned long row, unsigned long column) {
  return {RowIndex(row), ColumnIndex(column)};
}

Expr makeExpr(bool dependsOnCell) {
  ExprParts parts;
  parts.traits.dependsOnCell = dependsOnCell;
  return Expr(std::move(parts));
}

bool isNumber(boost::optional<FormulaValue> const& value, double expected) {
  auto const* const number = value ? boost::get<FormulaModel::FormulaNumber>(&*value) : nullptr;
  return number != nullptr && number->value.get() == expected;
}

class PreparedFormulaTest : public testing::Test {
protected:
  boost::optional<FormulaValue> evaluate(PreparedFormula const& formula, CellIndex cell) {
    boost::optional<FormulaValue> own;
    return formula.evaluate(cell, _session, own);
  }

  DOM::Table _table;
  Formulas::OneTableDocument _provider{_table};
  Journal _journal;
  RecordingEngine _engine{_journal};
  Formulas::LookupCache _lookups;
  Formulas::EvaluationSession _session{_lookups};
  FormulaOrigin _origin{_table, _provider, cellAt(2, 3)};
};

TEST_F(PreparedFormulaTest, IsEvaluatedOnceIfItIsTheSameForEveryCell) {
  Expr const expr = makeExpr(false);
  PreparedFormula const formula(_origin, expr);
  _engine.answer(number(7));
  for (unsigned long row = 2; row < 9; ++row) {
    EXPECT_TRUE(isNumber(evaluate(formula, cellAt(row, 3)), 7));
  }
  EXPECT_EQ(_engine.getCalcCalls().size(), 1U);
}

TEST_F(PreparedFormulaTest, IsEvaluatedForEachCellThatItDependsOn) {
  Expr const expr = makeExpr(true);
  PreparedFormula const formula(_origin, expr);
  _engine.answerBy([](CalcCall const& call) {
    return number(static_cast<double>(call.row * 10 + call.column));
  });
  EXPECT_TRUE(isNumber(evaluate(formula, cellAt(2, 3)), 23));
  EXPECT_TRUE(isNumber(evaluate(formula, cellAt(4, 5)), 45));
  ASSERT_EQ(_engine.getShiftCalls().size(), 2U);
  EXPECT_EQ(_engine.getShiftCalls()[1].rowOffset, 2);
  EXPECT_EQ(_engine.getShiftCalls()[1].columnOffset, 2);
}

TEST_F(PreparedFormulaTest, RefusesPositionsThatTheCalculatorRefusesAlsoIfItsValueIsKnown) {
  Expr const expr = makeExpr(false);
  PreparedFormula const formula(_origin, expr);
  _engine.answer(number(7));
  EXPECT_TRUE(isNumber(evaluate(formula, cellAt(2, 3)), 7));
  FormulaExprCalculator const calculator(_table, _provider, cellAt(2, 3));
  for (auto const& cell : {cellAt(1UL << 31U, 3), cellAt(2, 1UL << 31U)}) {
    EXPECT_THROW(static_cast<void>(calculator.calculate(expr, cell)), BadNumCastError);
    EXPECT_THROW(static_cast<void>(evaluate(formula, cell)), BadNumCastError);
  }
  EXPECT_TRUE(isNumber(evaluate(formula, cellAt((1UL << 31U) - 1, 3)), 7));
}

TEST_F(PreparedFormulaTest, ARefusedFirstCellLeavesTheOthersAlone) {
  Expr const expr = makeExpr(false);
  PreparedFormula const formula(_origin, expr);
  _engine.answer(number(7));
  EXPECT_THROW(static_cast<void>(evaluate(formula, cellAt(1UL << 31U, 3))), BadNumCastError);
  EXPECT_TRUE(isNumber(evaluate(formula, cellAt(2, 3)), 7));
}

TEST_F(PreparedFormulaTest, IsGivenUpAfterItMetALimitOfTheEngineForTwoCells) {
  Expr const expr = makeExpr(true);
  PreparedFormula const formula(_origin, expr);
  _engine.answerBy([](CalcCall const& call) -> Formulas::CalcResult {
    if (call.row >= 4) {
      throw Formulas::EvaluationLimitError("too much");
    }
    return FormulaValue(number(7));
  });
  EXPECT_THROW(static_cast<void>(evaluate(formula, cellAt(4, 3))), Formulas::EvaluationLimitError);
  EXPECT_TRUE(isNumber(evaluate(formula, cellAt(2, 3)), 7));
  EXPECT_THROW(static_cast<void>(evaluate(formula, cellAt(5, 3))), Formulas::EvaluationLimitError);
  EXPECT_EQ(_engine.getCalcCalls().size(), 3U);
  EXPECT_THROW(static_cast<void>(evaluate(formula, cellAt(2, 3))), Formulas::EvaluationLimitError);
  EXPECT_EQ(_engine.getCalcCalls().size(), 3U);
}

TEST_F(PreparedFormulaTest, OtherExceptionsDoNotMakeItGiveUp) {
  Expr const expr = makeExpr(true);
  PreparedFormula const formula(_origin, expr);
  _engine.answerBy(
      [](CalcCall const& /*call*/) -> Formulas::CalcResult { throw std::runtime_error("no"); });
  for (unsigned long row = 2; row < 20; ++row) {
    EXPECT_THROW(static_cast<void>(evaluate(formula, cellAt(row, 3))), std::runtime_error);
  }
  EXPECT_EQ(_engine.getCalcCalls().size(), 18U);
}

TEST_F(PreparedFormulaTest, AReferenceIsNoValue) {
  Expr const expr = makeExpr(false);
  PreparedFormula const formula(_origin, expr);
  _engine.answer(makeReferenceResult());
  EXPECT_FALSE(evaluate(formula, cellAt(2, 3)));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
