#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DOM/A1Notation.h"
#include "workbook/OwnStyle.h"
#include "workbook/TableLooks.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using DOM::Colour;
using DOM::LineStyle;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using TestSupport::sheetData;
using TestSupport::WorkbookBuilder;

// Of a workbook without a theme.
constexpr Colour accent1{0x4F, 0x81, 0xBD};
constexpr Colour tableWhite{0xFF, 0xFF, 0xFF};
constexpr Colour tableBlack{0, 0, 0};

/// A sheet with a table, such as `ref='B2:D5'`, with the attributes of its tableStyleInfo.
WorkbookBuilder makeTable(std::string const& table, std::string const& info,
                          std::string const& rows = "") {
  return WorkbookBuilder()
      .setSheet(rows,
                "<tableParts><tablePart xmlns:r='http://schemas.openxmlformats.org/"
                "officeDocument/2006/relationships' r:id='t'/></tableParts>")
      .setPart("xl/worksheets/_rels/sheet1.xml.rels",
               "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/"
               "relationships'><Relationship Id='t' Type='http://schemas.openxmlformats.org/"
               "officeDocument/2006/relationships/table' Target='../tables/table1.xml'/>"
               "</Relationships>")
      .setPart("xl/tables/table1.xml",
               "<table xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main' "
               "id='1' name='T' displayName='T' " +
                   table + "><tableStyleInfo " + info + "/></table>");
}

DOM::CellStyle styleAt(Document const& document, char const* address) {
  auto const place = DOM::A1Notation::parseCell(address).value();
  return findOwnStyle(
      document, 0,
      document.getSheets()[0].table->getCellInfo(place.getRow().get(), place.getColumn().get()));
}

DOM::CellProps cellAt(Document const& document, char const* address) {
  auto const style = styleAt(document, address);
  return style.getCellProps() ? *style.getCellProps() : DOM::CellProps();
}

DOM::RunProps runAt(Document const& document, char const* address) {
  auto const style = styleAt(document, address);
  return style.getRunProps() ? *style.getRunProps() : DOM::RunProps();
}

constexpr char const* banded = "name='TableStyleMedium2' showRowStripes='1'";

TEST(TableStyles, TheHeaderOfABuiltInStyleHasItsFillAndBoldText) {
  auto const document = makeTable("ref='B2:D5'", banded).load();
  EXPECT_EQ(cellAt(document, "B2").fillColour, accent1);
  EXPECT_EQ(runAt(document, "B2").colour, tableWhite);
  EXPECT_EQ(runAt(document, "B2").bold, true);
  EXPECT_EQ(runAt(document, "B3").bold, std::nullopt);
  EXPECT_EQ(cellAt(document, "E3"), DOM::CellProps());
}

TEST(TableStyles, StripesBeginBelowTheHeader) {
  auto const document = makeTable("ref='B2:D5'", banded).load();
  Colour const pale{0xDC, 0xE6, 0xF2};
  EXPECT_EQ(cellAt(document, "C3").fillColour, pale);
  EXPECT_EQ(cellAt(document, "C4").fillColour, std::nullopt);
  EXPECT_EQ(cellAt(document, "C5").fillColour, pale);
  auto const plain = makeTable("ref='B2:D5' headerRowCount='0'", banded).load();
  EXPECT_EQ(cellAt(plain, "C2").fillColour, pale);
}

TEST(TableStyles, LinesLieAroundAPartAndBetweenItsRows) {
  auto const document = makeTable("ref='B2:D5'", banded).load();
  DOM::BorderLine const soft{LineStyle::Thin, Colour{0x95, 0xB3, 0xD7}};
  EXPECT_EQ(cellAt(document, "B3").borderLeft, soft);
  EXPECT_EQ(cellAt(document, "B3").borderRight, std::nullopt);
  EXPECT_EQ(cellAt(document, "C3").borderTop, soft);
  EXPECT_EQ(cellAt(document, "C3").borderLeft, std::nullopt);
  EXPECT_EQ(cellAt(document, "D5").borderRight, soft);
  EXPECT_EQ(cellAt(document, "D5").borderBottom, soft);
}

