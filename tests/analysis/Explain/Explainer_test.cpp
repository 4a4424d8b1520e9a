#include "analysis/Explain/Explainer.h"

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DOM/A1Notation.h"
#include "OfficeUtils/Clock.h"
#include "support/RunningClock.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Analysis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::WorkbookBuilder;

/// Rose fill; bold green text; a date format on the cells of style 1.
constexpr char const* styles =
    "<fonts><font><name val='Arial'/></font></fonts>"
    "<fills><fill><patternFill patternType='none'/></fill></fills><borders><border/></borders>"
    "<cellXfs><xf fontId='0' applyFont='1'/><xf fontId='0' numFmtId='14' "
    "applyNumberFormat='1'/></cellXfs>"
    "<dxfs><dxf><fill><patternFill><bgColor rgb='FFFFC7CE'/></patternFill></fill></dxf>"
    "<dxf><font><b/><color rgb='FF006100'/></font>"
    "<fill><patternFill><bgColor rgb='FF00FF00'/></patternFill></fill></dxf></dxfs>";

std::string row(int number, std::string const& cells) {
  return "<row r='" + std::to_string(number) + "'>" + cells + "</row>";
}

std::string rules(std::string const& ranges, std::string const& inner) {
  return "<conditionalFormatting sqref='" + ranges + "'>" + inner + "</conditionalFormatting>";
}

/// A loaded workbook of one sheet, and what explains its cells.
struct Explained {
  Explained(std::string const& rows, std::string const& formatting)
      : document(WorkbookBuilder().setStyles(styles).setSheet(rows, formatting).load()),
        explainer(document, "en-US", DOM::TimeZone()) {}

  CellAccount explain(std::string const& cell, std::optional<std::size_t> rule = std::nullopt) {
    return explainer.explain(0, *DOM::A1Notation::parseCell(cell), rule);
  }

  Workbook::Document document;
  Explainer explainer;
};

/// `0 holds`, `1 notReached by 0`.
std::vector<std::string> outcomesOf(CellAccount const& account) {
  std::vector<std::string> outcomes;
  for (RuleAccount const& rule : account.rules) {
    auto text = std::to_string(rule.rule->number);
    if (!rule.outcome) {
      text += " notResolved";
    } else {
      constexpr char const* names[] = {" notOnThisCell", " doesNotHold", " holds", " failed",
                                       " notReached"};
      text += names[static_cast<int>(*rule.outcome)];
    }
    if (rule.endedBy != nullptr) {
      text += " by " + std::to_string(rule.endedBy->number);
    }
    outcomes.push_back(text);
  }
  return outcomes;
}

/// `fillColour:0`, `fontName:cell`.
std::vector<std::string> settersOf(CellAccount const& account) {
  std::vector<std::string> setters;
  for (EffectiveProperty const& property : account.properties) {
    setters.push_back(
        std::string(property.name) + ':' +
        (property.setBy == nullptr ? "cell" : std::to_string(property.setBy->number)));
  }
  return setters;
}

std::vector<std::size_t> numbersOf(std::vector<NearbyRule> const& nearest) {
  std::vector<std::size_t> numbers;
  for (NearbyRule const& near : nearest) {
    numbers.push_back(near.rule->number);
  }
  return numbers;
}

TEST(Explainer, AccountsForEachRuleOnTheCellByPriority) {
  Explained explained(row(1, "<c r='A1'><v>7</v></c>"),
                      rules("A1:A9",
                            "<cfRule type='cellIs' operator='greaterThan' priority='4' dxfId='0'>"
                            "<formula>5</formula></cfRule>"
                            "<cfRule type='cellIs' operator='lessThan' priority='1' dxfId='0'>"
                            "<formula>5</formula></cfRule>"
                            "<cfRule type='notContainsErrors' priority='2' stopIfTrue='1'/>") +
                          rules("A1", "<cfRule type='dataBar' priority='3'/>") +
                          rules("C1", "<cfRule type='notContainsErrors' priority='5'/>"));
  auto const account = explained.explain("A1");
  EXPECT_THAT(outcomesOf(account),
              ElementsAre("1 doesNotHold", "2 holds", "3 notResolved", "0 notReached by 2"));
  EXPECT_EQ(account.rulesElsewhere, 1U);
  EXPECT_THAT(account.nearest, IsEmpty());
}

