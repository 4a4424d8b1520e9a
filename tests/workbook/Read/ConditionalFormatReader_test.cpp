#include "workbook/Read/ConditionalFormatReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using TestSupport::holds;
using TestSupport::sheetData;
using TestSupport::WorkbookBuilder;

constexpr char const* extensionNamespaces =
    "xmlns:n='http://schemas.microsoft.com/office/spreadsheetml/2009/9/main' "
    "xmlns:m='http://schemas.microsoft.com/office/excel/2006/main'";

std::string formatting(std::string const& area, std::string const& rules) {
  return "<conditionalFormatting sqref='" + area + "'>" + rules + "</conditionalFormatting>";
}

std::string extension(std::string const& area, std::string const& rules) {
  return "<extLst><ext " + std::string(extensionNamespaces) +
         "><n:conditionalFormattings><n:conditionalFormatting>" + rules + "<m:sqref>" + area +
         "</m:sqref></n:conditionalFormatting></n:conditionalFormattings></ext></extLst>";
}

/// The numbers of the rules in the order in which the table has their formats.
std::vector<std::size_t> priorityOrder(Document const& document, std::size_t sheet = 0) {
  std::vector<std::size_t> numbers;
  for (auto const& format : document.getSheets()[sheet].table->getLiveConditionalFormats()) {
    for (Rule const& rule : document.getRules()) {
      if (rule.format == format.get()) {
        numbers.push_back(rule.number);
      }
    }
  }
  return numbers;
}

TEST(ConditionalFormatReader, RulesAreCountedOverTheWholeWorkbook) {
  std::string const unique = "<cfRule type='uniqueValues' priority='1'/>";
  Document const document =
      WorkbookBuilder()
          .addSheet("First", sheetData("") + formatting("A1", unique + unique) +
                                 formatting("B1", "<cfRule type='dataBar' priority='9'/>") +
                                 extension("C1", "<n:cfRule type='iconSet' priority='2'/>"))
          .addSheet("Second", sheetData("") + formatting("D1", unique))
          .load();
  auto const& rules = document.getRules();
  ASSERT_EQ(rules.size(), 5U);
  for (std::size_t number = 0; number < rules.size(); ++number) {
    EXPECT_EQ(rules[number].number, number);
  }
  EXPECT_EQ(rules[2].type, "dataBar");
  EXPECT_EQ(rules[3].type, "iconSet");
  EXPECT_TRUE(rules[3].fromExtensionList);
  EXPECT_EQ(rules[3].rangeText, "C1");
  EXPECT_EQ(rules[4].sheet, 1U);
  EXPECT_FALSE(rules[4].fromExtensionList);
}

TEST(ConditionalFormatReader, ARuleKeepsWhatTheFileSays) {
  Document const document =
      WorkbookBuilder()
          .setStyles("<dxfs><dxf><font><b/></font></dxf></dxfs>")
          .setRules("A1:B2 D4",
                    "<cfRule type='cellIs' operator='between' priority='7' dxfId='0' "
                    "stopIfTrue='1'><formula>1</formula><formula>C1 </formula></cfRule>")
          .load();
  Rule const& rule = document.getRules().at(0);
  EXPECT_EQ(rule.type, "cellIs");
  EXPECT_EQ(rule.operatorText, "between");
  EXPECT_EQ(rule.priority, 7);
  EXPECT_TRUE(rule.stopIfTrue);
  EXPECT_EQ(rule.rangeText, "A1:B2 D4");
  EXPECT_THAT(rule.ranges, testing::ElementsAre(TableRange{0, 0, 2, 2}, TableRange{3, 3, 4, 4}));
  EXPECT_THAT(rule.formulas, testing::ElementsAre("1", "C1"));
  EXPECT_EQ(rule.unresolvedReason, "");
  ASSERT_TRUE(rule.format);
  EXPECT_TRUE(rule.format->getStopCalculateConditions());
  EXPECT_EQ(DOM::convertToTableRanges(*document.getSheets()[0].table, rule.format->getRanges()),
            rule.ranges);
  EXPECT_EQ(TestSupport::styleOf(document, 0).getRunProps()->bold, true);
}

