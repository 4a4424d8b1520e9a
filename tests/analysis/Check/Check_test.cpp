#include "analysis/Check/Check.h"

#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/WorkbookBuilder.h"

namespace Zorv::Analysis {

/// For messages of tests that fail.
void PrintTo(CheckFinding const& finding, std::ostream* out) {
  *out << kindOf(finding.code).id << " of rules " << testing::PrintToString(finding.rules) << ": "
       << finding.reason;
}

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using TestSupport::WorkbookBuilder;

/// Two formats: 0 and 2 fill red, 1 fills green and makes the text bold.
constexpr char const* formats =
    "<dxfs><dxf><fill><patternFill><bgColor rgb='FFFF0000'/></patternFill></fill></dxf>"
    "<dxf><font><b/></font><fill><patternFill><bgColor rgb='FF00FF00'/></patternFill></fill></dxf>"
    "<dxf><fill><patternFill><bgColor rgb='FFFF0000'/></patternFill></fill></dxf></dxfs>";

/// A rule of the first format; `attributes` may say otherwise.
std::string rule(std::string const& type, std::string const& content, int priority,
                 std::string const& attributes = "dxfId='0'") {
  return "<cfRule type='" + type + "' priority='" + std::to_string(priority) + "' " + attributes +
         ">" + content + "</cfRule>";
}

std::string cellIs(std::string const& op, std::string const& formula, int priority,
                   std::string const& attributes = "dxfId='0'") {
  return rule("cellIs", "<formula>" + formula + "</formula>", priority,
              "operator='" + op + "' " + attributes);
}

std::string formula(std::string const& text, int priority,
                    std::string const& attributes = "dxfId='0'") {
  return rule("expression", "<formula>" + text + "</formula>", priority, attributes);
}

std::string on(std::string const& ranges, std::string const& rules) {
  return "<conditionalFormatting sqref='" + ranges + "'>" + rules + "</conditionalFormatting>";
}

std::string colourScale(int priority) {
  return "<cfRule type='colorScale' priority='" + std::to_string(priority) +
         "'><colorScale><cfvo type='min'/><cfvo type='max'/><color rgb='FFFF0000'/>"
         "<color rgb='FF00FF00'/></colorScale></cfRule>";
}

std::string dataBar(int priority) {
  return "<cfRule type='dataBar' priority='" + std::to_string(priority) +
         "'><dataBar><cfvo type='min'/><cfvo type='max'/><color rgb='FFFF0000'/></dataBar>"
         "</cfRule>";
}

/// Rows 1 to `count` with numbers in column A.
std::string numbers(int count) {
  std::string rows;
  for (int row = 1; row <= count; ++row) {
    std::string const number = std::to_string(row);
    rows += "<row r='" + number + "'><c r='A" + number + "'><v>" + number + "</v></c></row>";
  }
  return rows;
}

std::vector<CheckFinding> checkSheet(std::string const& rows, std::string const& rules) {
  auto const document = WorkbookBuilder().setStyles(formats).setSheet(rows, rules).load();
  auto findings = check(document);
  // Each test uses some of the formats.
  std::erase_if(findings, [](CheckFinding const& finding) {
    return finding.code == CheckCode::UnusedStyles;
  });
  return findings;
}

/// A finding of a code about rules, whose reason contains a text.
auto isFinding(CheckCode code, std::vector<std::size_t> const& rules, std::string const& reason) {
  return AllOf(Field("code", &CheckFinding::code, code),
               Field("rules", &CheckFinding::rules, rules),
               Field("reason", &CheckFinding::reason, HasSubstr(reason)));
}

auto hasCode(CheckCode code) { return Contains(Field("code", &CheckFinding::code, code)); }

TEST(CheckKinds, StandInTheOrderOfTheirCodesAndHaveIdsOfTheirOwn) {
  std::size_t index = 0;
  std::vector<std::string_view> ids;
  for (CheckKind const& kind : listCheckKinds()) {
    EXPECT_EQ(static_cast<std::size_t>(kind.code), index++);
    EXPECT_EQ(&kindOf(kind.code), &kind);
    EXPECT_THAT(ids, Not(Contains(kind.id)));
    ids.push_back(kind.id);
  }
}

TEST(Check, FindsNothingWrongWithOrdinaryRules) {
  EXPECT_THAT(checkSheet(numbers(20), on("A1:A20", cellIs("greaterThan", "15", 1, "dxfId='0'") +
                                                       cellIs("greaterThan", "10", 2, "dxfId='1'") +
                                                       formula("MOD(ROW(),2)=0", 3, "dxfId='1'")) +
                                          on("B1:B9", formula("A1&lt;TODAY()", 4))),
              IsEmpty());
}

struct FateCase {
  char const* name;
  std::string rule;
  CheckCode code;
  char const* reason;
};

class Fates : public testing::TestWithParam<FateCase> {};

TEST_P(Fates, AreFoundWithTheirReason) {
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", GetParam().rule)),
              ElementsAre(isFinding(GetParam().code, {0}, GetParam().reason)));
}