TEST(Explainer, SaysWhoSetsEachPropertyOfTheCellAsItIsSeen) {
  Explained explained(row(1, "<c r='A1'><v>7</v></c>"),
                      rules("A1",
                            "<cfRule type='notContainsErrors' priority='1' dxfId='0'/>"
                            "<cfRule type='notContainsErrors' priority='2' dxfId='1'/>"));
  auto const account = explained.explain("A1");
  EXPECT_THAT(settersOf(account),
              ElementsAre("fillPattern:0", "fillColour:0", "fontName:cell", "colour:1", "bold:1"));
  ASSERT_EQ(account.rules.size(), 2U);
  std::vector<std::string> taken;
  for (PropertyAccount const& property : account.rules[1].properties) {
    taken.push_back(std::string(property.name) + (property.takenBy != nullptr ? " taken" : ""));
  }
  EXPECT_THAT(taken, ElementsAre("fillPattern taken", "fillColour taken", "colour", "bold"));
  EXPECT_EQ(account.rules[1].properties[0].takenBy, account.rules[0].rule);
  EXPECT_EQ(account.effectiveStyle.getCellProps()->fillColour->green, 0xC7);
  EXPECT_EQ(account.effectiveStyle.getRunProps()->fontName, "Arial");
  EXPECT_FALSE(account.ownStyle.getCellProps() && account.ownStyle.getCellProps()->fillColour);
}

TEST(Explainer, TracesFormulasAtTheCell) {
  OfficeUtils::ScopedClock const clock(TestSupport::noonOn21November());
  Explained explained(
      row(2, "<c r='D2' s='1'><v>46316</v></c>") + row(3, "<c r='D3' s='1'><v>46400</v></c>"),
      rules("A2:D9",
            "<cfRule type='expression' priority='1' dxfId='0'>"
            "<formula>AND($D2&lt;TODAY(),$D2&lt;&gt;\"\")</formula></cfRule>"));
  auto const account = explained.explain("B3");
  ASSERT_EQ(account.rules.size(), 1U);
  ASSERT_EQ(account.rules[0].formulas.size(), 1U);
  auto const& formula = account.rules[0].formulas[0];
  EXPECT_EQ(formula.written, "AND($D2<TODAY(),$D2<>\"\")");
  EXPECT_EQ(formula.trace.text, "AND($D3<TODAY(),$D3<>\"\")");
  std::vector<std::string> steps;
  for (auto const& step : formula.trace.steps) {
    steps.push_back(step.text + (step.value.isDate ? " date" : ""));
  }
  EXPECT_THAT(steps, ElementsAre("$D3 date", "TODAY() date", "$D3<TODAY()", "$D3<>\"\"",
                                 "AND($D3<TODAY(),$D3<>\"\")"));
  EXPECT_THAT(outcomesOf(account), ElementsAre("0 doesNotHold"));
  EXPECT_THAT(outcomesOf(explained.explain("A2")), ElementsAre("0 holds"));
}

TEST(Explainer, TracesTheFormulasOfComparisonsBoundsAndTexts) {
  Explained explained(
      row(1, "<c r='A1'><v>7</v></c><c r='B1'><v>5</v></c>"),
      rules("A1",
            "<cfRule type='cellIs' operator='greaterThan' priority='1'><formula>B1+1</formula>"
            "</cfRule>"
            "<cfRule type='cellIs' operator='between' priority='2'><formula>B1</formula>"
            "<formula>B1*2</formula></cfRule>"
            "<cfRule type='containsText' operator='containsText' priority='3'>"
            "<formula>NOT(ISERROR(SEARCH($B$1,A1)))</formula></cfRule>"
            "<cfRule type='cellIs' operator='greaterThan' priority='4'><formula>3</formula>"
            "</cfRule>"));
  auto const account = explained.explain("A1");
  std::vector<std::string> written;
  for (RuleAccount const& rule : account.rules) {
    for (FormulaAccount const& formula : rule.formulas) {
      written.push_back(std::to_string(rule.rule->number) + ' ' + formula.written);
    }
  }
  EXPECT_THAT(written, ElementsAre("0 B1+1", "1 B1", "1 B1*2", "2 $B$1"));
}

TEST(Explainer, SaysWhereOtherProgramsDecideOtherwise) {
  Explained explained(
      row(1, "<c r='A1' t='str'><v>Yes</v></c>") + row(2, "<c r='A2' t='str'><v>no</v></c>"),
      rules("A1:A2",
            "<cfRule type='containsText' operator='containsText' text='yes' priority='1'>"
            "<formula>NOT(ISERROR(SEARCH(\"yes\",A1)))</formula></cfRule>"
            "<cfRule type='expression' priority='2'><formula>A1=\"yes\"</formula></cfRule>"));
  auto const account = explained.explain("A1");
  EXPECT_THAT(outcomesOf(account), ElementsAre("0 doesNotHold", "1 holds"));
  ASSERT_TRUE(account.rules[0].elsewhere);
  EXPECT_TRUE(account.rules[0].elsewhere->holds);
  EXPECT_THAT(std::string(account.rules[0].elsewhere->reason), testing::HasSubstr("case"));
  EXPECT_THAT(account.rules[0].elsewhere->formula, testing::HasSubstr("A1"));
  EXPECT_FALSE(account.rules[1].elsewhere) << "a formula means the same everywhere";
  EXPECT_FALSE(explained.explain("A2").rules[0].elsewhere) << "the answers are the same";
}

