#include "workbook/Recalculation/MissingResultCalculator.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OfficeUtils/Clock.h"
#include "support/Sanitized.h"
#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::describeCell;
using TestSupport::WorkbookBuilder;

/// A cell with a formula and no result.
std::string formula(std::string const& cell, std::string const& text,
                    std::string const& attributes = "") {
  return "<c r='" + cell + "'><f " + attributes + ">" + text + "</f></c>";
}

std::string number(std::string const& cell, std::string const& value) {
  return "<c r='" + cell + "'><v>" + value + "</v></c>";
}

std::string rowOf(std::string const& cells) { return "<row>" + cells + "</row>"; }

/// The findings as `sheet cell: message`.
std::vector<std::string> placedMessagesOf(Document const& document) {
  std::vector<std::string> messages;
  for (Finding const& finding : document.getFindings()) {
    messages.push_back(finding.sheet + " " + finding.range + ": " + finding.message);
  }
  return messages;
}

struct Case {
  std::string name;
  std::string cells;
  std::vector<std::pair<std::string, std::string>> expected;
};

class MissingResultsOf : public testing::TestWithParam<Case> {};

TEST_P(MissingResultsOf, AreCalculated) {
  Document const document =
      WorkbookBuilder()
          .setSheet(rowOf(GetParam().cells))
          .setWorkbook("",
                       "<definedNames><definedName name='Rate'>Sheet1!$B$1</definedName>"
                       "<definedName name='Left'>Sheet1!XFD1</definedName></definedNames>")
          .load();
  for (auto const& [cell, expected] : GetParam().expected) {
    EXPECT_EQ(describeCell(document, cell), expected) << cell;
  }
  EXPECT_THAT(placedMessagesOf(document), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    MissingResultCalculator, MissingResultsOf,
    testing::Values(
        Case{"OfEveryKind",
             formula("A1", "1+1") + formula("A2", "\"a\"&amp;\"b\"") + formula("A3", "1=1") +
                 formula("A4", "1/0"),
             {{"A1", "number 2"},
              {"A2", "text ab"},
              {"A3", "boolean TRUE"},
              {"A4", "error #DIV/0!"}}},
        Case{"OfEmptyCellsAreZero", formula("A1", "B1"), {{"A1", "number 0"}}},
        Case{"ThatWaitForOneAnother",
             formula("A1", "A2+1") + formula("A2", "A3+1") + formula("A3", "40"),
             {{"A1", "number 42"}, {"A2", "number 41"}}},
        Case{"ThatWaitForManyCells",
             formula("A1", "SUM(B1:C3)") + formula("B1", "C3*2") + formula("C3", "5") +
                 number("B2", "100") + formula("B4", "1000"),
             {{"A1", "number 115"}}},
        Case{"ThatWaitForWholeColumns",
             formula("A1", "SUM(C:C)") + formula("C900000", "3") + formula("C2", "C900000+1"),
             {{"A1", "number 7"}}},
        Case{"OfNames",
             formula("A1", "Rate*2") + formula("B1", "3") + formula("C1", "4") +
                 formula("D1", "Left+1"),
             {{"A1", "number 6"}, {"D1", "number 5"}}},
        Case{"ThatFindTheirCellsWhenTheyAreCalculated",
             formula("A1", "INDIRECT(\"B\"&amp;C1)") + formula("C1", "2") + formula("B2", "C2+1") +
                 formula("C2", "9"),
             {{"A1", "number 10"}}},
        Case{"OfOffsetsFromTheirOwnPlace",
             number("A1", "5") + formula("A2", "OFFSET(A2,-1,0)+1") +
                 formula("A3", "OFFSET(A3,-1,0)+1"),
             {{"A2", "number 6"}, {"A3", "number 7"}}},
        Case{"OfRangesWhoseEndIsCalculated",
             formula("A1", "SUM(B1:INDEX(D1:D9,3))") + formula("B2", "7") + formula("C3", "8"),
             {{"A1", "number 15"}}},
        Case{"OfRowNumbersOfTheirOwn", formula("A3", "ROW(A3)+ROWS(A$1:A3)"), {{"A3", "number 6"}}},
        Case{"OfSharedFormulas",
             number("B1", "10") + number("B2", "20") + formula("B3", "B2*2") +
                 formula("A1", "B1+C$1", "t='shared' si='0' ref='A1:A3'") +
                 formula("A2", "", "t='shared' si='0'") + formula("A3", "", "t='shared' si='0'") +
                 number("C1", "1"),
             {{"A1", "number 11"}, {"A2", "number 21"}, {"A3", "number 41"}}},
        Case{"OfSharedFormulasWhoseFirstCellHasOne",
             "<c r='A1'><f t='shared' si='7' ref='A1:A2'>B1</f><v>99</v></c>" +
                 formula("A2", "", "t='shared' si='7'") + number("B2", "4"),
             {{"A1", "number 99"}, {"A2", "number 4"}}},
        Case{"OfArraysForSeveralCells",
             formula("A1", "B1:B3*2", "t='array' ref='A1:A3'") + number("B1", "1") +
                 number("B2", "2") + number("B3", "3"),
             {{"A1", "number 2"}, {"A2", "number 4"}, {"A3", "number 6"}}},
        Case{"OfArraysOverRowsAndColumns",
             formula("B2", "{1,\"a\";TRUE,#N/A}", "t='array' ref='B2:C3'") +
                 "<c r='C3' s='0'/><c r='B3'></c>",
             {{"B2", "number 1"}, {"C2", "text a"}, {"B3", "boolean TRUE"}, {"C3", "error #N/A"}}},
        Case{"OfArraysSmallerThanTheirCells",
             formula("A1", "{1;2}", "t='array' ref='A1:B3'") +
                 formula("D1", "{1,2}", "t='array' ref='D1:F2'") +
                 formula("H1", "7", "t='array' ref='H1:I2'"),
             {{"A1", "number 1"},
              {"B2", "number 2"},
              {"A3", "error #N/A"},
              {"B3", "error #N/A"},
              {"D2", "number 1"},
              {"E2", "number 2"},
              {"F1", "error #N/A"},
              {"I2", "number 7"}}},
        Case{"OfArraysLargerThanTheirCells",
             formula("A1", "{1,2,3;4,5,6}", "t='array' ref='A1:B1'"),
             {{"A1", "number 1"}, {"B1", "number 2"}, {"C1", "none"}, {"A2", "none"}}},
        Case{"OfArraysWhoseEmptyValuesAreZero",
             formula("A1", "B1:B2", "t='array' ref='A1:A2'") + number("B1", "5"),
             {{"A1", "number 5"}, {"A2", "number 0"}}},
        Case{"ThatWaitForCellsOfArrays",
             formula("A1", "SUM(D1:D9)+D3") + formula("D1", "E1:E3+1", "t='array' ref='D1:D3'") +
                 formula("E2", "F9") + formula("F9", "40"),
             {{"A1", "number 44"}, {"D2", "number 41"}, {"D3", "number 1"}}},
        Case{"OfArraysButNotTheResultsThatTheFileHas",
             formula("A1", "{1;2;3}", "t='array' ref='A1:A3'") + number("A2", "99") +
                 formula("A3", "50"),
             {{"A1", "number 1"}, {"A2", "number 99"}, {"A3", "number 50"}}},
        Case{"OfArraysWhoseFirstCellHasOneAreNotAskedFor",
             "<c r='A1'><f t='array' ref='A1:A2'>{1;2}</f><v>9</v></c>",
             {{"A1", "number 9"}, {"A2", "none"}}},
        Case{"OfArraysThatAskForTheirPlace",
             formula("B3", "ROW()*10+COLUMN()", "t='array' ref='B3:C4'") +
                 formula("E1", "ROW()+{10;20}", "t='array' ref='E1:E2'") + formula("G1", "C4+E2"),
             {{"B3", "number 32"},
              {"C3", "number 33"},
              {"B4", "number 42"},
              {"C4", "number 43"},
              {"E1", "number 11"},
              {"E2", "number 22"},
              {"G1", "number 65"}}},
        Case{"OfArraysWhoseAreaIsAnotherPlaceAlone",
             formula("B1", "{1,2}", "t='array' ref='A1:C1'"),
             {{"B1", "number 1"}, {"A1", "none"}, {"C1", "none"}}},
        Case{"OfArrayFormulas",
             number("B1", "1") + number("B2", "2") + number("C1", "3") + number("C2", "4") +
                 formula("A1", "SUM(B1:B2*C1:C2)", "t='array' ref='A1'"),
             {{"A1", "number 11"}}},
        Case{"OfOneCellOutOfARange",
             number("B1", "1") + number("B2", "2") + number("B3", "3") + formula("A2", "B1:B3"),
             {{"A2", "number 2"}}},
        Case{"OfARangeElsewhere",
             number("B1", "1") + number("B2", "2") + formula("A9", "B1:B2"),
             {{"A9", "error #VALUE!"}}},
        Case{"BesideThoseThatTheFileHas",
             "<c r='A1'><f>1+1</f><v>7</v></c><c r='A2' t='str'><f>1+1</f><v></v></c>"
             "<c r='A3'><v></v><f>A1</f></c>",
             {{"A1", "number 7"}, {"A2", "text "}, {"A3", "number 7"}}}),
    [](auto const& test) { return test.param.name; });

struct StuckCase {
  std::string name;
  std::string cells;
  std::pair<std::string, std::string> expected;
  std::string message;
};

class MissingResultsInDoubt : public testing::TestWithParam<StuckCase> {};

TEST_P(MissingResultsInDoubt, AreReported) {
  Document const document = WorkbookBuilder().setSheet(rowOf(GetParam().cells)).load();
  EXPECT_EQ(describeCell(document, GetParam().expected.first), GetParam().expected.second);
  EXPECT_THAT(placedMessagesOf(document), ElementsAre("Sheet1 " + GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    MissingResultCalculator, MissingResultsInDoubt,
    testing::Values(
        StuckCase{"NeedingThemselves",
                  formula("A1", "A1+1"),
                  {"A1", "number 1"},
                  "A1: the cell has no result and a formula that needs its own result, which "
                  "counted as empty"},
        StuckCase{"NeedingOneAnother",
                  formula("A1", "B1+1") + formula("B1", "C1+1") + formula("C1", "A1+1"),
                  {"A1", "number 3"},
                  "C1: the cell has no result and a formula that needs its own result, which "
                  "counted as empty"},
        StuckCase{"NeedingThemselvesInARange",
                  formula("A3", "SUM(A1:A3)") + number("A1", "4"),
                  {"A3", "number 4"},
                  "A3: the cell has no result and a formula that needs its own result, which "
                  "counted as empty"},
        StuckCase{"FindingThemselves",
                  formula("A1", "INDIRECT(\"A1\")+1"),
                  {"A1", "number 1"},
                  "A1: the cell has no result and a formula that needs its own result, which "
                  "counted as empty"},
        StuckCase{"OfNoFormula",
                  formula("B2", "1+") + formula("A3", "((("),
                  {"B2", "empty"},
                  "B2: 2 cells, this one first, have no result and a formula that cannot be read; "
                  "read as empty: the formula ends where a value is wanted at position 3"},
        StuckCase{"WithoutAnything",
                  formula("A1", "") + formula("A2", "", "t='shared' si='3'"),
                  {"A1", "empty"},
                  "A1: 2 cells, this one first, have neither a formula nor a result; read as "
                  "empty"},
        StuckCase{"OfDataTables",
                  formula("A1", "B1", "t='dataTable' ref='A1'"),
                  {"A1", "empty"},
                  "A1: the cell has neither a formula nor a result; read as empty"},
        StuckCase{"OfArraysNeedingThemselves",
                  formula("A1", "A1:A3+1", "t='array' ref='A1:A3'"),
                  {"A3", "number 1"},
                  "A1: 3 cells, this one first, have no result and a formula that needs its own "
                  "result, which counted as empty"},
        StuckCase{"OfArraysNeedingThemselvesByAnotherCell",
                  formula("A1", "B1:B3+1", "t='array' ref='A1:A3'") + formula("B2", "A3*2"),
                  {"A2", "number 1"},
                  "B2: the cell has no result and a formula that needs its own result, which "
                  "counted as empty"},
        StuckCase{"OfArraysOfNoFormula",
                  formula("A1", "1+", "t='array' ref='A1:B2'"),
                  {"B2", "none"},
                  "A1: 4 cells, this one first, have no result and a formula that cannot be read; "
                  "read as empty: the formula ends where a value is wanted at position 3"},
        StuckCase{"OfArraysWithUnknownFunctions",
                  formula("A1", "IF({1;0},1,NOSUCH(1))", "t='array' ref='A1:A2'"),
                  {"A2", "error #NAME?"},
                  "A1: 2 cells, this one first, have no result and a formula with functions that "
                  "are not known: NOSUCH"},
        StuckCase{"OfUnknownFunctions",
                  formula("A1", "NOSUCH(1)") + formula("A2", "OTHER()+NOSUCH()"),
                  {"A2", "error #NAME?"},
                  "A1: 2 cells, this one first, have no result and a formula with functions that "
                  "are not known: NOSUCH, OTHER"}),
    [](auto const& test) { return test.param.name; });

TEST(MissingResultCalculator, CalculatesAcrossSheets) {
  Document const document =
      WorkbookBuilder()
          .addSheet("First", TestSupport::sheetData(rowOf(formula("A1", "Second!A1+1"))))
          .addSheet("Second",
                    TestSupport::sheetData(rowOf(formula("A1", "First!B1*2") + number("B1", "1"))))
          .load();
  EXPECT_EQ(describeCell(document, "A1", 0), "number 1");
}

TEST(MissingResultCalculator, FollowsChainsOfAnyLength) {
  constexpr int length = TestSupport::sanitized ? 50'000 : 200'000;
  std::string rows;
  for (int i = 1; i < length; ++i) {
    rows += rowOf(formula("A" + std::to_string(i), "A" + std::to_string(i + 1) + "+1"));
  }
  rows += rowOf(number("A" + std::to_string(length), "0"));
  Document const document = WorkbookBuilder().setSheet(rows).load();
  EXPECT_EQ(describeCell(document, "A1"), "number " + std::to_string(length - 1));
}

TEST(MissingResultCalculator, StopsAtTheLimit) {
  LoadOptions options;
  options.limits.calculatedPositions = 40;
  Document const document =
      WorkbookBuilder()
          .setSheet(rowOf(number("B1", "1") + number("B9", "1") + formula("A1", "SUM(B:B)") +
                          formula("A2", "SUM(B:B)") + formula("A3", "SUM(B:B)")))
          .load(options);
  EXPECT_EQ(describeCell(document, "A1"), "number 2");
  EXPECT_EQ(describeCell(document, "A3"), "empty");
  EXPECT_THAT(placedMessagesOf(document),
              ElementsAre("Sheet1 A3: the cell has no result and formulas that would take too "
                          "long; read as empty"));
}

TEST(MissingResultCalculator, StopsAtTheLimitOfSteps) {
  LoadOptions options;
  options.limits.calculatedSteps = 1'000;
  Document const document =
      WorkbookBuilder()
          .setSheet(rowOf(formula("A1", "SUM(SEQUENCE(4))") + formula("A2", "SUM(SEQUENCE(3000))") +
                          formula("A3", "SUM(SEQUENCE(4))")))
          .load(options);
  EXPECT_EQ(describeCell(document, "A1"), "number 10");
  EXPECT_EQ(describeCell(document, "A2"), "number 4501500");
  EXPECT_EQ(describeCell(document, "A3"), "empty");
  EXPECT_THAT(placedMessagesOf(document),
              ElementsAre("Sheet1 A3: the cell has no result and formulas that would take too "
                          "long; read as empty"));
}

TEST(MissingResultCalculator, StopsAtTheLimitOfTexts) {
  LoadOptions options;
  options.limits.calculatedTextBytes = 300;
  Document const document =
      WorkbookBuilder()
          .setSheet(rowOf(formula("A1", "REPT(\"x\",200)") + formula("A2", "REPT(\"y\",200)") +
                          formula("A3", "\"z\"")))
          .load(options);
  EXPECT_EQ(describeCell(document, "A2"), "text " + std::string(200, 'y'));
  EXPECT_EQ(describeCell(document, "A3"), "empty");
  EXPECT_THAT(placedMessagesOf(document),
              ElementsAre("Sheet1 A3: the cell has no result and formulas that would take too "
                          "long; read as empty"));
}

TEST(MissingResultCalculator, FillsAsManyCellsWithArraysAsTheFileHas) {
  LoadOptions options;
  options.limits.arrayCells = 3;
  WorkbookBuilder fewCells;
  fewCells.setSheet(rowOf(formula("A1", "1", "t='array' ref='A1:A4'")));
  EXPECT_EQ(describeCell(fewCells.load(options), "A4"), "none");
  WorkbookBuilder fourCells;
  fourCells.setSheet(rowOf(formula("A1", "1", "t='array' ref='A1:A4'") + number("B1", "1") +
                           number("C1", "1") + number("D1", "1")));
  EXPECT_EQ(describeCell(fourCells.load(options), "A4"), "number 1");
}

TEST(MissingResultCalculator, LeavesArraysOutThatNeedMoreCellsThanAWorkbookMayHave) {
  LoadOptions options;
  options.limits.cells = 10;
  Document const document =
      WorkbookBuilder()
          .setSheet(rowOf(formula("A1", "1", "t='array' ref='A1:XFD1048576'") +
                          formula("B1", "2", "t='array' ref='B1:B9'") +
                          formula("C1", "3", "t='array' ref='C1:C2'")))
          .load(options);
  EXPECT_EQ(describeCell(document, "A1"), "empty");
  EXPECT_EQ(describeCell(document, "B9"), "none");
  EXPECT_EQ(describeCell(document, "C2"), "number 3");
  EXPECT_THAT(placedMessagesOf(document),
              ElementsAre("Sheet1 A1: 2 cells, this one first, have no result and formulas that "
                          "would take too long; read as empty"));
}

TEST(MissingResultCalculator, CalculatesALargeArrayOnce) {
  LoadOptions options;
  options.limits.calculatedPositions = 250'000;
  Document const document =
      WorkbookBuilder()
          .setSheet(rowOf(number("B1", "1")) + "<row r='100000'>" + number("B100000", "5") +
                    "</row>" + "<row r='100001'>" +
                    formula("C1", "$B$1:$B$100000+1", "t='array' ref='C1:C100000'") + "</row>")
          .load(options);
  EXPECT_EQ(describeCell(document, "C1"), "number 2");
  EXPECT_EQ(describeCell(document, "C100000"), "number 6");
  EXPECT_THAT(placedMessagesOf(document), IsEmpty());
}

TEST(MissingResultCalculator, ReadsTheClockInTheZoneAndTextsInTheLocale) {
  LoadOptions options;
  options.localeName = "de-DE";
  options.timeZone = DOM::TimeZone("Asia/Tokyo");
  // 2026-11-21 20:00 in UTC is the next day in Tokyo.
  OfficeUtils::ScopedClock const clock(OfficeUtils::Clock::TimePoint(
      std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + std::chrono::hours(20)));
  Document const document =
      WorkbookBuilder()
          .setSheet(rowOf(formula("A1", "TODAY()") + formula("A2", "\"1,5\"+1")))
          .load(options);
  EXPECT_EQ(describeCell(document, "A1"), "number 46348");
  EXPECT_EQ(describeCell(document, "A2"), "number 2.5");
}

}  // namespace
}  // namespace Zorv::Workbook
