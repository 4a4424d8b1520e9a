#include "workbook/Widespread.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "DOM/A1Notation.h"
#include "OfficeUtils/Clock.h"
#include "workbook/DocumentValueProvider.h"
#include "workbook/Evaluation.h"
#include "workbook/WidespreadDifference.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using TestSupport::WorkbookBuilder;

/// A rule and the formula that says what spreadsheet programs at large do.
struct FormulaCase {
  char const* name;
  char const* ranges;
  char const* rule;
  char const* formula;
};

class WidespreadForm : public testing::TestWithParam<FormulaCase> {};

TEST_P(WidespreadForm, IsAFormulaForTheFirstCell) {
  auto const document = WorkbookBuilder().setRules(GetParam().ranges, GetParam().rule).load();
  ASSERT_NE(document.getRules().at(0).format, nullptr)
      << document.getRules().at(0).unresolvedReason;
  auto const widespread = findWidespread(document.getRules().at(0));
  ASSERT_TRUE(widespread);
  EXPECT_EQ(widespread->formula, GetParam().formula);
}

INSTANTIATE_TEST_SUITE_P(
    Comparisons, WidespreadForm,
    testing::Values(
        FormulaCase{"Greater", "B2:C9",
                    "<cfRule type='cellIs' operator='greaterThan'><formula>5"
                    "</formula></cfRule>",
                    "B2>5"},
        FormulaCase{"BaseOfSeveralRanges", "D2:D3 B7",
                    "<cfRule type='cellIs' operator='equal'>"
                    "<formula>=$A2</formula></cfRule>",
                    "B2=$A2"},
        FormulaCase{"ComparisonAsOperand", "A1",
                    "<cfRule type='cellIs' operator='notEqual'>"
                    "<formula>B1&gt;C1</formula></cfRule>",
                    "A1<>(B1>C1)"},
        FormulaCase{"NotEqualToAnError", "A1",
                    "<cfRule type='cellIs' operator='notEqual'><formula>#REF!</formula></cfRule>",
                    "NOT(ISERROR(A1))"},
        FormulaCase{"Between", "A1",
                    "<cfRule type='cellIs' operator='between'><formula>9</formula>"
                    "<formula>1</formula></cfRule>",
                    "OR(AND(A1>=9,A1<=1),AND(A1>=1,A1<=9))"},
        FormulaCase{"NotBetween", "A1",
                    "<cfRule type='cellIs' operator='notBetween'><formula>1"
                    "</formula><formula>9</formula></cfRule>",
                    "NOT(OR(AND(A1>=1,A1<=9),AND(A1>=9,A1<=1)))"}),
    [](auto const& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Texts, WidespreadForm,
    testing::Values(
        FormulaCase{"Contains", "A1", "<cfRule type='containsText' text='say &quot;yes&quot;'/>",
                    "NOT(ISERROR(SEARCH(\"say \"\"yes\"\"\",A1)))"},
        FormulaCase{"NotContains", "A1", "<cfRule type='notContainsText' text='x'/>",
                    "ISERROR(SEARCH(\"x\",A1))"},
        FormulaCase{"BeginsWith", "A1", "<cfRule type='beginsWith' text='x'/>",
                    "LEFT(A1,LEN(\"x\"))=\"x\""},
        FormulaCase{"EndsWithACell", "A1",
                    "<cfRule type='endsWith'><formula>"
                    "RIGHT(A1,LEN($B$1))=$B$1</formula></cfRule>",
                    "RIGHT(A1,LEN($B$1))=$B$1"},
        FormulaCase{"ContainsOfAComparison", "A1",
                    "<cfRule type='cellIs' operator='containsText'>"
                    "<formula>$B$1</formula></cfRule>",
                    "NOT(ISERROR(SEARCH($B$1,A1)))"},
        FormulaCase{"Blanks", "A1", "<cfRule type='containsBlanks'/>", "LEN(TRIM(A1))=0"},
        FormulaCase{"NoErrors", "A1", "<cfRule type='notContainsErrors'/>", "NOT(ISERROR(A1))"}),
    [](auto const& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Ranges, WidespreadForm,
    testing::Values(
        FormulaCase{"Top", "A1:A9", "<cfRule type='top10' rank='3'/>",
                    "AND(ISNUMBER(A1),A1>=LARGE(($A$1:$A$9),MIN(3,COUNT(($A$1:$A$9)))))"},
        FormulaCase{"BottomPercent", "A1:A9",
                    "<cfRule type='top10' rank='29' percent='1' "
                    "bottom='1'/>",
                    "AND(ISNUMBER(A1),A1<=SMALL(($A$1:$A$9),MAX(1,INT(COUNT(($A$1:$A$9))*29/100)))"
                    ")"},
        FormulaCase{"AboveAverage", "A1:A9 C1:C2", "<cfRule type='aboveAverage'/>",
                    "AND(ISNUMBER(A1),A1>AGGREGATE(1,6,$A$1:$A$9,$C$1:$C$2))"},
        FormulaCase{"BelowByDeviations", "A1:A9",
                    "<cfRule type='aboveAverage' aboveAverage='0' "
                    "stdDev='2'/>",
                    "AND(ISNUMBER(A1),A1<=AGGREGATE(1,6,$A$1:$A$9)-2*AGGREGATE(8,6,$A$1:$A$9))"},
        FormulaCase{"Duplicates", "A1:A5 A5:A9", "<cfRule type='duplicateValues'/>",
                    "AND(COUNTIF($A$1:$A$5,A1)+COUNTIF($A$6:$A$9,A1)>1,NOT(ISBLANK(A1)))"},
        FormulaCase{"Unique", "A1:A9", "<cfRule type='uniqueValues'/>",
                    "AND(COUNTIF($A$1:$A$9,A1)=1,NOT(ISBLANK(A1)))"}),
    [](auto const& test) { return test.param.name; });

TEST(Widespread, AFormulaIsTheSameEverywhere) {
  auto const document =
      WorkbookBuilder()
          .setRules("A1", "<cfRule type='expression'><formula>A1&gt;5</formula></cfRule>")
          .load();
  EXPECT_FALSE(findWidespread(document.getRules().at(0)));
}

/// 600 ranges of one cell, which do not touch.
std::string manyRanges() {
  std::string ranges;
  for (int row = 1; row <= 1200; row += 2) {
    ranges += "A" + std::to_string(row) + " ";
  }
  return ranges;
}

TEST(Widespread, ARuleOfTooManyRangesKeepsItsOwnConditionAndSaysSo) {
  auto const document = WorkbookBuilder()
                            .setRules(manyRanges(), "<cfRule type='duplicateValues'/>")
                            .load({.semantics = Semantics::Widespread});
  ASSERT_NE(document.getRules().at(0).format, nullptr);
  EXPECT_EQ(document.getRules().at(0).format->getOperator().which(), 6);
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_THAT(document.getFindings()[0].message, testing::HasSubstr("has too many ranges"));
}

/// A cell about which the library and the others differ: what each says, and why.
struct DifferenceCase {
  char const* name;
  char const* row;  ///< cells of row 1, of which A1 is asked about
  char const* ranges;
  char const* rule;
  bool ownAnswer;
  char const* reason;
};

class WidespreadAnswer : public testing::TestWithParam<DifferenceCase> {
protected:
  OfficeUtils::ScopedClock clock{std::chrono::sys_days(std::chrono::year(2026) / 12 / 30) +
                                 std::chrono::hours(12)};
};

TEST_P(WidespreadAnswer, DiffersFromTheOwnOneForAReason) {
  auto builder =
      WorkbookBuilder().setSheet(std::string("<row r='1'>") + GetParam().row + "</row>",
                                 std::string("<conditionalFormatting sqref='") + GetParam().ranges +
                                     "'>" + GetParam().rule + "</conditionalFormatting>");
  auto const own = builder.load();
  auto const widespread = builder.load({.semantics = Semantics::Widespread});
  EXPECT_EQ(TestSupport::holds(own, 0, "A1"), GetParam().ownAnswer);
  EXPECT_EQ(TestSupport::holds(widespread, 0, "A1"), !GetParam().ownAnswer);

  auto const& table = *own.getSheets()[0].table;
  ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<DocumentValueProvider>(own, "en-US", DOM::TimeZone()));
  auto const cell = table.getCellInfo(0, 0);
  auto const operands = calculator.prepare(own.getStyles(), table).findOperands(0, cell);
  FormulaValue const value = cell.getCell() ? cell.getCell()->value : FormulaValue();
  EXPECT_THAT(
      std::string(explainDifference(own.getRules()[0].format->getOperator(), value, operands)),
      testing::HasSubstr(GetParam().reason));
}

constexpr char const* texts = "<c r='A1' t='str'><v>Yes</v></c><c r='B1' t='str'><v>YES</v></c>";
constexpr char const* differingNumbers =
    "<c r='A1'><v>8</v></c><c r='B1'><v>9</v></c><c r='C1'><v>9</v></c>";

INSTANTIATE_TEST_SUITE_P(
    Comparisons, WidespreadAnswer,
    testing::Values(
        DifferenceCase{"EmptyIsZero", "", "A1",
                       "<cfRule type='cellIs' operator='lessThan'><formula>5</formula></cfRule>",
                       false, "an empty cell counts as 0"},
        DifferenceCase{"KindsAreOrdered", texts, "A1",
                       "<cfRule type='cellIs' operator='greaterThan'><formula>5</formula></cfRule>",
                       false, "numbers are smaller than texts"},
        DifferenceCase{"LetterCase", texts, "A1",
                       "<cfRule type='cellIs' operator='equal'><formula>\"yes\"</formula></cfRule>",
                       false, "letter case"},
        DifferenceCase{"Errors", "<c r='A1' t='e'><v>#N/A</v></c>", "A1",
                       "<cfRule type='cellIs' operator='equal'><formula>#N/A</formula></cfRule>",
                       true, "no comparison with an error holds"},
        DifferenceCase{"ReversedBounds", differingNumbers, "A1",
                       "<cfRule type='cellIs' operator='between'><formula>9</formula>"
                       "<formula>1</formula></cfRule>",
                       false, "the smaller bound is the lower one"},
        DifferenceCase{"TextBetween", texts, "A1",
                       "<cfRule type='cellIs' operator='between'><formula>\"y\"</formula>"
                       "<formula>\"z\"</formula></cfRule>",
                       false, "letter case"}),
    [](auto const& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Others, WidespreadAnswer,
    testing::Values(
        DifferenceCase{"ContainsInOtherCase", texts, "A1",
                       "<cfRule type='containsText' text='YE'/>", false, "letter case"},
        DifferenceCase{"ContainsAPattern", texts, "A1", "<cfRule type='containsText' text='Y?s'/>",
                       false, "* and ? stand for other characters"},
        DifferenceCase{"RanksOfCells", differingNumbers, "A1:C1", "<cfRule type='top10' rank='2'/>",
                       true, "each number has a rank of its own"},
        DifferenceCase{"PercentOfCells", "<c r='A1'><v>9</v></c><c r='B1'><v>8</v></c>", "A1:B1",
                       "<cfRule type='top10' rank='10' percent='1'/>", false, "at least one"},
        DifferenceCase{"Deviations", "<c r='A1'><v>9</v></c><c r='B1'><v>1</v></c>", "A1:B1",
                       "<cfRule type='aboveAverage' stdDev='1'/>", false, "standard deviations"},
        DifferenceCase{"DuplicatesInOtherCase", texts, "A1:B1", "<cfRule type='duplicateValues'/>",
                       false, "letter case"},
        DifferenceCase{"BlankText", "<c r='A1' t='str'><v> </v></c>", "A1",
                       "<cfRule type='containsBlanks'/>", false, "a text of nothing but spaces"},
        // 4 January 2027, in the first week of the next year.
        DifferenceCase{"TurnOfTheYear", "<c r='A1'><v>46391</v></c>", "A1",
                       "<cfRule type='timePeriod' timePeriod='nextWeek'/>", false,
                       "an interval of the calendar"},
        // 5 December 2025.
        DifferenceCase{"MonthOfAnotherYear", "<c r='A1'><v>45996</v></c>", "A1",
                       "<cfRule type='timePeriod' timePeriod='thisMonth'/>", true,
                       "the year counts"}),
    [](auto const& test) { return test.param.name; });

/// Periods on Wednesday, 30 December 2026, by calendar day; 46386 is that day.
TEST(Widespread, PeriodsAreIntervalsOfTheCalendar) {
  OfficeUtils::ScopedClock const clock{std::chrono::sys_days(std::chrono::year(2026) / 12 / 30) +
                                       std::chrono::hours(12)};
  struct Period {
    char const* name;
    int first;
    int last;
  };
  for (Period const& period :
       {Period{"yesterday", 46385, 46385}, Period{"today", 46386, 46386},
        Period{"tomorrow", 46387, 46387}, Period{"last7Days", 46380, 46386},
        Period{"lastWeek", 46376, 46382}, Period{"thisWeek", 46383, 46389},
        Period{"nextWeek", 46390, 46396}, Period{"lastMonth", 46327, 46356},
        Period{"thisMonth", 46357, 46387}, Period{"nextMonth", 46388, 46418}}) {
    for (int const day : {period.first - 1, period.first, period.last, period.last + 1}) {
      auto const document =
          WorkbookBuilder()
              .setSheet("<row r='1'><c r='A1'><v>" + std::to_string(day) + ".75</v></c></row>",
                        std::string("<conditionalFormatting sqref='A1'><cfRule type='timePeriod' "
                                    "timePeriod='") +
                            period.name + "'/></conditionalFormatting>")
              .load({.semantics = Semantics::Widespread});
      EXPECT_EQ(TestSupport::holds(document, 0, "A1"), period.first <= day && day <= period.last)
          << period.name << " " << day;
    }
  }
}

}  // namespace
}  // namespace Zorv::Workbook
