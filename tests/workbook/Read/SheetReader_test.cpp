#include "workbook/Read/SheetReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using TestSupport::sheetData;
using TestSupport::WorkbookBuilder;

constexpr char const* unique = "<cfRule type='uniqueValues' priority='1'/>";

std::vector<std::string> messagesOf(Document const& document) {
  std::vector<std::string> messages;
  for (Finding const& finding : document.getFindings()) {
    messages.push_back(finding.message);
  }
  return messages;
}

TEST(SheetReader, RulesThatAreNotToBeCalculatedAreResolvedAndTold) {
  std::string const properties = "<sheetPr enableFormatConditionsCalculation='0'/>";
  Document const document =
      WorkbookBuilder()
          .addSheet("With", properties + sheetData("") + "<conditionalFormatting sqref='A1'>" +
                                unique + "</conditionalFormatting>")
          .addSheet("Without", properties + sheetData(""))
          .load();
  EXPECT_TRUE(document.getRules().at(0).format);
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].sheet, "With");
  EXPECT_THAT(document.getFindings()[0].message,
              testing::StartsWith("the sheet asks not to calculate its conditional formats"));
}

TEST(SheetReader, RulesInUnknownNamespacesAreLeftOutAndTold) {
  Document const document =
      WorkbookBuilder()
          .setSheet("", "<conditionalFormatting sqref='A1'>" + std::string(unique) +
                            "<z:cfRule xmlns:z='z' type='uniqueValues'/></conditionalFormatting>"
                            "<z:conditionalFormatting xmlns:z='z'><cfRule type='uniqueValues'/>"
                            "</z:conditionalFormatting><z:other xmlns:z='z'>"
                            "<conditionalFormatting sqref='B1'><cfRule type='dataBar'/>"
                            "</conditionalFormatting></z:other>")
          .load();
  EXPECT_EQ(document.getRules().size(), 1U);
  EXPECT_THAT(
      messagesOf(document),
      testing::ElementsAre("a rule of a namespace that does not belong here is left out",
                           "conditional formats in a namespace that is not known are left out"));
}

TEST(SheetReader, AlternateContentGivesTheRulesOfTheChoiceThatIsUnderstood) {
  std::string const begin =
      "<mc:AlternateContent xmlns:mc='http://schemas.openxmlformats.org/markup-compatibility/2006' "
      "xmlns:z='z' xmlns:n='http://schemas.microsoft.com/office/spreadsheetml/2009/9/main'>";
  std::string const rules =
      "<conditionalFormatting sqref='A1'>" + std::string(unique) + "</conditionalFormatting>";
  auto const count = [&](std::string const& required) {
    return WorkbookBuilder()
        .setSheet("", begin + "<mc:Choice Requires='" + required + "'>" + rules +
                          "</mc:Choice><mc:Fallback>" + rules + rules +
                          "</mc:Fallback></mc:AlternateContent>")
        .load()
        .getRules()
        .size();
  };
  EXPECT_EQ(count("n"), 1U);
  EXPECT_EQ(count("z"), 2U);
}

TEST(SheetReader, AttributesOfImpossibleValuesAreTold) {
  Document const document =
      WorkbookBuilder()
          .setRules("A1",
                    "<cfRule type='uniqueValues' priority='1.5'/>"
                    "<cfRule type='top10' priority='1' percent='maybe'/>"
                    "<cfRule type='aboveAverage' priority='2' aboveAverage='2' stdDev='x'/>")
          .load();
  EXPECT_THAT(
      messagesOf(document),
      testing::ElementsAre(
          "rule 0 has the priority \"1.5\", which is no whole number; it counts as a rule without "
          "a priority, and these come last",
          "rule 1 has percent=\"maybe\", which is neither true nor false; it counts as false",
          "rule 2 has aboveAverage=\"2\", which is neither true nor false; it counts as true",
          "rule 2 has stdDev=\"x\", which is no whole number; it counts as 0"));
  EXPECT_EQ(document.getFindings()[0].range, "A1");
}

TEST(SheetReader, AFormulaThatACommentDividesIsOneText) {
  Document const document =
      WorkbookBuilder()
          .setRules("A1",
                    "<cfRule type='expression'><formula>1+<!-- one -->2<![CDATA[<4]]></formula>"
                    "</cfRule>")
          .load();
  EXPECT_THAT(document.getRules().at(0).formulas, testing::ElementsAre("1+2<4"));
}

}  // namespace
}  // namespace Zorv::Workbook