std::string between(std::string const& op, std::string const& first, std::string const& second) {
  return rule("cellIs", "<formula>" + first + "</formula><formula>" + second + "</formula>", 1,
              "operator='" + op + "' dxfId='0'");
}

INSTANTIATE_TEST_SUITE_P(
    Check, Fates,
    testing::Values(FateCase{"ReversedBounds", between("between", "9", "1"), CheckCode::NeverHolds,
                             "its first bound, 9, is above its second, 1"},
                    FateCase{"ReversedOutside", between("notBetween", "9", "1"),
                             CheckCode::AlwaysHolds, "its first bound, 9, is above its second, 1"},
                    FateCase{"BoundsOfTwoKinds", between("between", "1", "\"x\""),
                             CheckCode::NeverHolds, "different kinds"},
                    FateCase{"ConstantFalse", formula("1&gt;2", 1), CheckCode::NeverHolds,
                             "its formula is FALSE for every cell"},
                    FateCase{"ConstantTrue", formula("TRUE", 1), CheckCode::AlwaysHolds,
                             "its formula is TRUE for every cell"},
                    FateCase{"FormulaInQuotes", formula("\"A1&gt;5\"", 1), CheckCode::NeverHolds,
                             "quotation marks around a formula"},
                    FateCase{"ExcludingBounds", formula("AND(A1&gt;5,A1&lt;3)", 1),
                             CheckCode::NeverHolds, "exclude each other"},
                    FateCase{"TwoTextsAtOnce", formula("AND(A1=\"x\",\"y\"=A1)", 1),
                             CheckCode::NeverHolds, "two different texts"},
                    FateCase{"UnequalToOneOfTwo", formula("OR(A1&lt;&gt;1,A1&lt;&gt;2)", 1),
                             CheckCode::AlwaysHolds, "AND may be meant"},
                    FateCase{"NothingLeftOut", formula("OR(A1&gt;3,A1&lt;=3)", 1),
                             CheckCode::AlwaysHolds, "leave no number out"},
                    FateCase{"ItselfUnequal", cellIs("notEqual", "A1", 1), CheckCode::NeverHolds,
                             "compares each cell with itself"},
                    FateCase{"ItselfEqual", cellIs("equal", "A1", 1), CheckCode::AlwaysHolds,
                             "compares each cell with itself"},
                    FateCase{"NumberAsText", cellIs("equal", "\"3\"", 1), CheckCode::NeverHolds,
                             "compares with the text \"3\", and its cells hold numbers"},
                    FateCase{"EmptyText", rule("containsText", "", 1, "text='' dxfId='0'"),
                             CheckCode::AlwaysHolds, "is empty"},
                    FateCase{"NoRank", rule("top10", "", 1, "rank='0' dxfId='0'"),
                             CheckCode::NeverHolds, "its rank is 0"}),
    [](auto const& test) { return test.param.name; });

TEST(Check, EqualBoundsAreNotReversed) {
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", between("between", "3", "3"))), IsEmpty());
}

