#include "workbook/Recalculation/Doubts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::WorkbookBuilder;

std::string expression(std::string const& formula) {
  return "<cfRule type='expression'><formula>" + formula + "</formula></cfRule>";
}

TEST(Doubts, NameWhatTheFormulasOfARuleReferToInVain) {
  Document const document =
      WorkbookBuilder()
          .setWorkbook("",
                       "<definedNames><definedName name='Known'>Lost+1</definedName>"
                       "</definedNames>")
          .setRules("A1", expression("A1=Rate") + expression("Old!A1=1") +
                              expression("[1]Data!A1=1") + expression("FOO(1)") +
                              expression("Known") + expression("Sheet1!B1") +
                              "<cfRule type='cellIs' operator='between'><formula>Rate</formula>"
                              "<formula>BAR()+Rate</formula></cfRule>"
                              "<cfRule type='containsText'><formula>NOT(ISERROR(SEARCH(Rate,A1)))"
                              "</formula></cfRule><cfRule type='uniqueValues'/>")
          .load();
  auto const& rules = document.getRules();
  EXPECT_THAT(rules.at(0).doubts, ElementsAre("refers to the unknown name \"Rate\""));
  EXPECT_THAT(rules.at(1).doubts, ElementsAre("refers to the missing sheet \"Old\""));
  EXPECT_THAT(rules.at(2).doubts, ElementsAre("refers to another workbook, [1]"));
  EXPECT_THAT(rules.at(3).doubts, ElementsAre("calls the unknown function FOO"));
  EXPECT_THAT(rules.at(4).doubts, ElementsAre("refers to the unknown name \"Lost\""));
  EXPECT_THAT(rules.at(5).doubts, IsEmpty());
  EXPECT_THAT(rules.at(6).doubts,
              ElementsAre("refers to the unknown name \"Rate\"", "calls the unknown function BAR"));
  EXPECT_THAT(rules.at(7).doubts, ElementsAre("refers to the unknown name \"Rate\""));
  EXPECT_THAT(rules.at(8).doubts, IsEmpty());
}

TEST(Doubts, ARangeOfSheetsNeedsBothOfThem) {
  Document const document =
      WorkbookBuilder()
          .addSheet("First", "<conditionalFormatting sqref='A1'>" +
                                 expression("SUM(First:Second!A1)=3") +
                                 expression("SUM(First:Third!A1)=3") + "</conditionalFormatting>")
          .addSheet("Second", "<sheetData><row><c><v>3</v></c></row></sheetData>")
          .load();
  EXPECT_THAT(document.getRules().at(0).doubts, IsEmpty());
  EXPECT_TRUE(TestSupport::holds(document, 0, "A1"));
  EXPECT_THAT(document.getRules().at(1).doubts,
              ElementsAre("refers to the sheets \"First:Third\", of which one is missing"));
}

TEST(Doubts, ThresholdsAndConditionsOfVisualRulesAreLookedAt) {
  Document const document =
      WorkbookBuilder()
          .setRules("A1",
                    "<cfRule type='dataBar'><dataBar><cfvo type='num' val='Rate'/>"
                    "<cfvo type='formula' val='FOO(1)'/></dataBar></cfRule>")
          .load();
  auto const& rule = document.getRules().at(0);
  EXPECT_THAT(rule.doubts,
              ElementsAre("refers to the unknown name \"Rate\"", "calls the unknown function FOO"));
  EXPECT_THAT(rule.unknownFunctions, ElementsAre("FOO"));
}

TEST(Doubts, AFunctionThatTheDocumentDefinesIsNotUnknown) {
  Document const document =
      WorkbookBuilder()
          .setWorkbook("",
                       "<definedNames><definedName name='TWICE'>LAMBDA(x,2*x)</definedName>"
                       "</definedNames>")
          .setRules("A1", expression("TWICE(1)=2") + expression("TWICE(FOO(1))=BAR()"))
          .load();
  auto const& rules = document.getRules();
  EXPECT_THAT(rules.at(0).unknownFunctions, IsEmpty());
  EXPECT_THAT(rules.at(0).doubts, IsEmpty());
  EXPECT_TRUE(TestSupport::holds(document, 0, "A1"));
  EXPECT_THAT(rules.at(1).unknownFunctions, ElementsAre("BAR", "FOO"));
}

TEST(Doubts, AreToldOfCellsWithoutResultsAndOfThoseThatDependOnTheClock) {
  Document const document = WorkbookBuilder()
                                .setSheet(
                                    "<row><c><f>Rate*2</f></c><c><f>Old!A1</f></c>"
                                    "<c><f>TODAY()+Rate</f><v>5</v></c></row>")
                                .load();
  EXPECT_EQ(TestSupport::describeCell(document, "A1"), "error #NAME?");
  EXPECT_EQ(TestSupport::describeCell(document, "C1"), "number 5");
  std::vector<std::string> messages;
  for (Finding const& finding : document.getFindings()) {
    messages.push_back(finding.range + ": " + finding.message);
  }
  EXPECT_THAT(messages,
              ElementsAre("A1: 2 cells, this one first, have no result and a formula that refers "
                          "to the missing sheet \"Old\", refers to the unknown name \"Rate\"",
                          "C1: the cell depends on the current date or time, but keeps the result "
                          "of the file: the formula refers to the unknown name \"Rate\""));
}

TEST(Doubts, ThereAreNoneAboutCellsThatTheFileKeepsOfAnotherWorkbook) {
  Document const document =
      WorkbookBuilder()
          .setWorkbook("",
                       "<externalReferences><externalReference r:id='rId1'/></externalReferences>")
          .addRelationship("externalLink", "externalLinks/externalLink1.xml")
          .setPart("xl/externalLinks/externalLink1.xml",
                   "<externalLink><externalBook><sheetNames><sheetName val='Data'/></sheetNames>"
                   "<sheetDataSet><sheetData sheetId='0'><row r='1'><cell r='A1'><v>7</v></cell>"
                   "</row></sheetData></sheetDataSet></externalBook></externalLink>")
          .setRules("A1", expression("[1]Data!$A$1=7") + expression("'[1]Data'!$A$1=8") +
                              expression("[1]Other!$A$1=7"))
          .load();
  EXPECT_THAT(document.getRules().at(0).doubts, IsEmpty());
  EXPECT_TRUE(TestSupport::holds(document, 0, "A1"));
  EXPECT_FALSE(TestSupport::holds(document, 1, "A1"));
  EXPECT_THAT(document.getRules().at(2).doubts, ElementsAre("refers to another workbook, [1]"));
}

}  // namespace
}  // namespace Zorv::Workbook
