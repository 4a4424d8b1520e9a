#include "analysis/Diff/CompareRules.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/WorkbookBuilder.h"

namespace Zorv::Analysis {
namespace {

using TestSupport::WorkbookBuilder;

std::string rule(std::string const& ranges, std::string const& formula, int priority, int dxf = 0,
                 std::string const& more = "") {
  return "<conditionalFormatting sqref=\"" + ranges + "\"><cfRule type=\"expression\" priority=\"" +
         std::to_string(priority) + "\" dxfId=\"" + std::to_string(dxf) + "\"" + more +
         "><formula>" + formula + "</formula></cfRule></conditionalFormatting>";
}

Workbook::Document makeBook(std::string const& rules) {
  return WorkbookBuilder()
      .setStyles(
          "<dxfs><dxf><font><b/></font></dxf><dxf><font><i/></font></dxf>"
          "<dxf><font><b/></font></dxf></dxfs>")
      .setSheet("", rules)
      .load();
}

/// `removed 0, changed 1-2 ranges style, moved 3-0, added 4`.
std::string compare(std::string const& first, std::string const& second) {
  auto const before = makeBook(first);
  auto const after = makeBook(second);
  std::string text;
  for (auto const& difference : compareRules(before, 0, after, 0)) {
    constexpr char const* names[] = {"added", "removed", "changed", "moved"};
    text += (text.empty() ? "" : ", ") + std::string(names[static_cast<int>(difference.change)]);
    text += ' ';
    text += difference.first != nullptr ? std::to_string(difference.first->number) : "";
    text += difference.first != nullptr && difference.second != nullptr ? "-" : "";
    text += difference.second != nullptr ? std::to_string(difference.second->number) : "";
    text += difference.aspects.ranges ? " ranges" : "";
    text += difference.aspects.style ? " style" : "";
    text += difference.aspects.stop ? " stop" : "";
    text += difference.aspects.thresholds ? " thresholds" : "";
    text += difference.aspects.colours ? " colours" : "";
    text += difference.aspects.icons ? " icons" : "";
    text += difference.aspects.drawing ? " drawing" : "";
  }
  return text;
}

TEST(CompareRules, FindsNothingBetweenRulesThatSayTheSame) {
  EXPECT_EQ(compare(rule("A1:A9", "A1>B$1", 1) + rule("B1", "$A1=1", 2),
                    rule("B1", "$a1 = 1", 70) + rule("A1:A9", "A1>B$1", 6)),
            "");
}

TEST(CompareRules, ComparesStylesByValueAndPrioritiesByTheirOrder) {
  EXPECT_EQ(compare(rule("A1:A9", "A1>1", 1, 0) + rule("B1", "$A1=1", 2, 1),
                    rule("A1:A9", "A1>1", 6, 2) + rule("B1", "$A1=1", 70, 1)),
            "");
  EXPECT_EQ(compare("", ""), "");
}

TEST(CompareRules, TellsWhatHasChanged) {
  std::string const before = rule("A1:A9", "A1>1", 1);
  EXPECT_EQ(compare(before, rule("A1:A8", "A1>1", 1)), "changed 0-0 ranges");
  EXPECT_EQ(compare(before, rule("A1:A9", "A1>1", 1, 1)), "changed 0-0 style");
  EXPECT_EQ(compare(before, rule("A1:A9", "A1>1", 1, 0, " stopIfTrue=\"1\"")), "changed 0-0 stop");
  EXPECT_EQ(compare(before, rule("A1:A9", "A1>2", 1)), "removed 0, added 0");
  EXPECT_EQ(compare(before, ""), "removed 0");
  EXPECT_EQ(compare("", before), "added 0");
}

TEST(CompareRules, ReadsFormulasRelativeToTheirRanges) {
  EXPECT_EQ(compare(rule("A1:A9", "A1>B1", 1), rule("A2:A9", "A2>B2", 1)), "changed 0-0 ranges");
  EXPECT_EQ(compare(rule("A1:A9", "A1>B1", 1), rule("A2:A9", "A1>B1", 1)), "removed 0, added 0");
}

TEST(CompareRules, TakesTheFewestRulesForMoved) {
  EXPECT_EQ(compare(rule("A1", "A1>1", 1) + rule("A2", "A2>2", 2) + rule("A3", "A3>3", 3),
                    rule("A1", "A1>1", 3) + rule("A2", "A2>2", 1) + rule("A3", "A3>3", 2)),
            "moved 0-0");
}

TEST(CompareRules, PrefersThePartnerWithTheSameRanges) {
  EXPECT_EQ(compare(rule("A1", "TRUE", 1) + rule("A2", "TRUE", 2),
                    rule("A2", "TRUE", 1, 1) + rule("A1", "TRUE", 2)),
            "moved 0-1, changed 1-0 style");
}

std::string scale(std::string const& ranges, std::string const& low, std::string const& colour) {
  return "<conditionalFormatting sqref='" + ranges +
         "'><cfRule type='colorScale' priority='1'><colorScale><cfvo " + low +
         "/><cfvo type='max'/><color rgb='" + colour +
         "'/><color rgb='FF00FF00'/></colorScale></cfRule></conditionalFormatting>";
}

std::string icons(std::string const& attributes, std::string const& second) {
  return "<conditionalFormatting sqref='A1:A9'><cfRule type='iconSet' priority='1'><iconSet " +
         attributes + "><cfvo type='percent' val='0'/><cfvo " + second +
         "/><cfvo type='percent' val='67'/></iconSet></cfRule></conditionalFormatting>";
}

std::string bar(std::string const& attributes, std::string const& colour) {
  return "<conditionalFormatting sqref='A1:A9'><cfRule type='dataBar' priority='1'><dataBar " +
         attributes + "><cfvo type='min'/><cfvo type='max'/><color rgb='" + colour +
         "'/></dataBar></cfRule></conditionalFormatting>";
}

TEST(CompareRules, TellsWhatHasChangedAboutAColourScale) {
  std::string const before = scale("A1:A9", "type='num' val='5'", "FFFF0000");
  EXPECT_EQ(compare(before, scale("A1:A9", "type='num' val='5.0'", "FFFF0000")), "");
  EXPECT_EQ(compare(before, scale("A1:A9", "type='num' val='6'", "FFFF0000")),
            "changed 0-0 thresholds");
  EXPECT_EQ(compare(before, scale("A1:A9", "type='percent' val='5'", "FFFF0000")),
            "changed 0-0 thresholds");
  EXPECT_EQ(compare(before, scale("A1:A9", "type='num' val='5'", "FFFF0001")),
            "changed 0-0 colours");
  EXPECT_EQ(compare(before, scale("A1:A8", "type='num' val='5'", "FFFF0000")),
            "changed 0-0 ranges");
}

TEST(CompareRules, TellsWhatHasChangedAboutAnIconSet) {
  std::string const before = icons("iconSet='3Flags'", "type='percent' val='33'");
  EXPECT_EQ(compare(before, icons("iconSet='3Signs'", "type='percent' val='33'")),
            "changed 0-0 icons");
  EXPECT_EQ(compare(before, icons("iconSet='3Flags' reverse='1'", "type='percent' val='33'")),
            "changed 0-0 icons");
  EXPECT_EQ(compare(before, icons("iconSet='3Flags' showValue='0'", "type='percent' val='33'")),
            "changed 0-0 drawing");
  EXPECT_EQ(compare(before, icons("iconSet='3Flags'", "type='percent' val='33' gte='0'")),
            "changed 0-0 thresholds");
}

TEST(CompareRules, TellsWhatHasChangedAboutADataBar) {
  std::string const before = bar("minLength='0'", "FFFF0000");
  EXPECT_EQ(compare(before, bar("minLength='5'", "FFFF0000")), "changed 0-0 drawing");
  EXPECT_EQ(compare(before, bar("minLength='0' showValue='0'", "FFFF0000")), "changed 0-0 drawing");
  EXPECT_EQ(compare(before, bar("minLength='0'", "FF0000FF")), "changed 0-0 colours");
  EXPECT_EQ(compare(before, scale("A1:A9", "type='min'", "FFFF0000")), "removed 0, added 0");
}

TEST(CompareRules, PrefersThePartnerThatDrawsTheSame) {
  EXPECT_EQ(compare(scale("A1", "type='num' val='1'", "FFFF0000") +
                        scale("A2", "type='num' val='2'", "FFFF0000"),
                    scale("B1", "type='num' val='2'", "FFFF0000") +
                        scale("B2", "type='num' val='1'", "FFFF0000")),
            "changed 0-1 ranges, changed 1-0 ranges");
}

}  // namespace
}  // namespace Zorv::Analysis