TEST(Check, BoundsThatLeaveSomethingOpenAreNoContradiction) {
  for (char const* const text :
       {"AND(A1&gt;3,A1&lt;5)", "AND(A1&gt;=3,A1&lt;=3)", "AND(A1=\"x\",A1=\"X\")",
        "OR(A1&lt;&gt;1,B1&lt;&gt;2)", "OR(A1&lt;3,A1&gt;3)", "AND(A1&gt;5,B1&lt;3)"}) {
    EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", formula(text, 1))), IsEmpty()) << text;
  }
}

TEST(Check, NumbersStoredAsTextsNeverCompareWithANumber) {
  std::string const texts =
      "<row r='1'><c r='A1' t='str'><v>12</v></c></row><row r='2'><c r='A2' t='str'><v>7</v></c>"
      "</row>";
  EXPECT_THAT(checkSheet(texts, on("A1:A2", cellIs("greaterThan", "5", 1))),
              ElementsAre(isFinding(CheckCode::NeverHolds, {0}, "stored as texts")));
  // A heading or a remark among them may be meant.
  std::string const words = texts + "<row r='3'><c r='A3' t='str'><v>none</v></c></row>";
  EXPECT_THAT(checkSheet(words, on("A1:A3", cellIs("greaterThan", "5", 1))),
              Not(hasCode(CheckCode::NeverHolds)));
}

TEST(Check, AWeakerConditionWithTheSamePropertiesHidesAStrongerOne) {
  std::string const wide = cellIs("greaterThan", "5", 1, "dxfId='1'");
  std::string const narrow = cellIs("greaterThan", "8", 2, "dxfId='0'");
  EXPECT_THAT(checkSheet(numbers(20), on("A1:A20", wide) + on("A3:A9", narrow)),
              ElementsAre(isFinding(CheckCode::HiddenRule, {1, 0}, "set the same properties")));
  // The earlier rule does not set what the later one sets.
  EXPECT_THAT(checkSheet(numbers(20), on("A1:A20", cellIs("greaterThan", "5", 1, "dxfId='0'")) +
                                          on("A3:A9", cellIs("greaterThan", "8", 2, "dxfId='1'"))),
              IsEmpty());
  // It does not reach as far.
  EXPECT_THAT(checkSheet(numbers(20), on("A1:A8", wide) + on("A3:A9", narrow)), IsEmpty());
  // It does not hold as often.
  EXPECT_THAT(checkSheet(numbers(20), on("A1:A20", cellIs("greaterThan", "8", 1, "dxfId='1'") +
                                                       cellIs("greaterThanOrEqual", "8", 2))),
              IsEmpty());
}

TEST(Check, ARuleBehindAStopIsHidden) {
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", formula("TRUE", 1, "stopIfTrue='1'") +
                                                     cellIs("greaterThan", "3", 2, "dxfId='1'"))),
              Contains(isFinding(CheckCode::HiddenRule, {1, 0}, "they stop wherever it holds")));
  // Two halves of a stop, together in front of the whole rule.
  EXPECT_THAT(
      checkSheet(numbers(9),
                 on("A1:A4", rule("containsText", "", 1, "text='a' stopIfTrue='1' dxfId='0'")) +
                     on("A5:A9", rule("containsText", "", 2, "text='b' stopIfTrue='1' dxfId='1'")) +
                     on("A1:A9", rule("beginsWith", "", 3, "text='ab' dxfId='1'"))),
      ElementsAre(isFinding(CheckCode::HiddenRule, {2, 0, 1}, "they stop wherever it holds")));
}

TEST(Check, ARuleThatStopsIsNotHiddenByProperties) {
  EXPECT_THAT(checkSheet(numbers(20), on("A1:A20", cellIs("greaterThan", "5", 1, "dxfId='1'") +
                                                       cellIs("greaterThan", "8", 2,
                                                              "dxfId='0' stopIfTrue='1'") +
                                                       formula("ISODD(A1)", 3, "dxfId='1'"))),
              IsEmpty());
}

