#include "analysis/Explain/VisualExplainer.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "DOM/A1Notation.h"
#include "analysis/Explain/Explainer.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Analysis {
namespace {

std::string barRule(std::string const& ranges, int priority, std::string const& minimum) {
  return "<conditionalFormatting sqref='" + ranges + "'><cfRule type='dataBar' priority='" +
         std::to_string(priority) + "'><dataBar>" + minimum +
         "<cfvo type='max'/><color rgb='FF000000'/></dataBar></cfRule></conditionalFormatting>";
}

/// Numbers 1 and 2 in A1 and A2, a text in A3. Rules by number: 0 stops on A2; bars are 1 on A1:A3,
/// 2 on A1:B9, and 3 on C1 alone, with a threshold that is no number.
class VisualExplainerTest : public testing::Test {
protected:
  RuleAccount explain(std::string const& cell, std::size_t rule) {
    return _explainer.explain(0, *DOM::A1Notation::parseCell(cell), rule).rules.at(0);
  }

  Workbook::Document _document =
      TestSupport::WorkbookBuilder()
          .setSheet(
              "<row r='1'><c r='A1'><v>1</v></c><c r='C1'><v>5</v></c></row>"
              "<row r='2'><c r='A2'><v>2</v></c></row>"
              "<row r='3'><c r='A3' t='str'><v>x</v></c></row>",
              "<conditionalFormatting sqref='A2'><cfRule type='notContainsErrors' "
              "priority='1' stopIfTrue='1'/></conditionalFormatting>" +
                  barRule("A1:A3", 2, "<cfvo type='min'/>") +
                  barRule("A1:B9", 3, "<cfvo type='min'/>") +
                  barRule("C1", 4, "<cfvo type='formula' val='1/0'/>"))
          .load();
  Explainer _explainer{_document, "en-US", DOM::TimeZone()};
};

TEST_F(VisualExplainerTest, TheFirstRuleOfAKindDraws) {
  EXPECT_EQ(explain("A1", 1).visual, VisualOutcome::Draws);
  auto const later = explain("A1", 2);
  EXPECT_EQ(later.visual, VisualOutcome::NotReached);
  EXPECT_EQ(later.endedBy, &_document.getRules()[1]);
  auto const account = _explainer.explain(0, *DOM::A1Notation::parseCell("A1"));
  ASSERT_TRUE(account.visuals.bar);
  EXPECT_EQ(account.visualRules.bar, &_document.getRules()[1]);
}

TEST_F(VisualExplainerTest, AConditionThatStopsEndsTheVisualsAfterIt) {
  auto const stopped = explain("A2", 1);
  EXPECT_EQ(stopped.visual, VisualOutcome::NotReached);
  EXPECT_EQ(stopped.endedBy, &_document.getRules()[0]);
}

TEST_F(VisualExplainerTest, OnlyNumbersAreDrawn) {
  EXPECT_EQ(explain("A3", 1).visual, VisualOutcome::NoNumber);
  EXPECT_EQ(explain("B2", 2).visual, VisualOutcome::NoNumber);
}

TEST_F(VisualExplainerTest, AThresholdThatIsNoNumberIsAFailure) {
  auto const failed = explain("C1", 3);
  EXPECT_EQ(failed.visual, VisualOutcome::Failed);
  EXPECT_TRUE(failed.failure);
}

TEST_F(VisualExplainerTest, ARuleElsewhereIsNotOnTheCell) {
  EXPECT_EQ(explain("C1", 1).visual, VisualOutcome::NotOnThisCell);
}

}  // namespace
}  // namespace Zorv::Analysis
