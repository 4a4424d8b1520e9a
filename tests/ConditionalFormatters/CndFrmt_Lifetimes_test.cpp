#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "DOM/Table.h"
#include "support/Allocations.h"
#include "support/Documents.h"
#include "support/PlainHost.h"
#include "support/RecordingHost.h"
#include "support/Values.h"

// When the library frees what it made.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;

TEST(CalculatorLifetime, MembersAreDestroyedFromTheStyleFactoryBackToTheProvider) {
  DOM::Table table;
  DOM::Styles const styles;
  table.setValue(9, 9, number(1));
  addFormat(table, {{0, 0, 1, 1}}, holdsAlways());

  std::unique_ptr<ValueContextProvider> provider;
  std::optional<ConditionalFormattingPropsCalculator> calculator;
  {
    LabelledScope const scope("provider");
    provider = std::make_unique<PlainValueContextProvider>(table);
  }
  {
    LabelledScope const scope("factory");
    calculator.emplace(std::move(provider));
  }
  {
    LabelledScope const scope("formats");
    (void)calculator->getConditionalFormatRefs(table);
  }
  {
    // The cell lies outside the format's range: no style is made, and none is what is cached.
    LabelledScope const scope("cell styles");
    EXPECT_EQ(calculator->getConditionalFormatCellStyle(styles, table.getCellInfo(9, 9)), nullptr);
  }
  (void)takeFreedLabels();
  calculator.reset();
  EXPECT_THAT(takeFreedLabels(), ElementsAre("factory", "formats", "cell styles", "provider"));
}

TEST(FormulaExprCalculatorLifetime, AShiftedExpressionIsFreedWhenItIsEvaluated) {
  constexpr auto shifted = "shifted expression";
  RecordingHost host;
  Expr const expr = Expr::constant(text("a text that is too long to be kept inside the string"));
  FormulaExprCalculator const calculator(host.table, host.contextProvider,
                                         {RowIndex(0), ColumnIndex(0)});
  host.engine.shiftBy([&](ShiftCall const& call) {
    LabelledScope const scope(shifted);
    return std::make_unique<Expr>(*call.expr);
  });
  std::size_t blocksDuringEvaluation = 0;
  host.engine.answerBy([&](CalcCall const&) {
    blocksDuringEvaluation = countLivingBlocks(shifted);
    return number(1);
  });

  (void)calculator.calculate(expr, {RowIndex(2), ColumnIndex(1)});
  EXPECT_GE(blocksDuringEvaluation, 2U);  // the expression and its text
  EXPECT_EQ(countLivingBlocks(shifted), 0U);

  host.engine.answerBy(
      [](CalcCall const&) -> Formulas::CalcResult { throw std::runtime_error("no value"); });
  EXPECT_THROW((void)calculator.calculate(expr, {RowIndex(2), ColumnIndex(1)}), std::runtime_error);
  EXPECT_EQ(countLivingBlocks(shifted), 0U);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