TEST(Check, ARuleWithoutFormatHasAnEffectOnlyWhereItStops) {
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", cellIs("greaterThan", "3", 1, ""))),
              ElementsAre(isFinding(CheckCode::NoEffect, {0}, "stops no other rule")));
  std::string const stop = cellIs("greaterThan", "3", 1, "stopIfTrue='1'");
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", stop) + on("B1:B5", formula("A1=2", 2))),
              ElementsAre(isFinding(CheckCode::NoEffect, {0}, "no later rule shares a cell")));
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", stop) + on("A5:B9", formula("A5=2", 2))),
              IsEmpty());
  EXPECT_THAT(
      checkSheet(numbers(5),
                 on("A1:A5", stop) +
                     on("A1:A5",
                        "<cfRule type='dataBar' priority='2'><dataBar><cfvo type='min'/><cfvo "
                        "type='max'/><color rgb='FF638EC6'/></dataBar></cfRule>")),
      IsEmpty());
}

TEST(Check, AStopInFrontOfAScaleIsNotHiddenByProperties) {
  EXPECT_THAT(checkSheet(numbers(9),
                         on("A1:A9", cellIs("greaterThan", "1", 1) +
                                         cellIs("greaterThan", "5", 2, "dxfId='2' stopIfTrue='1'") +
                                         colourScale(3))),
              IsEmpty());
}

TEST(Check, AScaleBehindOthersIsHidden) {
  EXPECT_THAT(checkSheet(numbers(9), on("A1:A5", colourScale(1)) + on("A4:A9", colourScale(2)) +
                                         on("A2:A8", colourScale(3))),
              ElementsAre(isFinding(CheckCode::HiddenRule, {2, 0, 1}, "draw the same kind")));
  EXPECT_THAT(checkSheet(numbers(9), on("A1:A5", colourScale(1)) + on("A1:A6", colourScale(2)) +
                                         on("A1:A5", dataBar(3))),
              IsEmpty());
}

TEST(Check, AScaleBehindAStopThatAlwaysHoldsIsHidden) {
  auto const stop = [](int priority) {
    return on("A1:A9", formula("TRUE", priority, "dxfId='0' stopIfTrue='1'"));
  };
  EXPECT_THAT(checkSheet(numbers(9), stop(1) + on("A1:A9", colourScale(2))),
              Contains(isFinding(CheckCode::HiddenRule, {1, 0}, "or stop")));
  EXPECT_THAT(checkSheet(numbers(9), stop(2) + on("A1:A9", colourScale(1))),
              Not(hasCode(CheckCode::HiddenRule)));
  EXPECT_THAT(checkSheet(numbers(9), stop(1) + on("A1:B9", colourScale(2))),
              Not(hasCode(CheckCode::HiddenRule)));
}

TEST(Check, EqualRulesAreDuplicates) {
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A2 B1:B2", formula("A1=3", 1)) +
                                         on("B1:B2 A1:A2", formula("A1 = 3", 2, "dxfId='2'"))),
              ElementsAre(isFinding(CheckCode::DuplicateRules, {0, 1}, "are equal")));
  // Another reference, another stop flag, another format.
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", formula("A1=3", 1) + formula("B1=3", 2) +
                                                     formula("$A1=3", 3, "dxfId='1'"))),
              Not(hasCode(CheckCode::DuplicateRules)));
}

TEST(Check, RulesWhoseRangesTouchAreFragments) {
  EXPECT_THAT(
      checkSheet(numbers(9), on("A1:A3", formula("A1=B$1", 1)) +
                                 on("A4", formula("A4=B$1", 2, "dxfId='2'")) +
                                 on("B4", formula("B4=C$1", 3)) + on("D9", formula("D9=E$1", 4))),
      ElementsAre(isFinding(CheckCode::RuleFragments, {0, 1, 2}, "3 rules have the same")));
  // The condition moves otherwise, or depends on the whole range.
  EXPECT_THAT(
      checkSheet(numbers(9), on("A1:A3", formula("A1=$B1", 1)) + on("A4:A6", formula("A4=$B3", 2)) +
                                 on("A1:A3", rule("top10", "", 3, "rank='1' dxfId='1'")) +
                                 on("A4:A6", rule("top10", "", 4, "rank='1' dxfId='1'"))),
      IsEmpty());
}