TEST(ConditionalFormatReader, PrioritiesCountOverTheWholeSheetAndTiesStandAsInTheFile) {
  auto const rule = [](char const* priority) {
    return "<cfRule type='uniqueValues' priority='" + std::string(priority) + "'/>";
  };
  Document const document =
      WorkbookBuilder()
          .setSheet("", formatting("A1", rule("3") + rule("1")) + formatting("B1", rule("2")) +
                            formatting("C1", rule("1")) +
                            extension("D1", "<n:cfRule type='uniqueValues' priority='2'/>"))
          .load();
  EXPECT_THAT(priorityOrder(document), testing::ElementsAre(1, 3, 2, 4, 0));
}

TEST(ConditionalFormatReader, RulesWithoutAPriorityComeLastAndZeroComesFirst) {
  Document const document =
      WorkbookBuilder()
          .setRules("A1",
                    "<cfRule type='uniqueValues'/><cfRule type='uniqueValues' priority=''/>"
                    "<cfRule type='uniqueValues' priority='2147483647'/>"
                    "<cfRule type='uniqueValues' priority='1'/>"
                    "<cfRule type='uniqueValues' priority='0'/>"
                    "<cfRule type='uniqueValues' priority='0'/>"
                    "<cfRule type='uniqueValues' priority='-1'/>")
          .load();
  EXPECT_THAT(priorityOrder(document), testing::ElementsAre(6, 4, 5, 3, 2, 0, 1));
}

TEST(ConditionalFormatReader, ARuleWithoutADifferentialFormatStylesNothingAndHolds) {
  Document const document =
      WorkbookBuilder()
          .setSheet("<row r='1'><c r='A1'><v>1</v></c></row>",
                    formatting("A1",
                               "<cfRule type='expression' priority='1' stopIfTrue='1'>"
                               "<formula>A1=1</formula></cfRule>"))
          .load();
  ASSERT_TRUE(document.getRules()[0].format);
  EXPECT_TRUE(document.getRules()[0].format->getStyleUUID().isEmpty());
  EXPECT_TRUE(holds(document, 0, "A1"));
  EXPECT_THAT(document.getFindings(), testing::IsEmpty());
}

TEST(ConditionalFormatReader, ADifferentialFormatThatIsNotThereIsReported) {
  Document const document =
      WorkbookBuilder().setRules("A1:A5", "<cfRule type='uniqueValues' dxfId='3'/>").load();
  EXPECT_TRUE(document.getRules()[0].format->getStyleUUID().isEmpty());
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].range, "A1:A5");
  EXPECT_EQ(document.getFindings()[0].message,
            "rule 0 refers to the differential format \"3\", which the file does not have; it "
            "styles nothing");
}

/// A visual rule of the main list that names its part in the extension list.
std::string visualRule(std::string const& type, std::string const& id) {
  return "<cfRule type='" + type + "' priority='1'><" + type + "/><extLst><ext " +
         extensionNamespaces + "><n:id> " + id + " </n:id></ext></extLst></cfRule>";
}

TEST(ConditionalFormatReader, AVisualRuleAndItsPartInTheExtensionListAreOneRule) {
  Document const document =
      WorkbookBuilder()
          .setSheet("", formatting("A1:A9", visualRule("dataBar", "{A}")) +
                            formatting("B1", visualRule("iconSet", "{B}")) +
                            extension("A1:A9", "<n:cfRule type='dataBar' id='{A}'/>") +
                            extension("C1", "<n:cfRule type='uniqueValues' priority='7'/>"))
          .load();
  auto const& rules = document.getRules();
  ASSERT_EQ(rules.size(), 3U);
  EXPECT_EQ(rules[0].type, "dataBar");
  EXPECT_FALSE(rules[0].fromExtensionList);
  EXPECT_EQ(rules[0].priority, 1);
  EXPECT_EQ(rules[1].type, "iconSet");
  // The part in the extension list keeps its number, 2.
  EXPECT_EQ(rules[2].number, 3U);
  EXPECT_EQ(rules[2].type, "uniqueValues");
  EXPECT_EQ(document.findRule(1), &rules[1]);
  EXPECT_EQ(document.findRule(2), nullptr);
  EXPECT_EQ(document.findRule(3), &rules[2]);
  EXPECT_EQ(document.findRule(4), nullptr);
}

