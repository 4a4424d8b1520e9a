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

}  // namespace
}  // namespace Zorv::Analysis