TEST(Check, MissingThingsAreErrors) {
  auto const findings =
      checkSheet(numbers(5), on("A1:A5", formula("A1&gt;Limit", 1) + formula("A1=Old!B1", 2) +
                                             formula("A1=#REF!", 3, "dxfId='1'")));
  EXPECT_THAT(findings,
              ElementsAre(isFinding(CheckCode::MissingReference, {0}, "unknown name \"Limit\""),
                          isFinding(CheckCode::MissingReference, {1}, "missing sheet \"Old\""),
                          isFinding(CheckCode::MissingReference, {2}, "were deleted (#REF!)")));
  EXPECT_EQ(findings.front().severity, Severity::Error);
}

TEST(Check, RulesThatCannotBeReadAreErrors) {
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", formula("A1+", 1))),
              ElementsAre(isFinding(CheckCode::UnreadableRule, {0}, "cannot be read")));
}

TEST(Check, AReferenceAboveTheFirstRowIsOffTheSheet) {
  EXPECT_THAT(checkSheet(numbers(5), on("A1:A5", formula("A1=A1048576", 1))),
              ElementsAre(isFinding(CheckCode::OffSheetReference, {0},
                                    "for A1 a relative reference lies above the first row")));
  EXPECT_THAT(
      checkSheet(numbers(5), on("A1:A5", formula("A1=XFD1", 1))),
      ElementsAre(isFinding(CheckCode::OffSheetReference, {0}, "left of the first column")));
  EXPECT_THAT(checkSheet(numbers(5), on("A2:A5", formula("A2=A1", 1))), IsEmpty());
}

TEST(Check, ABoundThatMovesOffItsOnlyValueWanders) {
  std::string rows = numbers(9);
  rows.insert(rows.find("</row>"), "<c r='F1'><v>4</v></c>");
  EXPECT_THAT(
      checkSheet(rows, on("A1:A9", cellIs("greaterThan", "F1", 1))),
      Contains(isFinding(CheckCode::WanderingReference, {0}, "F1 has a value for the first")));
  EXPECT_THAT(
      checkSheet(rows, on("A1:A9", formula("A1&gt;F1", 1))),
      Contains(isFinding(CheckCode::WanderingReference, {0}, "F1 has a value for the first")));
  EXPECT_THAT(checkSheet(rows, on("A1:A9", cellIs("greaterThan", "$F$1", 1) +
                                               formula("F1&lt;&gt;\"\"", 2, "dxfId='1'"))),
              Not(hasCode(CheckCode::WanderingReference)));
}

TEST(Check, TheOwnRangeOfARuleShouldNotMove) {
  EXPECT_THAT(checkSheet(numbers(9), on("A1:A9", formula("A1&gt;AVERAGE(A1:A9)", 1))),
              Contains(isFinding(CheckCode::WanderingReference, {0}, "A1:A9 is the rule's own")));
  EXPECT_THAT(checkSheet(numbers(9), on("A1:A9", formula("A1&gt;AVERAGE(A$1:A$9)", 1) +
                                                     formula("A1&gt;SUM(B1:C9)", 2, "dxfId='1'"))),
              IsEmpty());
}

TEST(Check, RangesFarBelowTheDataAreNoted) {
  EXPECT_THAT(checkSheet(numbers(9), on("A1:A60000", cellIs("greaterThan", "3", 1))),
              Contains(isFinding(CheckCode::RangeBeyondData, {0},
                                 "its ranges end at A60000, and the data of the sheet at A9")));
  EXPECT_THAT(checkSheet(numbers(9), on("A1:A1048576", cellIs("greaterThan", "3", 1)) +
                                         on("B1:B2000", cellIs("greaterThan", "4", 2))),
              Not(hasCode(CheckCode::RangeBeyondData)));
}