TEST(Explainer, NamesTheNearestRulesOfACellWithoutAny) {
  Explained explained("", rules("A1:B2", "<cfRule type='containsErrors' priority='3'/>") +
                              rules("F9 D5:E6", "<cfRule type='containsErrors' priority='2'/>") +
                              rules("Z99", "<cfRule type='containsErrors' priority='1'/>") +
                              rules("A9", "<cfRule type='colorScale' priority='4'/>"));
  auto const account = explained.explain("C5");
  EXPECT_THAT(outcomesOf(account), IsEmpty());
  EXPECT_EQ(account.rulesElsewhere, 4U);
  EXPECT_THAT(numbersOf(account.nearest), ElementsAre(1, 0, 3));
  EXPECT_EQ(account.nearest[0].range, (TableRange{4, 3, 6, 5}));
  EXPECT_EQ(account.nearest[0].rows, 0U);
  EXPECT_EQ(account.nearest[0].columns, 1U);
  EXPECT_EQ(account.nearest[1].rows, 3U);
  EXPECT_EQ(account.nearest[1].columns, 1U);
  EXPECT_EQ(account.content, nullptr);
}

TEST(Explainer, AnswersForOneRuleAlone) {
  Explained explained(
      row(1, "<c r='A1'><v>7</v></c>"),
      rules("A1",
            "<cfRule type='notContainsErrors' priority='1' stopIfTrue='1' dxfId='0'/>"
            "<cfRule type='cellIs' operator='greaterThan' priority='2' dxfId='1'>"
            "<formula>ABS(A1)</formula></cfRule>"
            "<cfRule type='cellIs' operator='equal' priority='3' dxfId='1'>"
            "<formula>7</formula></cfRule>") +
          rules("C4", "<cfRule type='containsErrors' priority='4'/>"));
  auto const notReached = explained.explain("A1", 1);
  ASSERT_THAT(outcomesOf(notReached), ElementsAre("1 notReached by 0"));
  EXPECT_EQ(notReached.rules[0].holdsByItself, false);
  EXPECT_EQ(notReached.rules[0].formulas.size(), 1U);
  EXPECT_EQ(explained.explain("A1", 2).rules[0].holdsByItself, true);
  EXPECT_EQ(explained.explain("A1").rules[2].holdsByItself, std::nullopt);

  auto const elsewhere = explained.explain("A1", 3);
  EXPECT_THAT(outcomesOf(elsewhere), ElementsAre("3 notOnThisCell"));
  EXPECT_THAT(numbersOf(elsewhere.nearest), ElementsAre(3));
}

TEST(Explainer, TakesTheStyleOfRowsAndColumnsWhereThereIsNoCell) {
  auto document =
      WorkbookBuilder()
          .setStyles(styles)
          .addSheet("Sheet1",
                    "<cols><col min='2' max='3' width='9' style='1'/></cols><sheetData>"
                    "<row r='4' s='1' customFormat='1'/><row r='5'><c r='B5'><v>1</v></c></row>"
                    "</sheetData>")
          .load();
  Explainer explainer(document, "en-US", DOM::TimeZone());
  auto const hasDateFormat = [&](std::string const& cell) {
    auto const account = explainer.explain(0, *DOM::A1Notation::parseCell(cell));
    return account.effectiveStyle.getCellFormat() != nullptr &&
           account.effectiveStyle.getCellFormat()->code != "General";
  };
  EXPECT_TRUE(hasDateFormat("B1"));
  EXPECT_TRUE(hasDateFormat("C9"));
  EXPECT_FALSE(hasDateFormat("D1"));
  EXPECT_TRUE(hasDateFormat("F4"));
  EXPECT_FALSE(hasDateFormat("B5")) << "the cell has the default style";
}

TEST(Explainer, TellsAFailureAndGoesOn) {
  Explained explained(row(1, "<c r='A1'><v>7</v></c>"),
                      rules("A1:A2",
                            "<cfRule type='expression' priority='1' dxfId='0'>"
                            "<formula>A1+ROWS(SEQUENCE(1048576,16384))</formula>"
                            "</cfRule><cfRule type='containsErrors' priority='2'/>"));
  for (int i = 0; i < 6; ++i) {
    auto const account = explained.explain("A1");
    EXPECT_THAT(outcomesOf(account), ElementsAre("0 failed", "1 notReached by 0"));
    EXPECT_NE(account.rules[0].failure, nullptr);
    EXPECT_EQ(account.conditionalStyle, nullptr);
  }
}

}  // namespace
}  // namespace Zorv::Analysis
