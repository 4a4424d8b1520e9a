#include "workbook/DocumentContextProvider.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include "Formulas/ParseExpr.h"
#include "workbook/DocumentValueProvider.h"
#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using FormulaModel::DocTableIndex;
using TestSupport::sheetData;
using TestSupport::WorkbookBuilder;

class DocumentContextProviderTest : public testing::Test {
protected:
  Document document =
      WorkbookBuilder()
          .setWorkbook("<workbookPr date1904='true'/>",
                       "<definedNames><definedName name='Rate'>1</definedName>"
                       "<definedName name='rate' localSheetId='1'>2</definedName>"
                       "<definedName name='Other' localSheetId='0'>3</definedName></definedNames>")
          .addSheet("First", sheetData("<row r='1'><c r='A1'><v>5</v></c></row>") +
                                 "<tableParts><tablePart r:id='t1'/></tableParts>")
          .addSheet("\xC3\x84nderung", sheetData(""))
          .setPart("xl/worksheets/_rels/sheet1.xml.rels",
                   "<Relationships><Relationship Id='t1' Type='x/table' "
                   "Target='../tables/t.xml'/></Relationships>")
          .setPart("xl/tables/t.xml",
                   "<table name='t' displayName='Sales' ref='B2:C9' totalsRowCount='1'>"
                   "<tableColumns><tableColumn name='Month'/><tableColumn name='A_x000a_B'/>"
                   "</tableColumns></table>")
          .load();
  DocumentContextProvider provider{document, "de-DE", DOM::TimeZone("Europe/Berlin")};
};

TEST_F(DocumentContextProviderTest, LocaleCombinesTheCallersWithTheFilesDateSystem) {
  EXPECT_EQ(provider.getLocaleContext().getDateSystem(), OfficeUtils::DateSystem::Since1904);
  EXPECT_EQ(provider.getLocaleContext().getDecimalSeparator(), ",");
  EXPECT_EQ(provider.getTimeZone().getName(), "Europe/Berlin");
}

TEST_F(DocumentContextProviderTest, TablesAreFoundByObjectAndByNameWithoutRegardToCase) {
  auto const* first = provider.getTableContext(*document.getSheets()[0].table);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->getDocTableIndex(), DocTableIndex(0));
  EXPECT_EQ(first->getSheetName(), "First");
  EXPECT_EQ(&first->getTable(), document.getSheets()[0].table.get());
  EXPECT_EQ(provider.findTableContext("FIRST"), first);
  EXPECT_EQ(provider.findTableContext("\xC3\xA4NDERUNG"),
            provider.getTableContext(*document.getSheets()[1].table));
  EXPECT_EQ(provider.findTableContext("Third"), nullptr);
  EXPECT_EQ(provider.getTableCount(), 2U);
}

TEST_F(DocumentContextProviderTest, TablesAreFoundByTheirPlaceInTheDocument) {
  EXPECT_EQ(provider.findTableContextAt(DocTableIndex(0)), provider.findTableContext("First"));
  EXPECT_EQ(provider.findTableContextAt(DocTableIndex(1)),
            provider.findTableContext("\xC3\x84nderung"));
  EXPECT_EQ(provider.findTableContextAt(DocTableIndex(2)), nullptr);
}

TEST_F(DocumentContextProviderTest, ATableOfAnotherDocumentIsRefused) {
  DOM::Table const foreign;
  EXPECT_THROW(static_cast<void>(provider.getTableContext(foreign)), BaseRuntimeError);
}

TEST_F(DocumentContextProviderTest, NamesOfASheetComeBeforeThoseOfTheDocument) {
  EXPECT_EQ(*provider.findDefinedName("RATE", DocTableIndex(0)), Formulas::parseExpr("1"));
  EXPECT_EQ(*provider.findDefinedName("Rate", DocTableIndex(1)), Formulas::parseExpr("2"));
  EXPECT_TRUE(provider.findDefinedName("other", DocTableIndex(0)));
  EXPECT_EQ(provider.findDefinedName("other", DocTableIndex(1)), nullptr);
  EXPECT_EQ(provider.findDefinedName("rate", DocTableIndex(99)),
            provider.findDefinedName("rate", DocTableIndex(0)));
}