TEST(Check, FormulasThatReadALargeRangeForEachCellAreSlow) {
  std::string const rows = numbers(6000);
  EXPECT_THAT(checkSheet(rows, on("A1:A6000", formula("COUNTIF($A$1:$A$6000,A1)&gt;1", 1))),
              Contains(isFinding(CheckCode::QuadraticFormula, {0},
                                 "for each of 6000 cells it reads 6000 cells, about 36 million")));
  // A range that grows is read by half. IF keeps the test quick.
  std::string const grows = "IF(A1&gt;0,FALSE,COUNTIF($A$1:$A1,A1)&gt;1)";
  EXPECT_THAT(checkSheet(numbers(8000), on("A1:A8000", formula(grows, 1))),
              Contains(isFinding(CheckCode::QuadraticFormula, {0}, "reads 4000 cells")));
  EXPECT_THAT(checkSheet(rows, on("A1:A6000", formula("A1&gt;AVERAGE($A$1:$A$6000)", 1)) +
                                   on("B1:B900", formula("COUNTIF($A$1:$A$6000,A1)&gt;1", 2))),
              IsEmpty());
}

TEST(Check, StandardDeviationsAreAnotherAnswerAndNoMistake) {
  EXPECT_THAT(
      checkSheet(numbers(9), on("A1:A9", rule("aboveAverage", "", 1, "stdDev='1' dxfId='0'"))),
      ElementsAre(isFinding(CheckCode::DiffersElsewhere, {0}, "standard deviations")));
}

TEST(Check, FormatsThatNothingUsesAreNoted) {
  auto const load = [](std::string const& rules) {
    return WorkbookBuilder().setStyles(formats).setSheet(numbers(5), rules).load();
  };
  auto const unused = load(on("A1:A5", cellIs("greaterThan", "3", 1, "dxfId='1'")));
  EXPECT_THAT(
      check(unused),
      ElementsAre(isFinding(CheckCode::UnusedStyles, {},
                            "uses 2 of the differential formats, the first of them number 0")));
  EXPECT_THAT(check(unused, {.sheets = {0}}), IsEmpty());
}

TEST(Check, DifferencesFromOtherProgramsAreCountedAndExplained) {
  EXPECT_THAT(checkSheet(numbers(5), on("A3:A8", cellIs("lessThan", "5", 1))), IsEmpty());
  std::string const gap =
      "<row r='1'><c r='A1'><v>9</v></c></row><row r='4'><c r='A4'><v>9</v></c>"
      "</row>";
  EXPECT_THAT(checkSheet(gap, on("A1:A4", cellIs("lessThan", "5", 1))),
              ElementsAre(isFinding(CheckCode::DiffersElsewhere, {0},
                                    "2 cells, first A2: an empty cell counts as 0")));
}

TEST(Check, ADocumentOfTheOthersSemanticsHasNoDifferences) {
  auto const document = WorkbookBuilder()
                            .setStyles(formats)
                            .setSheet("<row r='1'><c r='A1'/><c r='B1'><v>9</v></c></row>",
                                      on("A1:B1", cellIs("lessThan", "5", 1)))
                            .load({.semantics = Workbook::Semantics::Widespread});
  EXPECT_THAT(check(document), Not(hasCode(CheckCode::DiffersElsewhere)));
}

TEST(Check, LooksAtTheSheetsThatAreAskedAbout) {
  auto const document =
      WorkbookBuilder()
          .setStyles(formats)
          .setSheet(numbers(2), on("A1:A2", formula("FALSE", 1)))
          .addSheet("Other", TestSupport::sheetData(numbers(2)) + on("A1:A2", formula("1=2", 1)))
          .load();
  EXPECT_THAT(check(document, {.sheets = {1}}),
              ElementsAre(isFinding(CheckCode::NeverHolds, {1}, "FALSE")));
}

TEST(Check, StopsWithItsBudget) {
  auto const document = WorkbookBuilder()
                            .setStyles(formats)
                            .setSheet(numbers(5000), on("A1:A5000", formula("A1&gt;3", 1)))
                            .load();
  WorkBudget budget({.steps = 2'000});
  EXPECT_THROW(static_cast<void>(check(document, {.budget = &budget})), WorkBudgetExceeded);
}

}  // namespace
}  // namespace Zorv::Analysis
