#include "workbook/Read/WorkbookReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/DocumentContextProvider.h"
#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using TestSupport::describeCell;
using TestSupport::sheetData;
using TestSupport::WorkbookBuilder;

/// A workbook part with these `sheet` elements and what follows them.
std::string workbookPart(std::string const& sheets, std::string const& after = "") {
  return "<workbook xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'>"
         "<sheets>" +
         sheets + "</sheets>" + after + "</workbook>";
}

WorkbookBuilder oneNumber() {
  return WorkbookBuilder().setSheet("<row r='1'><c r='A1'><v>1</v></c></row>");
}

TEST(WorkbookReader, ASheetWithoutAPartKeepsItsPlaceForLocalNames) {
  Document const document =
      oneNumber()
          .setPart("xl/workbook.xml",
                   workbookPart("<sheet name='Module1' state='veryHidden' r:id=''/>"
                                "<sheet name='Sheet1' r:id='sheet1'/>",
                                "<definedNames><definedName name='Rate' localSheetId='1'>7"
                                "</definedName></definedNames>"))
          .load();
  ASSERT_EQ(document.getSheets().size(), 2U);
  EXPECT_FALSE(document.getSheets()[0].isWorksheet);
  EXPECT_TRUE(document.getSheets()[0].hidden);
  EXPECT_EQ(describeCell(document, "A1", 1), "number 1");
  EXPECT_EQ(document.getDefinedNames().at(0).sheet, 1U);
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].sheet, "Module1");
  EXPECT_EQ(document.getFindings()[0].message,
            "the sheet has no part in the file, as old module sheets have none; it is left out");
}

TEST(WorkbookReader, AWorkbookOfSheetsWithoutPartsIsRefused) {
  EXPECT_EQ(oneNumber()
                .setPart("xl/workbook.xml", workbookPart("<sheet name='Module1' r:id=''/>"))
                .loadMessage(),
            "xl/workbook.xml: sheets: the workbook has no sheet; the file is damaged");
}

TEST(WorkbookReader, SheetsOfOtherKindsAreTold) {
  Document const document =
      oneNumber()
          .addRelationship("xlMacrosheet", "macrosheets/sheet1.xml")
          .setPart("xl/macrosheets/sheet1.xml", "<macrosheet/>")
          .setPart("xl/workbook.xml", workbookPart("<sheet name='Macro1' r:id='rId1'/>"
                                                   "<sheet name='Sheet1' r:id='sheet1'/>"))
          .load();
  EXPECT_FALSE(document.getSheets()[0].isWorksheet);
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].message,
            "the sheet is no worksheet but of the kind \"xlMacrosheet\"; its cells and conditional "
            "formats are not read");
}

TEST(WorkbookReader, SheetsWhoseNamesDifferInLetterCaseAreTold) {
  Document const document = WorkbookBuilder()
                                .addSheet("Data", sheetData("<row><c><v>1</v></c></row>"))
                                .addSheet("DATA", sheetData("<row><c><v>2</v></c></row>"))
                                .load();
  DocumentContextProvider const provider(document, "en-US", DOM::TimeZone());
  EXPECT_EQ(provider.findTableContext("DATA")->getDocTableIndex().get(), 0U);
  EXPECT_EQ(describeCell(document, "A1", 1), "number 2");
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].sheet, "DATA");
}

TEST(WorkbookReader, APartIsReadForOneSheetOnly) {
  Document const document =
      oneNumber()
          .setPart("xl/workbook.xml", workbookPart("<sheet name='A' r:id='sheet1'/>"
                                                   "<sheet name='B' r:id='sheet1'/>"))
          .load();
  EXPECT_EQ(describeCell(document, "A1", 0), "number 1");
  EXPECT_EQ(document.getSheets()[1].table->getCellCount(), 0U);
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].sheet, "B");
}

TEST(WorkbookReader, ABrokenThemeGivesTheUsualColours) {
  Document const document =
      WorkbookBuilder()
          .addRelationship("theme", "theme.xml")
          .setPart("xl/theme.xml", "<theme><a>")
          .setStyles("<dxfs><dxf><font><color theme='4'/></font></dxf></dxfs>")
          .setRules("A1", "<cfRule type='uniqueValues' dxfId='0'/>")
          .load();
  EXPECT_EQ(TestSupport::styleOf(document, 0).getRunProps()->colour,
            (DOM::Colour{0x4F, 0x81, 0xBD, 255}));
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].part, "xl/theme.xml");
  EXPECT_THAT(
      document.getFindings()[0].message,
      testing::StartsWith("the theme cannot be read, and its colours are the usual ones: "));
}

TEST(WorkbookReader, RootsOfAnotherNamespaceAreToldApart) {
  char const* const problem =
      "belongs to a namespace that no workbook uses for it; save the workbook anew with a "
      "spreadsheet program and try again";
  EXPECT_THAT(
      oneNumber().setPart("xl/worksheets/sheet1.xml", "<worksheet xmlns='x'/>").loadMessage(),
      testing::EndsWith(std::string("the root element \"worksheet\" ") + problem));
  EXPECT_THAT(oneNumber().setPart("xl/workbook.xml", "<workbook xmlns='x'/>").loadMessage(),
              testing::EndsWith(std::string("the root element \"workbook\" ") + problem));
}

}  // namespace
}  // namespace Zorv::Workbook
