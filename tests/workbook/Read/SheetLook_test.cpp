// What the loader reads about the look of sheets besides cells and styles.

#include <array>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/Evaluation.h"
#include "workbook/PrintNames.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using TestSupport::sheetData;
using TestSupport::WorkbookBuilder;

SheetLayout layoutOf(std::string const& before, std::string const& rows = "") {
  return WorkbookBuilder()
      .addSheet("Sheet1", before + sheetData(rows))
      .load()
      .getSheets()[0]
      .layout;
}

std::string paneView(std::string const& pane, std::string const& view = "") {
  return "<sheetViews><sheetView " + view + "><pane " + pane + "/></sheetView></sheetViews>";
}

TEST(Panes, FrozenOnesKeepTheFirstLinesInSight) {
  struct Case {
    std::string pane;
    std::string view;
    unsigned long rows;
    unsigned long columns;
  };
  for (Case const& test : std::initializer_list<Case>{
           {"xSplit='2' ySplit='3' state='frozen'", "", 3, 2},
           {"ySplit='1' topLeftCell='A9' state='frozenSplit'", "", 1, 0},
           {"xSplit='2' ySplit='3' state='frozen'", "topLeftCell='C11'", 13, 4},
           {"xSplit='2000' ySplit='3000' state='split'", "", 0, 0},
           {"xSplit='2000' ySplit='3000'", "", 0, 0},
           {"xSplit='-2' ySplit='x' state='frozen'", "", 0, 0},
           {"xSplit='1e300' ySplit='1e300' state='frozen'", "", 1'048'576, 16'384},
           {"ySplit='1' state='frozen'", "topLeftCell='nothing'", 1, 0},
       }) {
    SheetLayout const layout = layoutOf(paneView(test.pane, test.view));
    EXPECT_EQ(layout.frozenRows, test.rows) << test.pane << test.view;
    EXPECT_EQ(layout.frozenColumns, test.columns) << test.pane << test.view;
  }
}

TEST(SheetFormat, TellsTheLinesThatAreNotWritten) {
  SheetLayout const layout = layoutOf(
      "<sheetFormatPr baseColWidth='10' defaultRowHeight='12' customHeight='1' zeroHeight='1'/>",
      "<row r='3'/>");
  EXPECT_EQ(layout.baseColumnWidth, 10U);
  EXPECT_TRUE(layout.rowsAreFixed);
  EXPECT_TRUE(layout.hidesRows);
  ASSERT_THAT(layout.rows, SizeIs(1));
  EXPECT_EQ(layout.rows[0].row, 2U);
  EXPECT_EQ(layoutOf("<sheetFormatPr baseColWidth='256'/>").baseColumnWidth, 8U);
  EXPECT_THAT(layoutOf("<sheetFormatPr/>", "<row r='3'/>").rows, IsEmpty());
}

/// A sheet with one hyperlink that has a relationship to an address.
std::vector<Hyperlink> linksOf(std::string const& element, std::string const& address = "",
                               LoadOptions const& options = {}) {
  return std::move(
      WorkbookBuilder()
          .setSheet("", "<hyperlinks>" + element + "</hyperlinks>")
          .setPart("xl/worksheets/_rels/sheet1.xml.rels",
                   "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/"
                   "relationships'><Relationship Id='h' Type='x/hyperlink' TargetMode='External' "
                   "Target='" +
                       address + "'/></Relationships>")
          .load(options)
          .getSheets()[0]
          .hyperlinks);
}

TEST(Hyperlinks, HarmlessAddressesAndPlacesInTheWorkbookAreKept) {
  struct Case {
    std::string address;
    std::string location;
    std::string target;
  };
  for (Case const& test : std::initializer_list<Case>{
           {"http://example.org/a b", "", "http://example.org/a b"},
           {"HTTPS://example.org", "part", "HTTPS://example.org#part"},
           {"mailto:a@example.org", "", "mailto:a@example.org"},
           {"javascript:alert(1)", "", ""},
           {"file:///etc/passwd", "", ""},
           {"data:text/html,x", "Sheet1!A1", ""},
           {"other.xlsx", "", ""},
           {"//example.org", "", ""},
           {" http://example.org", "", ""},
           {"http://", "", ""},
           {"http://a&#10;b", "", ""},
           {"http://" + std::string(2'077, 'a'), "", ""},
           {"http://" + std::string(2'076, 'a'), "", "http://" + std::string(2'076, 'a')},
       }) {
    auto const links =
        linksOf("<hyperlink ref='B2' r:id='h' location='" + test.location + "'/>", test.address);
    ASSERT_THAT(links, SizeIs(test.target.empty() ? 0 : 1)) << test.address;
    if (!links.empty()) {
      EXPECT_EQ(links[0].target, test.target);
      EXPECT_EQ(links[0].range, (TableRange{1, 1, 2, 2}));
    }
  }
  auto const place = linksOf("<hyperlink ref='A1:B9' location=\"'My sheet'!C3\"/>");
  ASSERT_THAT(place, SizeIs(1));
  EXPECT_EQ(place[0].target, "#'My sheet'!C3");
  EXPECT_EQ(place[0].range, (TableRange{0, 0, 9, 2}));
}

TEST(Hyperlinks, ThoseWithoutARangeOrATargetAreLeftOut) {
  EXPECT_THAT(linksOf("<hyperlink ref='nowhere' location='A1'/>"), IsEmpty());
  EXPECT_THAT(linksOf("<hyperlink ref='A1'/>"), IsEmpty());
  EXPECT_THAT(linksOf("<hyperlink ref='A1' r:id='none'/>"), IsEmpty());
}

TEST(Hyperlinks, BeyondTheLimitAreLeftOutAndTold) {
  LoadOptions options;
  options.limits.hyperlinks = 2;
  auto const document =
      WorkbookBuilder()
          .setSheet("",
                    "<hyperlinks><hyperlink ref='A1' location='B1'/>"
                    "<hyperlink ref='A2' location='B1'/><hyperlink ref='A3' location='B1'/>"
                    "<hyperlink ref='A4' location='B1'/></hyperlinks>")
          .load(options);
  EXPECT_THAT(document.getSheets()[0].hyperlinks, SizeIs(2));
  ASSERT_THAT(document.getFindings(), SizeIs(1));
  EXPECT_EQ(document.getFindings()[0].message,
            "the workbook has more than 2 hyperlinks, which is the limit; later ones are left out");
}

constexpr char const* boldRun =
    "<r><t xml:space='preserve'>plain </t></r><r><rPr><b/><rFont val='Arial'/><sz val='9'/>"
    "<color rgb='FFFF0000'/></rPr><t>bold</t></r>";

Sheet sheetOf(WorkbookBuilder const& builder, LoadOptions const& options = {}) {
  return std::move(builder.load(options).getSheets()[0]);
}

TEST(RichTexts, OfSharedAndInlineStringsHaveTheirRuns) {
  Sheet const sheet = sheetOf(
      WorkbookBuilder()
          .setSharedStrings("<si><t>plain</t></si><si>" + std::string(boldRun) + "</si>")
          .setSheet("<row r='1'><c r='A1' t='s'><v>0</v></c><c r='B1' t='s'><v>1</v></c>"
                    "<c r='C1' t='s'><v>1</v></c></row><row r='2'><c r='A2' t='inlineStr'><is>" +
                    std::string(boldRun) + "</is></c></row>"));
  ASSERT_THAT(sheet.richCells, SizeIs(3));
  EXPECT_EQ(sheet.richCells[0].column, 1U);
  EXPECT_EQ(sheet.richCells[0].text, sheet.richCells[1].text);
  EXPECT_EQ(sheet.richCells[2].row, 1U);
  for (RichCell const& cell : sheet.richCells) {
    ASSERT_THAT(*cell.text, SizeIs(2));
    EXPECT_EQ(cell.text->at(0).begin, 0U);
    EXPECT_EQ(cell.text->at(0).props, DOM::RunProps());
    EXPECT_EQ(cell.text->at(1).begin, 6U);
    EXPECT_EQ(
        cell.text->at(1).props,
        (DOM::RunProps{
            .fontName = "Arial", .fontSize = 9.0, .colour = DOM::Colour{255, 0, 0}, .bold = true}));
  }
}

TEST(RichTexts, TextBeforeTheFirstRunIsARun) {
  Sheet const sheet = sheetOf(WorkbookBuilder().setSheet(
      "<row r='1'><c r='A1' t='inlineStr'><is><t>ab</t><r><rPr><b/></rPr><t>c</t></r></is></c>"
      "</row>"));
  ASSERT_THAT(sheet.richCells, SizeIs(1));
  ASSERT_THAT(*sheet.richCells[0].text, SizeIs(2));
  EXPECT_EQ(sheet.richCells[0].text->at(1).begin, 2U);
}

TEST(RichTexts, RunsWithoutPropertiesArePlain) {
  Sheet const sheet = sheetOf(WorkbookBuilder().setSheet(
      "<row r='1'><c r='A1' "
      "t='inlineStr'><is><r><t>a</t></r><r><rPr/><t>b</t></r></is></c></row>"));
  EXPECT_THAT(sheet.richCells, IsEmpty());
}

TEST(RichTexts, OfARepeatedCellTheLastOneCounts) {
  std::string const rich = "<c r='A1' t='inlineStr'><is>" + std::string(boldRun) + "</is></c>";
  std::string const plain = "<c r='A1' t='str'><v>a</v></c>";
  EXPECT_THAT(
      sheetOf(WorkbookBuilder().setSheet("<row r='1'>" + rich + plain + "</row>")).richCells,
      IsEmpty());
  EXPECT_THAT(
      sheetOf(WorkbookBuilder().setSheet("<row r='1'>" + plain + rich + rich + "</row>")).richCells,
      SizeIs(1));
}

TEST(RichTexts, CellsOutOfOrderAreOrdered) {
  std::string const runs = "<is>" + std::string(boldRun) + "</is></c>";
  Sheet const sheet = sheetOf(WorkbookBuilder().setSheet(
      "<row r='2'><c r='B2' t='inlineStr'>" + runs + "<c r='A2' t='inlineStr'>" + runs +
      "</row><row r='1'><c r='C1' t='inlineStr'>" + runs + "</row>"));
  ASSERT_THAT(sheet.richCells, SizeIs(3));
  EXPECT_EQ(sheet.richCells[0].row, 0U);
  EXPECT_EQ(sheet.richCells[1].column, 0U);
  EXPECT_EQ(sheet.richCells[2].column, 1U);
}

TEST(RichTexts, BeyondTheLimitOfRunsArePlainAndTold) {
  LoadOptions options;
  options.limits.textRuns = 3;
  auto const document =
      WorkbookBuilder()
          .setSharedStrings("<si>" + std::string(boldRun) + "</si><si>" + boldRun + "</si><si>" +
                            boldRun + "</si>")
          .setSheet(
              "<row r='1'><c r='A1' t='s'><v>0</v></c><c r='B1' t='s'><v>1</v></c>"
              "<c r='C1' t='s'><v>2</v></c></row>")
          .load(options);
  EXPECT_THAT(document.getSheets()[0].richCells, SizeIs(1));
  ASSERT_THAT(document.getFindings(), SizeIs(1));
  EXPECT_EQ(document.getFindings()[0].part, "xl/sharedStrings.xml");
  EXPECT_EQ(TestSupport::describeCell(document, "C1"), "text plain bold");
}

TEST(PageLayouts, AreReadFromTheirElements) {
  PageLayout const page =
      sheetOf(WorkbookBuilder().addSheet(
                  "Sheet1",
                  "<sheetPr><pageSetUpPr fitToPage='1'/></sheetPr>" + sheetData("") +
                      "<printOptions verticalCentered='1' headings='1'/>"
                      "<pageMargins left='0.1' right='0.2' top='0.3' bottom='0.4'/>"
                      "<pageSetup paperSize='9' scale='75' fitToWidth='2' fitToHeight='0' "
                      "pageOrder='overThenDown' orientation='landscape'/>"
                      "<rowBreaks><brk id='7'/><brk id='3'/><brk id='7'/><brk id='0'/></rowBreaks>"
                      "<colBreaks><brk id='2'/></colBreaks>"))
          .page;
  EXPECT_EQ(page.paperSize, 9U);
  EXPECT_TRUE(page.isLandscape);
  EXPECT_EQ(page.left, 0.1);
  EXPECT_EQ(page.right, 0.2);
  EXPECT_EQ(page.top, 0.3);
  EXPECT_EQ(page.bottom, 0.4);
  EXPECT_EQ(page.scale, 75U);
  EXPECT_TRUE(page.fitsPages);
  EXPECT_EQ(page.fitWidth, 2U);
  EXPECT_EQ(page.fitHeight, 0U);
  EXPECT_TRUE(page.goesAcrossFirst);
  EXPECT_THAT(page.rowBreaks, ElementsAre(3U, 7U));
  EXPECT_THAT(page.columnBreaks, ElementsAre(2U));
  EXPECT_FALSE(page.isCentredAcross);
  EXPECT_TRUE(page.isCentredDown);
  EXPECT_FALSE(page.printsGridLines);
  EXPECT_TRUE(page.printsHeadings);
}

TEST(PageLayouts, ValuesOfNoPaperAreLeftAsTheyAre) {
  PageLayout const page =
      sheetOf(WorkbookBuilder().setSheet(
                  "",
                  "<pageMargins left='-1' right='1e9' top='x'/>"
                  "<pageSetup paperSize='0' scale='5' fitToWidth='-1' fitToHeight='99999'/>"))
          .page;
  EXPECT_EQ(page.paperSize, 1U);
  EXPECT_EQ(page.left, 0.7);
  EXPECT_EQ(page.right, 0.7);
  EXPECT_EQ(page.top, 0.75);
  EXPECT_EQ(page.scale, 100U);
  EXPECT_EQ(page.fitWidth, 1U);
  EXPECT_EQ(page.fitHeight, 1U);
}

TEST(PageLayouts, HeadersAndFootersAreReadForEachKindOfPage) {
  PageLayout const page =
      sheetOf(WorkbookBuilder().setSheet(
                  "",
                  "<customSheetViews><customSheetView><headerFooter><oddHeader>other</oddHeader>"
                  "<oddFooter>other</oddFooter></headerFooter></customSheetView>"
                  "</customSheetViews>"
                  "<pageMargins left='1' header='0.5' footer='0.25'/>"
                  "<pageSetup firstPageNumber='7' useFirstPageNumber='1'/>"
                  "<headerFooter differentFirst='1'><oddHeader>&amp;L&amp;A_x000A_x</oddHeader>"
                  "<evenHeader>even</evenHeader><firstFooter>first</firstFooter></headerFooter>"))
          .page;
  EXPECT_EQ(page.texts.header, "&L&A\nx");
  EXPECT_EQ(page.texts.footer, "");
  ASSERT_TRUE(page.textsOfFirstPage);
  EXPECT_EQ(page.textsOfFirstPage->header, "");
  EXPECT_EQ(page.textsOfFirstPage->footer, "first");
  EXPECT_FALSE(page.textsOfEvenPages);
  EXPECT_EQ(page.headerDistance, 0.5);
  EXPECT_EQ(page.footerDistance, 0.25);
  EXPECT_EQ(page.firstPageNumber, 7);
}

TEST(PageLayouts, HaveNoMoreBreaksThanProgramsAllow) {
  std::string breaks;
  for (int i = 1; i <= 2'000; ++i) {
    breaks += "<brk id='" + std::to_string(i) + "'/>";
  }
  EXPECT_THAT(sheetOf(WorkbookBuilder().setSheet("", "<rowBreaks>" + breaks + "</rowBreaks>"))
                  .page.rowBreaks,
              SizeIs(1'026));
}

Document documentWithName(std::string const& name, std::string const& formula) {
  return WorkbookBuilder()
      .setWorkbook("", "<definedNames><definedName name='" + name + "' localSheetId='0'>" +
                           formula + "</definedName></definedNames>")
      .setSheet("")
      .load();
}

TEST(PrintNames, AreasAreTheRangesOfTheName) {
  auto const areasOf = [](std::string const& formula) {
    return findPrintAreas(documentWithName("_xlnm.Print_Area", formula), 0);
  };
  EXPECT_THAT(areasOf("Sheet1!$A$1:$B$2"), ElementsAre(TableRange{0, 0, 2, 2}));
  EXPECT_THAT(areasOf("'a,b!'!$A$1,'it''s'!$C$3:$D$4"),
              ElementsAre(TableRange{0, 0, 1, 1}, TableRange{2, 2, 4, 4}));
  EXPECT_THAT(areasOf("#REF!"), IsEmpty());
  EXPECT_THAT(areasOf("OFFSET(A1,0,0,2,2)"), IsEmpty());
  EXPECT_THAT(areasOf(""), IsEmpty());
  EXPECT_THAT(findPrintAreas(documentWithName("other", "Sheet1!$A$1"), 0), IsEmpty());
}

TEST(PrintNames, TitlesAreWholeRowsAndWholeColumns) {
  auto const titles =
      findPrintTitles(documentWithName("_xlnm.Print_Titles", "Sheet1!$A:$B,Sheet1!$2:$3"), 0);
  EXPECT_EQ(titles.rows, (TableRange{1, 0, 3, 16'384}));
  EXPECT_EQ(titles.columns, (TableRange{0, 0, 1'048'576, 2}));
  auto const rows = findPrintTitles(documentWithName("_xlnm.Print_Titles", "Sheet1!$1:$1"), 0);
  EXPECT_TRUE(rows.rows);
  EXPECT_FALSE(rows.columns);
}

}  // namespace
}  // namespace Zorv::Workbook