TEST(ConditionalFormatReader, OtherPartsOfTheExtensionListAreRulesOfTheirOwn) {
  std::string const part = "<n:cfRule type='dataBar' id='{A}'/>";
  Document const document =
      WorkbookBuilder()
          .addSheet("One", sheetData("") + formatting("A1", visualRule("dataBar", "{A}")) +
                               extension("A1", part + part) +
                               extension("A1", "<n:cfRule type='dataBar' id='{B}'/>"))
          .addSheet("Two", sheetData("") + extension("A1", part))
          .load();
  std::vector<std::size_t> numbers;
  for (Rule const& rule : document.getRules()) {
    numbers.push_back(rule.number);
  }
  EXPECT_THAT(numbers, testing::ElementsAre(0, 2, 3, 4));
}

TEST(ConditionalFormatReader, ALongTextOfRangesIsCut) {
  std::string const ranges = std::string(99, '?') + "\u00e4" + std::string(1'000, '?');
  Document const document =
      WorkbookBuilder().setRules(ranges, "<cfRule type='uniqueValues'/>").load();
  std::string const cut = std::string(99, '?') + "...";
  EXPECT_EQ(document.getRules().at(0).rangeText, cut);
  EXPECT_EQ(document.getRules()[0].unresolvedReason, "\"" + cut + "\" is no range of the sheet");
}

TEST(ConditionalFormatReader, TheFormulaOfATextRulesTextIsKept) {
  Document const document =
      WorkbookBuilder()
          .setRules("A1",
                    "<cfRule type='containsText' operator='containsText' text='$C$14'><formula>"
                    "NOT(ISERROR(SEARCH($C$14,A1)))</formula></cfRule>"
                    "<cfRule type='endsWith' operator='endsWith' text='x'><formula>"
                    "RIGHT(A1,LEN(\"x\"))=\"x\"</formula></cfRule>"
                    "<cfRule type='beginsWith'><formula>A1=1</formula></cfRule>"
                    "<cfRule type='expression'><formula>ISERROR(SEARCH($C$14,A1))</formula>"
                    "</cfRule>")
          .load();
  EXPECT_EQ(document.getRules().at(0).needleFormula, "$C$14");
  EXPECT_EQ(document.getRules().at(1).needleFormula, "");
  EXPECT_EQ(document.getRules().at(2).needleFormula, "");
  EXPECT_EQ(document.getRules().at(3).needleFormula, "");
}

TEST(ConditionalFormatReader, TheExtensionListHasAreasFormulasAndFormatsOfItsOwn) {
  Document const document =
      WorkbookBuilder()
          .addSheet("Data",
                    sheetData("<row r='2'><c r='B2'><v>5</v></c></row>"
                              "<row r='3'><c r='B3'><v>6</v></c></row>") +
                        extension("B2:B3 D2",
                                  "<n:cfRule type='cellIs' operator='greaterThan' priority='4' "
                                  "id='{1}'><m:f>Limits!A1</m:f><n:dxf><font><i/></font>"
                                  "<fill><patternFill><bgColor rgb='FFFF0000'/></patternFill>"
                                  "</fill></n:dxf></n:cfRule>"))
          .addSheet("Limits", sheetData("<row r='1'><c r='A1'><v>4</v></c></row>"
                                        "<row r='2'><c r='A2'><v>9</v></c></row>"))
          .load();
  Rule const& rule = document.getRules().at(0);
  EXPECT_THAT(rule.formulas, testing::ElementsAre("Limits!A1"));
  EXPECT_EQ(rule.ranges.size(), 2U);
  EXPECT_EQ(rule.priority, 4);
  EXPECT_EQ(TestSupport::styleOf(document, 0).getRunProps()->italic, true);
  EXPECT_EQ(TestSupport::styleOf(document, 0).getCellProps()->fillPattern, DOM::FillPattern::Solid);
  EXPECT_TRUE(holds(document, 0, "B2"));
  EXPECT_FALSE(holds(document, 0, "B3"));
}

TEST(ConditionalFormatReader, FormulasInsideAVisualRuleAreNotTheRulesOwn) {
  Document const document =
      WorkbookBuilder()
          .setSheet("", extension("A1",
                                  "<n:cfRule type='dataBar'><n:dataBar><n:cfvo type='num'>"
                                  "<m:f>10</m:f></n:cfvo></n:dataBar></n:cfRule>"))
          .load();
  EXPECT_THAT(document.getRules().at(0).formulas, testing::IsEmpty());
}

TEST(ConditionalFormatReader, FormulasAreRelativeToTheCornerOfAllAreas) {
  // The corner of C4 and E2 is C2.
  Document const document =
      WorkbookBuilder()
          .setSheet(
              "<row r='2'><c r='A2'><v>0</v></c><c r='C2'><v>1</v></c></row>"
              "<row r='4'><c r='A4'><v>1</v></c></row>",
              formatting("C4 E2", "<cfRule type='expression'><formula>A2=1</formula></cfRule>"))
          .load();
  EXPECT_TRUE(holds(document, 0, "C4"));
  EXPECT_TRUE(holds(document, 0, "E2"));
}

TEST(ConditionalFormatReader, ReferencesWrappedAroundTheEdgeAreOrdinaryOnes) {
  // Written at A2: one column to the left of it, five rows above it.
  Document const document =
      WorkbookBuilder()
          .setSheet(
              "<row r='2'><c r='A2'><v>7</v></c></row><row r='7'><c r='B7'><v>1</v></c></row>",
              formatting("A2:B9",
                         "<cfRule type='expression'><formula>XFD2=7</formula></cfRule>"
                         "<cfRule type='expression'><formula>$A1048573=7</formula>"
                         "</cfRule>"))
          .load();
  EXPECT_TRUE(holds(document, 0, "B2"));
  EXPECT_FALSE(holds(document, 0, "A2"));
  EXPECT_TRUE(holds(document, 1, "B7"));
  EXPECT_FALSE(holds(document, 1, "B6"));
}

TEST(ConditionalFormatReader, LostReferencesInAnyCaseAreErrorsAndDoNotHold) {
  Document const document =
      WorkbookBuilder()
          .setRules("A1",
                    "<cfRule type='expression'><formula>#ref!&gt;1</formula></cfRule>"
                    "<cfRule type='expression'><formula>#REF!</formula></cfRule>")
          .load();
  EXPECT_EQ(document.getRules()[0].unresolvedReason, "");
  EXPECT_FALSE(holds(document, 0, "A1"));
  EXPECT_FALSE(holds(document, 1, "A1"));
}

TEST(ConditionalFormatReader, WholeColumnsRowsAndSheetsAreRanges) {
  Document const document =
      WorkbookBuilder()
          .setSheet("<row r='1048576'><c r='XFD1048576'><v>1</v></c></row>",
                    formatting("XFD:XFD 5:6 A1:XFD1048576 B2:B1048576",
                               "<cfRule type='expression'><formula>A1=1</formula></cfRule>"))
          .load();
  EXPECT_THAT(
      document.getRules()[0].ranges,
      testing::ElementsAre(TableRange{0, 16'383, 1'048'576, 16'384}, TableRange{4, 0, 6, 16'384},
                           TableRange{0, 0, 1'048'576, 16'384}, TableRange{1, 1, 1'048'576, 2}));
  EXPECT_TRUE(holds(document, 0, "XFD1048576"));
}

TEST(ConditionalFormatReader, HundredsOfAreasAndAThousandRulesAreRead) {
  std::string area;
  std::string rules;
  for (int number = 1; number <= 1'000; ++number) {
    area += "A" + std::to_string(number * 2) + " ";
    rules += "<cfRule type='uniqueValues' priority='" + std::to_string(number) + "'/>";
  }
  Document const document = WorkbookBuilder().setRules(area, rules).load();
  EXPECT_EQ(document.getRules().size(), 1'000U);
  EXPECT_EQ(document.getRules()[999].ranges.size(), 1'000U);
  EXPECT_EQ(document.getSheets()[0].table->getLiveConditionalFormats().size(), 1'000U);
}

TEST(ConditionalFormatReader, PivotScopedRulesApplyToTheirAreas) {
  Document const document =
      WorkbookBuilder()
          .setSheet("<row r='1'><c r='A1'><v>5</v></c></row>",
                    "<conditionalFormatting pivot='1' sqref='A1'><cfRule type='cellIs' "
                    "operator='equal'><formula>5</formula></cfRule></conditionalFormatting>")
          .load();
  EXPECT_TRUE(holds(document, 0, "A1"));
}

struct DamagedRule {
  char const* area;
  char const* rule;
  char const* reason;
};

class DamagedRules : public testing::TestWithParam<DamagedRule> {};

TEST_P(DamagedRules, AreKeptWithTheirReasonAndTheOthersGoOn) {
  Document const document = WorkbookBuilder()
                                .setSheet("<row r='1'><c r='A1'><v>5</v></c></row>",
                                          formatting(GetParam().area, GetParam().rule) +
                                              formatting("A1",
                                                         "<cfRule type='cellIs' operator='equal'>"
                                                         "<formula>5</formula></cfRule>"))
                                .load();
  Rule const& damaged = document.getRules().at(0);
  EXPECT_FALSE(damaged.format);
  EXPECT_THAT(damaged.unresolvedReason, testing::StartsWith(GetParam().reason));
  EXPECT_EQ(damaged.rangeText, GetParam().area);
  EXPECT_TRUE(holds(document, 1, "A1"));
  EXPECT_EQ(document.getSheets()[0].table->getLiveConditionalFormats().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    ConditionalFormatReader, DamagedRules,
    testing::Values(DamagedRule{"A1", "<cfRule type='expression'><formula>A1=(</formula></cfRule>",
                                "the formula \"A1=(\" cannot be read: "},
                    DamagedRule{"A1", "<cfRule type='expression'><formula> </formula></cfRule>",
                                "the rule has no formula"},
                    DamagedRule{"XFE1:XFF9", "<cfRule type='uniqueValues'/>",
                                "\"XFE1:XFF9\" is no range of the sheet"},
                    DamagedRule{"A1 A1048577", "<cfRule type='uniqueValues'/>",
                                "\"A1 A1048577\" is no range of the sheet"},
                    DamagedRule{"#REF!", "<cfRule type='uniqueValues'/>",
                                "\"#REF!\" is no range of the sheet"},
                    DamagedRule{"", "<cfRule type='uniqueValues'/>", "the rule has no range"},
                    DamagedRule{"A1", "<cfRule type='iconSet'><iconSet/></cfRule>",
                                "the set 3TrafficLights1 has 3 icons, and the rule 0 thresholds"}));

TEST(ConditionalFormatReader, MoreRulesOrAreasThanTheLimitsAreRefused) {
  auto const builder = WorkbookBuilder().setRules(
      "A1 B1", "<cfRule type='uniqueValues'/><cfRule type='uniqueValues'/>");
  LoadOptions options;
  EXPECT_EQ(builder.loadMessage(options), "");
  options.limits.rules = 1;
  EXPECT_EQ(builder.loadMessage(options),
            "xl/worksheets/sheet1.xml: range A1 B1: the file has more than 1 "
            "conditional-formatting rules, which is the limit");
  options.limits.rules = 2;
  options.limits.ruleAreas = 3;
  EXPECT_EQ(builder.loadMessage(options),
            "xl/worksheets/sheet1.xml: the conditional-formatting rules have more than 3 areas, "
            "which is the limit");
}

TEST(ConditionalFormatReader, ImplicitIntersectionJudgesEachCellByItsOwnRow) {
  Document const document =
      WorkbookBuilder()
          .setSheet(
              "<row r='2'><c r='E2'><v>40</v></c></row><row r='3'><c r='E3'><v>20</v></c></row>",
              formatting("A2:A10",
                         "<cfRule type='expression'><formula>$E$2:$E$10&gt;30"
                         "</formula></cfRule>"))
          .load();
  EXPECT_TRUE(holds(document, 0, "A2"));
  EXPECT_FALSE(holds(document, 0, "A3"));
}

}  // namespace
}  // namespace Zorv::Workbook