TEST(TableStyles, ColumnsAndTotalsAreMarkedWhereTheTableSaysSo) {
  auto const document = makeTable("ref='A1:C4' totalsRowCount='1'",
                                  "name='tablestylelight9' showFirstColumn='1' showLastColumn='1' "
                                  "showColumnStripes='1'")
                            .load();
  EXPECT_EQ(runAt(document, "A2").bold, true);
  EXPECT_EQ(runAt(document, "B2").bold, std::nullopt);
  EXPECT_EQ(runAt(document, "C2").bold, true);
  EXPECT_EQ(runAt(document, "B4").bold, true);
  EXPECT_EQ(cellAt(document, "B4").borderTop, (DOM::BorderLine{LineStyle::Double, accent1}));
  EXPECT_EQ(cellAt(document, "B2").borderLeft, (DOM::BorderLine{LineStyle::Thin, accent1}));
  EXPECT_EQ(cellAt(document, "B4").borderLeft, std::nullopt);
}

struct PresetCase {
  char const* name;
  std::optional<Colour> header;
  std::optional<Colour> body;
  std::optional<Colour> text;  ///< of the body
};

TEST(TableStyles, EachFamilyHasItsColours) {
  Colour const accent2{0xC0, 0x50, 0x4D};
  constexpr Colour grey{0xD9, 0xD9, 0xD9};
  for (PresetCase const& preset :
       {PresetCase{"TableStyleLight1", {}, grey, tableBlack},
        PresetCase{"TableStyleLight2", {}, Colour{0xDC, 0xE6, 0xF2}, Colour{0x37, 0x60, 0x92}},
        PresetCase{"TableStyleLight8", tableBlack, {}, tableBlack},
        PresetCase{"TableStyleLight15", {}, grey, tableBlack},
        PresetCase{"TableStyleLight21", {}, Colour{0xFD, 0xEA, 0xDA}, tableBlack},
        PresetCase{"TableStyleMedium1", tableBlack, grey, tableBlack},
        PresetCase{"TableStyleMedium8", tableBlack, Colour{0xA6, 0xA6, 0xA6}, tableBlack},
        PresetCase{"TableStyleMedium9", accent1, Colour{0xB9, 0xCD, 0xE5}, tableBlack},
        PresetCase{"TableStyleMedium15", tableBlack, grey, tableBlack},
        PresetCase{"TableStyleMedium17", accent2, grey, tableBlack},
        PresetCase{"TableStyleMedium22", grey, Colour{0xA6, 0xA6, 0xA6}, tableBlack},
        PresetCase{"TableStyleDark1", tableBlack, Colour{0x40, 0x40, 0x40}, tableWhite},
        PresetCase{"TableStyleDark2", tableBlack, Colour{0x37, 0x60, 0x92}, tableWhite},
        PresetCase{"TableStyleDark8", tableBlack, Colour{0xA6, 0xA6, 0xA6}, {}},
        PresetCase{"TableStyleDark9", accent2, Colour{0xB9, 0xCD, 0xE5}, {}},
        PresetCase{"TableStyleDark11", Colour{0xF7, 0x96, 0x46}, Colour{0xB7, 0xDE, 0xE8}, {}}}) {
    SCOPED_TRACE(preset.name);
    auto const document =
        makeTable("ref='A1:B3'", std::string("name='") + preset.name + "' showRowStripes='1'")
            .load();
    EXPECT_THAT(document.getFindings(), IsEmpty());
    EXPECT_EQ(cellAt(document, "A1").fillColour, preset.header);
    EXPECT_EQ(cellAt(document, "A2").fillColour, preset.body);
    EXPECT_EQ(runAt(document, "A2").colour, preset.text);
  }
}