TEST_F(DocumentContextProviderTest, ListObjectsAreFoundByNameAndByPlace) {
  auto const* sales = provider.findListObject("SALES");
  ASSERT_TRUE(sales);
  EXPECT_EQ(sales->name, "Sales");
  EXPECT_EQ(sales->table, DocTableIndex(0));
  EXPECT_EQ(sales->range, (TableRange{1, 1, 9, 3}));
  EXPECT_EQ(sales->headerRowCount, 1U);
  EXPECT_EQ(sales->totalsRowCount, 1U);
  EXPECT_THAT(sales->columnNames, testing::ElementsAre("Month", "A\nB"));
  EXPECT_EQ(provider.findListObjectAt(DocTableIndex(0), 8, 2), sales);
  EXPECT_EQ(provider.findListObjectAt(DocTableIndex(0), 9, 2), nullptr);
  EXPECT_EQ(provider.findListObjectAt(DocTableIndex(1), 8, 2), nullptr);
  EXPECT_EQ(provider.findListObject("t"), nullptr);
}

TEST_F(DocumentContextProviderTest, UnknownLocalesAreRefused) {
  EXPECT_THROW(DocumentContextProvider(document, "no such locale", DOM::TimeZone()),
               BaseRuntimeError);
}

TEST_F(DocumentContextProviderTest, TheValueProviderGivesTheCellsValues) {
  DocumentValueProvider const values(document, "de-DE", DOM::TimeZone("Europe/Berlin"));
  DOM::Table const& table = *document.getSheets()[0].table;
  FormulaValue const five = values.getCellValue(table.getCellInfo(0, 0));
  EXPECT_EQ(boost::get<FormulaModel::FormulaNumber>(five).value.get(), 5);
  EXPECT_EQ(values.getCellValue(table.getCellInfo(7, 7)).which(), FormulaModel::Empty);
  EXPECT_EQ(values.getTimeZone().getName(), "Europe/Berlin");
  EXPECT_EQ(values.getFormulasContextProvider().getLocaleContext().getDecimalSeparator(), ",");
}

TEST(ListObjects, ATableThatCannotBeReadIsLeftOutAndReported) {
  auto const builder = [](char const* relationships) {
    return WorkbookBuilder()
        .setSheet("", "<tableParts><tablePart r:id='t1'/></tableParts>")
        .setPart("xl/worksheets/_rels/sheet1.xml.rels", relationships)
        .setPart("xl/t.xml", "<table displayName='Sales' ref='#REF!'/>");
  };
  Document const document = builder(
                                "<Relationships><Relationship Id='t1' Type='x/table' "
                                "Target='/xl/t.xml'/></Relationships>")
                                .load();
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].message,
            "the table \"Sales\" has no range of the sheet; it is left out");
  Document const unrelated = builder("<Relationships/>").load();
  ASSERT_EQ(unrelated.getFindings().size(), 1U);
  EXPECT_EQ(unrelated.getFindings()[0].message,
            "a table is left out: it refers to the relationship \"t1\", which the sheet does not "
            "have");
  Document const broken = builder(
                              "<Relationships><Relationship Id='t1' Type='x/table' "
                              "Target='/xl/t.xml'/></Relationships>")
                              .setPart("xl/t.xml", "<table>")
                              .load();
  ASSERT_EQ(broken.getFindings().size(), 1U);
  EXPECT_EQ(broken.getFindings()[0].part, "xl/t.xml");
  EXPECT_EQ(broken.getFindings()[0].message,
            "the table cannot be read and is left out: the XML ends before it is complete; the "
            "file is cut off or damaged");
}

TEST(ListObjects, MoreColumnsThanTheLimitAreNotRead) {
  LoadOptions options;
  options.limits.tableColumns = 10;
  Document const document =
      WorkbookBuilder()
          .setSheet("", "<tableParts><tablePart r:id='t1'/></tableParts>")
          .setPart("xl/worksheets/_rels/sheet1.xml.rels",
                   "<Relationships><Relationship Id='t1' Type='x/table' Target='/xl/t.xml'/>"
                   "</Relationships>")
          .setPart("xl/t.xml", "<table displayName='Wide' ref='A1:XFD2'/>")
          .load(options);
  EXPECT_TRUE(document.getListObjects().empty());
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].message,
            "the table cannot be read and is left out: the tables of the workbook have more than "
            "10 columns, which is the limit");
}

}  // namespace
}  // namespace Zorv::Workbook
