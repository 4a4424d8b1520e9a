#include "analysis/Explain/ExplainedRule.h"

#include <cstdint>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DOM/A1Notation.h"
#include "Utils/WorkBudget.h"
#include "analysis/Explain/Explainer.h"
#include "workbook/WorkbookBuilder.h"

// Rules as Explainer asks about them, cell after cell.
namespace Zorv::Analysis {
namespace {

using testing::StartsWith;

std::string formulaRule(int priority, std::string const& type, std::string const& formula) {
  return "<cfRule " + type + " priority='" + std::to_string(priority) + "'><formula>" + formula +
         "</formula></cfRule>";
}

/// A column of the numbers from 1 on, under some rules.
class ExplainedRuleTest : public testing::Test {
protected:
  void load(unsigned long rowCount, std::string const& rules) {
    std::string rows;
    for (unsigned long row = 1; row <= rowCount; ++row) {
      auto const text = std::to_string(row);
      rows += "<row r='" + text + "'><c r='A" + text + "'><v>" + text + "</v></c></row>";
    }
    document = TestSupport::WorkbookBuilder()
                   .setSheet(rows, "<conditionalFormatting sqref='A1:A99999'>" + rules +
                                       "</conditionalFormatting>")
                   .load();
  }

  [[nodiscard]] Explainer makeExplainer() { return {document, "en-US", DOM::TimeZone(), &budget}; }

  /// The steps that it takes to explain some cells.
  std::uint64_t explain(Explainer& explainer, unsigned long begin, unsigned long end) {
    auto const before = budget.getSteps();
    for (unsigned long row = begin; row < end; ++row) {
      static_cast<void>(explainer.explain(0, CellIndex(RowIndex(row), ColumnIndex(0))));
    }
    return budget.getSteps() - before;
  }

  Workbook::Document document;
  WorkBudget budget{{}};
};

TEST_F(ExplainedRuleTest, EvaluatesOnceForAllCellsWhatIsTheSameAtEach) {
  constexpr unsigned long rowCount = 20'000;
  load(rowCount, formulaRule(1, "type='expression'", "A1&gt;SUMPRODUCT($A$1:$A$20000*2)") +
                     "<cfRule type='duplicateValues' priority='2'/>"
                     "<cfRule type='aboveAverage' priority='3'/>"
                     "<cfRule type='top10' percent='1' rank='9' priority='4'/>");
  Explainer explainer = makeExplainer();
  // The occurrences of the first values are counted by walks.
  static_cast<void>(explain(explainer, 0, 40));
  EXPECT_LT(explain(explainer, 40, 60), 20 * rowCount) << "the column was walked for each cell";
}

TEST_F(ExplainedRuleTest, EvaluatesForEachCellWhatDependsOnIt) {
  constexpr unsigned long rowCount = 5'000;
  load(rowCount, formulaRule(1, "type='expression'", "SUMPRODUCT($A$1:$A$5000*A1)&gt;0"));
  Explainer explainer = makeExplainer();
  static_cast<void>(explain(explainer, 0, 1));
  EXPECT_GT(explain(explainer, 1, 5), 4 * rowCount);
  auto const account = explainer.explain(0, CellIndex(RowIndex(2), ColumnIndex(0)));
  EXPECT_EQ(account.rules.at(0).formulas.at(0).trace.steps.back().text,
            "SUMPRODUCT($A$1:$A$5000*A3)>0");
}

TEST_F(ExplainedRuleTest, GivesUpAFormulaThatMeetsLimitsAgainAndAgain) {
  load(4, formulaRule(1, "type='cellIs' operator='equal'", "A1+ROWS(SEQUENCE(1048576,16384))"));
  Explainer explainer = makeExplainer();
  for (unsigned long row = 0; row < 4; ++row) {
    auto const account = explainer.explain(0, CellIndex(RowIndex(row), ColumnIndex(0)));
    auto const& rule = account.rules.at(0);
    ASSERT_EQ(rule.outcome, FormatOutcome::Failed);
    auto const& trace = rule.formulas.at(0).trace;
    EXPECT_THAT(trace.text, StartsWith("A" + std::to_string(row + 1) + "+ROWS"));
    EXPECT_NE(trace.failure, nullptr);
    EXPECT_EQ(trace.steps.empty(), row >= 2);
    EXPECT_EQ(trace.isCut, row >= 2);
  }
}

TEST_F(ExplainedRuleTest, ComparesWithTheAnswerOfOtherProgramsAtEachCell) {
  load(3, formulaRule(1, "type='cellIs' operator='lessThan'", "IF(A1=2,&quot;x&quot;,0)"));
  Explainer explainer = makeExplainer();
  auto const elsewhereAt = [&](unsigned long row) {
    return explainer.explain(0, CellIndex(RowIndex(row), ColumnIndex(0))).rules.at(0).elsewhere;
  };
  EXPECT_FALSE(elsewhereAt(0));
  auto const other = elsewhereAt(1);
  ASSERT_TRUE(other) << "numbers are smaller than texts there";
  EXPECT_TRUE(other->holds);
  EXPECT_EQ(other->formula, "A2<IF(A2=2,\"x\",0)");
  EXPECT_FALSE(elsewhereAt(2));
}

}  // namespace
}  // namespace Zorv::Analysis