TEST(TableStyles, StylesThatNobodyKnowsAreTold) {
  for (char const* const name : {"Mine", "TableStyleMedium29", "TableStyleLight0",
                                 "TableStyleDark12", "TableStyleMedium", "TableStyleDark1x"}) {
    auto const document = makeTable("ref='A1:B3'", std::string("name='") + name + "'").load();
    EXPECT_THAT(document.getSheets()[0].styledTables, IsEmpty());
    ASSERT_THAT(document.getFindings(), SizeIs(1));
    EXPECT_EQ(document.getFindings()[0].message,
              std::string("the table's style \"") + name + "\" is not known; it is left out");
  }
  auto const nameless = makeTable("ref='A1:B3'", "showRowStripes='1'").load();
  EXPECT_THAT(nameless.getSheets()[0].styledTables, IsEmpty());
  EXPECT_THAT(nameless.getFindings(), IsEmpty());
}

constexpr char const* ownStyles =
    "<fonts><font><sz val='11'/></font><font><i/><sz val='11'/></font></fonts>"
    "<fills><fill/><fill/><fill><patternFill patternType='solid'><fgColor rgb='FFFF0000'/>"
    "</patternFill></fill></fills><borders><border/></borders>"
    "<cellXfs><xf fontId='0'/><xf fontId='1' fillId='2'/><xf fontId='1'/></cellXfs>"
    "<dxfs><dxf><fill><patternFill><bgColor rgb='FF00FF00'/></patternFill></fill></dxf>"
    "<dxf><font><b/></font><border><bottom style='thick'/><vertical style='hair'/></border></dxf>"
    "</dxfs><tableStyles><tableStyle name='Mine' count='2'>"
    "<tableStyleElement type='firstRowStripe' size='2' dxfId='0'/>"
    "<tableStyleElement type='headerRow' dxfId='7'/>"
    "<tableStyleElement type='headerRow' dxfId='1'/>"
    "<tableStyleElement type='pageFieldLabels' dxfId='0'/></tableStyle></tableStyles>";

TEST(TableStyles, AStyleOfTheWorkbookHasItsPartsAndSizesOfStripes) {
  auto const document =
      makeTable("ref='A1:B6'", "name='mine' showRowStripes='1'").setStyles(ownStyles).load();
  Colour const green{0, 0xFF, 0};
  EXPECT_EQ(runAt(document, "A1").bold, true);
  EXPECT_EQ(cellAt(document, "A1").borderBottom, (DOM::BorderLine{LineStyle::Thick, {}}));
  EXPECT_EQ(cellAt(document, "A1").borderRight, (DOM::BorderLine{LineStyle::Hair, {}}));
  EXPECT_EQ(cellAt(document, "B1").borderRight, std::nullopt);
  EXPECT_EQ(cellAt(document, "A2").fillColour, green);
  EXPECT_EQ(cellAt(document, "A3").fillColour, green);
  EXPECT_EQ(cellAt(document, "A4").fillColour, std::nullopt);
  EXPECT_EQ(cellAt(document, "A5").fillColour, green);
}

TEST(TableStyles, ACellsOwnPropertiesLieOverTheTablesOneByOne) {
  auto const document =
      makeTable("ref='A1:B4'", "name='Mine' showRowStripes='1'",
                "<row r='2'><c r='A2' s='1'><v>1</v></c><c r='B2' s='2'><v>1</v></c></row>")
          .setStyles(ownStyles)
          .load();
  EXPECT_EQ(cellAt(document, "A2").fillColour, (Colour{0xFF, 0, 0}));
  EXPECT_EQ(runAt(document, "A2").italic, true);
  EXPECT_EQ(cellAt(document, "B2").fillColour, (Colour{0, 0xFF, 0}));
  EXPECT_EQ(runAt(document, "B2").italic, true);
  EXPECT_EQ(runAt(document, "B2").fontSize, 11);
}

TEST(TableStyles, MoreTablesThanTheLimitAreTold) {
  LoadOptions options;
  options.limits.styledTables = 0;
  auto const document = makeTable("ref='A1:B3'", banded).load(options);
  EXPECT_THAT(document.getSheets()[0].styledTables, IsEmpty());
  ASSERT_THAT(document.getFindings(), SizeIs(1));
  EXPECT_THAT(document.getFindings()[0].message, HasSubstr("more than 0 tables with a style"));
}

}  // namespace
}  // namespace Zorv::Workbook
