#include "render/BuildPicture.h"

#include <chrono>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OfficeUtils/Clock.h"
#include "render/build/BuiltPicture.h"

namespace Zorv::Render {
namespace {

using DOM::Colour;
using DOM::HorizontalAlignment;
using DOM::LineStyle;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using TestSupport::BuiltPicture;
using TestSupport::sheetData;
using TestSupport::WorkbookBuilder;

constexpr Colour red{0xFF, 0, 0};
constexpr Colour green{0, 0xFF, 0};

std::string styles(std::string const& fills, std::string const& borders,
                   std::string const& cellFormats, std::string const& differential = "") {
  return "<fonts><font><sz val='11'/><name val='Calibri'/></font>"
         "<font><b/><sz val='11'/><name val='Calibri'/></font></fonts>"
         "<fills><fill/><fill/>" +
         fills + "</fills><borders><border/>" + borders + "</borders><cellXfs><xf/>" + cellFormats +
         "</cellXfs><dxfs>" + differential + "</dxfs>";
}

constexpr char const* redFill =
    "<fill><patternFill patternType='solid'><fgColor rgb='FFFF0000'/></patternFill></fill>";
constexpr char const* greenDxf =
    "<dxf><fill><patternFill><bgColor rgb='FF00FF00'/></patternFill></fill></dxf>";
constexpr char const* boldDxf = "<dxf><font><b/></font></dxf>";

std::string rule(std::string const& area, std::string const& inner) {
  return "<conditionalFormatting sqref='" + area + "'>" + inner + "</conditionalFormatting>";
}

std::string above(int number, int dxf, int priority = 1) {
  return "<cfRule type='cellIs' operator='greaterThan' priority='" + std::to_string(priority) +
         "' dxfId='" + std::to_string(dxf) + "'><formula>" + std::to_string(number) +
         "</formula></cfRule>";
}

TEST(BuildPicture, HasTheUsedPartOfASheetFromItsFirstCellOn) {
  BuiltPicture const picture(WorkbookBuilder().setSheet(
      "<row r='2'><c r='B2'><v>7</v></c></row><row r='4'><c r='C4' t='b'><v>1</v></c></row>"));
  EXPECT_EQ(picture.sheet().range, (TableRange{0, 0, 4, 3}));
  EXPECT_EQ(picture.sheet().name, "Sheet1");
  EXPECT_THAT(picture.sheet().cells, SizeIs(2));
  EXPECT_EQ(picture.textAt("B2"), "7");
  EXPECT_EQ(picture.textAt("C4"), "TRUE");
  EXPECT_EQ(picture.sheet().width, 3 * 64);
  EXPECT_EQ(picture.sheet().height, 4 * 20);
  EXPECT_EQ(picture.sheet().columns[2].start, 2 * 64);
}

TEST(BuildPicture, WhatLiesFarFromTheFirstCellDoesNotDrawTheWayThere) {
  BuiltPicture const picture(
      WorkbookBuilder().setSheet("<row r='900000'><c r='ZZ900000'><v>7</v></c></row>"));
  EXPECT_EQ(picture.sheet().range, (TableRange{899'999, 701, 900'000, 702}));
  EXPECT_EQ(picture.textAt("ZZ900000"), "7");
}

TEST(BuildPicture, AnEmptySheetHasAnEmptyPicture) {
  BuiltPicture const picture(WorkbookBuilder().setSheet(""));
  EXPECT_TRUE(picture.sheet().range.isEmpty());
  EXPECT_THAT(picture.sheet().rows, IsEmpty());
  EXPECT_THAT(picture.sheet().columns, IsEmpty());
  EXPECT_THAT(picture.sheet().looks, SizeIs(1));
  EXPECT_THAT(picture.sheet().edges, SizeIs(1));
  EXPECT_THAT(picture.sheet().decisions, SizeIs(1));
}

TEST(BuildPicture, AFormatOfAWholeColumnDrawsNoMillionRows) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles(redFill, "", "<xf fillId='2'/>"))
          .addSheet("Sheet1", "<cols><col min='1' max='16384' style='1' width='9.140625'/></cols>" +
                                  sheetData("<row r='1'><c r='A1'><v>1</v></c></row>")));
  EXPECT_EQ(picture.sheet().range, (TableRange{0, 0, 1, 1}));
  EXPECT_EQ(picture.sheet().looks.at(picture.sheet().columns[0].look).fill.colour, red);
}

TEST(BuildPicture, CellsOfAnInvisibleStyleAreNotUsed) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles(redFill, "", "<xf fontId='1'/><xf fillId='2'/>"))
          .setSheet("<row r='1'><c r='A1' s='2'/></row><row r='9'><c r='I9' s='1'/></row>"));
  EXPECT_EQ(picture.sheet().range, (TableRange{0, 0, 1, 1}));
  EXPECT_EQ(picture.lookAt("A1").fill.colour, red);
}

TEST(BuildPicture, TheConditionalStyleLiesOverTheOwnOnePropertyByProperty) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles(redFill, "", "<xf fillId='2' fontId='1'/>",
                            std::string(greenDxf) + "<dxf><font><i/></font></dxf>"))
          .setSheet("<row r='1'><c r='A1' s='1'><v>9</v></c><c r='B1' s='1'><v>3</v></c>"
                    "<c r='C1' s='1'><v>1</v></c></row>",
                    rule("A1:C1", above(5, 0) + above(2, 1, 2))));
  EXPECT_EQ(picture.lookAt("A1").fill.colour, green);
  EXPECT_TRUE(picture.lookAt("A1").font.bold);
  EXPECT_TRUE(picture.lookAt("A1").font.italic);
  EXPECT_EQ(picture.lookAt("B1").fill.colour, red);
  EXPECT_TRUE(picture.lookAt("B1").font.italic);
  EXPECT_FALSE(picture.lookAt("C1").font.italic);
}

TEST(BuildPicture, TellsWhichRulesHaveAPartByPriority) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles("", "", "", std::string(greenDxf) + boldDxf))
          .setSheet("<row r='1'><c r='A1'><v>9</v></c><c r='B1'><v>3</v></c><c r='C1'><v>1</v></c>"
                    "</row>",
                    rule("A1:C1", above(2, 1, 7) + above(5, 0, 3))));
  auto const& sheet = picture.sheet();
  ASSERT_THAT(sheet.rules, SizeIs(2));
  EXPECT_EQ(sheet.rules[0].text, "cell > 5");
  EXPECT_EQ(sheet.rules[0].ranges, "A1:C1");
  EXPECT_EQ(sheet.rules[0].number, 1U);
  EXPECT_EQ(sheet.rules[0].style, "fill #00FF00");
  EXPECT_EQ(sheet.rules[0].colour, green);
  EXPECT_EQ(sheet.rules[0].cellCount, 1U);
  EXPECT_EQ(sheet.rules[1].text, "cell > 2");
  EXPECT_EQ(sheet.rules[1].cellCount, 2U);
  EXPECT_THAT(sheet.decisions.at(picture.at("A1").decision), ElementsAre(0U, 1U));
  EXPECT_THAT(sheet.decisions.at(picture.at("B1").decision), ElementsAre(1U));
  EXPECT_EQ(picture.at("C1").decision, 0U);
}

TEST(BuildPicture, RulesDrawPositionsWithoutACell) {
  std::string const formula =
      "<cfRule type='expression' priority='1' dxfId='0'><formula>"
      "MOD(ROW()+COLUMN(),2)=0</formula></cfRule>";
  BuiltPicture const picture(WorkbookBuilder()
                                 .setStyles(styles("", "", "", greenDxf))
                                 .setSheet("<row r='1'><c r='A1'><v>1</v></c></row>",
                                           rule("C3:D4", formula) + rule("F1:F1048576", formula)));
  EXPECT_EQ(picture.sheet().range, (TableRange{0, 0, 4, 4}));
  EXPECT_EQ(picture.lookAt("C3").fill.colour, green);
  EXPECT_EQ(picture.find("C4"), nullptr);
  EXPECT_THAT(picture.sheet().cells, SizeIs(3));
}

TEST(BuildPicture, ScalesBarsAndIconsStandBesideTheStyle) {
  std::string const scale =
      "<cfRule type='colorScale' priority='1'><colorScale><cfvo type='min'/><cfvo type='max'/>"
      "<color rgb='FFFF0000'/><color rgb='FF00FF00'/></colorScale></cfRule>";
  std::string const bar =
      "<cfRule type='dataBar' priority='2'><dataBar showValue='0'><cfvo type='min'/>"
      "<cfvo type='max'/><color rgb='FF638EC6'/></dataBar></cfRule>";
  std::string const icons =
      "<cfRule type='iconSet' priority='3'><iconSet iconSet='3Arrows'><cfvo type='percent' "
      "val='0'/>"
      "<cfvo type='percent' val='33'/><cfvo type='percent' val='67'/></iconSet></cfRule>";
  BuiltPicture const picture(WorkbookBuilder().setSheet(
      "<row r='1'><c r='A1'><v>1</v></c><c r='B1'><v>1</v></c><c r='C1'><v>1</v></c></row>"
      "<row r='2'><c r='A2'><v>9</v></c><c r='B2'><v>9</v></c><c r='C2'><v>9</v></c></row>",
      rule("A1:A2", scale) + rule("B1:B2", bar) + rule("C1:C2", icons)));
  EXPECT_EQ(picture.at("A1").scaleColour, red);
  EXPECT_EQ(picture.at("A2").scaleColour, green);
  ASSERT_TRUE(picture.at("B2").bar);
  EXPECT_EQ(picture.at("B2").text, "");
  EXPECT_EQ(picture.at("B2").content, CellContent::Number);
  EXPECT_EQ(picture.at("C1").icon->index, 0U);
  EXPECT_EQ(picture.at("C2").icon->index, 2U);
  EXPECT_EQ(picture.at("C2").text, "9");
  EXPECT_FALSE(picture.at("A1").bar);
  EXPECT_THAT(picture.sheet().rules, SizeIs(3));
}

TEST(BuildPicture, AScaleBehindAFillDoesNotShow) {
  std::string const scale =
      "<cfRule type='colorScale' priority='2'><colorScale><cfvo type='min'/><cfvo type='max'/>"
      "<color rgb='FFFF0000'/><color rgb='FF00FF00'/></colorScale></cfRule>";
  BuiltPicture const picture(WorkbookBuilder()
                                 .setStyles(styles("", "", "", greenDxf))
                                 .setSheet("<row r='1'><c r='A1'><v>1</v></c></row>"
                                           "<row r='2'><c r='A2'><v>9</v></c></row>",
                                           rule("A1:A2", above(5, 0) + scale)));
  EXPECT_EQ(picture.at("A1").scaleColour, red);
  EXPECT_EQ(picture.at("A2").scaleColour, std::nullopt);
  EXPECT_EQ(picture.lookAt("A2").fill.colour, green);
}

TEST(BuildPicture, ARuleThatFailsInACellLeavesItsOwnStyleAndIsTold) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles(redFill, "", "<xf fillId='2'/>", greenDxf))
          .setSheet("<row r='1'><c r='A1' s='1'><v>1</v></c></row>",
                    rule("A1",
                         "<cfRule type='expression' priority='1' dxfId='0'><formula>"
                         "SUM(SEQUENCE(100000,10000))&gt;0</formula></cfRule>")));
  EXPECT_EQ(picture.lookAt("A1").fill.colour, red);
  ASSERT_THAT(picture.get().findings, SizeIs(1));
  EXPECT_THAT(picture.get().findings[0], HasSubstr("Sheet1, cell A1: is drawn without"));
}

TEST(BuildPicture, MergedCellsStandOnceAndHideWhatIsBelow) {
  BuiltPicture const picture(
      WorkbookBuilder().setSheet("<row r='1'><c r='A1'><v>1</v></c><c r='B2'><v>2</v></c></row>"
                                 "<row r='2'><c r='A2'><v>3</v></c><c r='C2'><v>4</v></c></row>",
                                 "<mergeCells><mergeCell ref='A1:B2'/></mergeCells>"));
  EXPECT_THAT(picture.sheet().cells, SizeIs(2));
  EXPECT_EQ(picture.textAt("A1"), "1");
  EXPECT_EQ(picture.at("A1").rowCount, 2U);
  EXPECT_EQ(picture.at("A1").columnCount, 2U);
  EXPECT_EQ(picture.textAt("C2"), "4");
}

TEST(BuildPicture, AMergedCellWhoseFirstLinesAreHiddenStandsAtThoseThatAreSeen) {
  BuiltPicture const picture(WorkbookBuilder().addSheet(
      "Sheet1", "<cols><col min='1' max='1' width='9' hidden='1'/></cols>" +
                    sheetData("<row r='1' hidden='1'><c r='A1' t='str'><v>text</v></c></row>"
                              "<row r='3'/>") +
                    "<mergeCells><mergeCell ref='A1:C3'/></mergeCells>"));
  ASSERT_THAT(picture.sheet().cells, SizeIs(1));
  PictureCell const& cell = picture.sheet().cells[0];
  EXPECT_EQ(cell.text, "text");
  EXPECT_EQ(cell.row, 0U);
  EXPECT_EQ(cell.rowCount, 2U);
  EXPECT_EQ(cell.columnCount, 2U);
  EXPECT_THAT(picture.sheet().rows, SizeIs(2));
}

TEST(BuildPicture, OfOverlappingMergedCellsTheUpperOneCountsAndAFindingTells) {
  BuiltPicture const picture(WorkbookBuilder().setSheet(
      "<row r='1'><c r='A1'><v>1</v></c></row><row r='2'><c r='B2'><v>2</v></c></row>",
      "<mergeCells><mergeCell ref='B2:C3'/><mergeCell ref='A1:B2'/></mergeCells>"));
  EXPECT_EQ(picture.at("A1").columnCount, 2U);
  EXPECT_EQ(picture.find("B2"), nullptr);
  EXPECT_THAT(picture.get().findings,
              ElementsAre("Sheet1: 1 merged area overlaps others and is left out"));
}

TEST(BuildPicture, AMergedCellOfAWholeColumnDrawsNoMillionRows) {
  BuiltPicture const picture(WorkbookBuilder().setSheet(
      "<row r='3'><c r='B3'><v>1</v></c></row>",
      "<mergeCells><mergeCell ref='A1:A1048576'/><mergeCell ref='C4:D5'/></mergeCells>"));
  EXPECT_EQ(picture.sheet().range, (TableRange{0, 0, 5, 4}));
  EXPECT_EQ(picture.at("A1").rowCount, 5U);
}

TEST(BuildPicture, HiddenRowsAndColumnsAreNotInThePicture) {
  BuiltPicture const picture(WorkbookBuilder().addSheet(
      "Sheet1",
      "<cols><col min='2' max='2' width='9' hidden='1'/></cols>" +
          sheetData("<row r='1'><c r='A1'><v>1</v></c><c r='B1'><v>2</v></c><c r='C1'><v>3</v></c>"
                    "</row><row r='2' hidden='1'><c r='A2'><v>4</v></c></row>"
                    "<row r='3'><c r='C3'><v>5</v></c></row>")));
  EXPECT_THAT(picture.sheet().cells, SizeIs(3));
  EXPECT_EQ(picture.at("C1").column, 1U);
  EXPECT_EQ(picture.at("C3").row, 1U);
  EXPECT_EQ(picture.sheet().columns[1].index, 2U);
}

std::string border(std::string const& side, std::string const& style, std::string const& colour) {
  return "<border><" + side + " style='" + style + "'><color rgb='" + colour + "'/></" + side +
         "></border>";
}

TEST(BuildPicture, NeighboursShareTheStrongerLine) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(
              styles("",
                     border("right", "thin", "FFFF0000") + border("left", "thick", "FF00FF00") +
                         border("bottom", "medium", "FFFF0000") +
                         border("top", "hair", "FF00FF00") + border("left", "thin", "FF00FF00"),
                     "<xf borderId='1'/><xf borderId='2'/><xf borderId='3'/>"
                     "<xf borderId='4'/><xf borderId='5'/>"))
          .setSheet("<row r='1'><c r='A1' s='1'/><c r='B1' s='2'/><c r='C1' s='3'/>"
                    "<c r='D1' s='1'/><c r='E1' s='5'/></row>"
                    "<row r='2'><c r='A2' s='1'/><c r='C2' s='4'/><c r='D2'><v>1</v></c></row>"));
  EXPECT_EQ(picture.edgesAt("A1").right, (DOM::BorderLine{LineStyle::Thick, green}));
  EXPECT_EQ(picture.edgesAt("B1").left, (DOM::BorderLine{LineStyle::Thick, green}));
  EXPECT_EQ(picture.edgesAt("C1").bottom, (DOM::BorderLine{LineStyle::Medium, red}));
  EXPECT_EQ(picture.edgesAt("C2").top, (DOM::BorderLine{LineStyle::Medium, red}));
  EXPECT_EQ(picture.edgesAt("A2").right, (DOM::BorderLine{LineStyle::Thin, red}));
  // Of equally strong lines that of the left cell counts.
  EXPECT_EQ(picture.edgesAt("E1").left, (DOM::BorderLine{LineStyle::Thin, red}));
  EXPECT_EQ(picture.at("D2").edges, 0U);
}

TEST(BuildPicture, LinesOfConditionalFormatsGoBeforeEquallyStrongOnesOfNeighbours) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles("", border("right", "thin", "FFFF0000"), "<xf borderId='1'/>",
                            "<dxf><border><left style='thin'><color rgb='FF00FF00'/></left>"
                            "</border></dxf>"))
          .setSheet("<row r='1'><c r='A1' s='1'><v>1</v></c><c r='B1'><v>9</v></c></row>",
                    rule("A1:B1", above(5, 0))));
  EXPECT_EQ(picture.edgesAt("B1").left, (DOM::BorderLine{LineStyle::Thin, green}));
  EXPECT_EQ(picture.edgesAt("A1").right, (DOM::BorderLine{LineStyle::Thin, green}));
}

TEST(BuildPicture, MergedCellsHaveTheLinesOfTheirCorners) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(
              styles("", border("left", "thin", "FFFF0000") + border("right", "thick", "FF00FF00"),
                     "<xf borderId='1'/><xf borderId='2'/>"))
          .setSheet("<row r='1'><c r='A1' s='1'/><c r='C1' s='2'/><c r='D1'><v>1</v></c></row>"
                    "<row r='2'><c r='C2' s='2'/><c r='D2'><v>1</v></c></row>"
                    "<row r='3'><c r='C3' s='2'/><c r='D3'><v>1</v></c></row>",
                    "<mergeCells><mergeCell ref='A1:C3'/></mergeCells>"));
  EXPECT_EQ(picture.edgesAt("A1").left.style, LineStyle::Thin);
  EXPECT_EQ(picture.edgesAt("A1").right.style, LineStyle::Thick);
  EXPECT_EQ(picture.edgesAt("D1").left.style, LineStyle::Thick);
  EXPECT_EQ(picture.edgesAt("D2").left.style, LineStyle::Thick);
  EXPECT_EQ(picture.edgesAt("D3").left.style, LineStyle::Thick);
  EXPECT_EQ(picture.edgesAt("A1").bottom.style, LineStyle::None);
}

TEST(BuildPicture, ColumnsWithLinesHaveThemInPositionsWithoutACell) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles("", border("right", "thin", "FFFF0000"), "<xf borderId='1'/>"))
          .addSheet("Sheet1", "<cols><col min='1' max='1' style='1' width='9'/></cols>" +
                                  sheetData("<row r='3'><c r='B3'><v>1</v></c></row>")));
  EXPECT_EQ(picture.edgesAt("A1").right.style, LineStyle::Thin);
  EXPECT_EQ(picture.edgesAt("A3").right.style, LineStyle::Thin);
  EXPECT_EQ(picture.edgesAt("B3").left.style, LineStyle::Thin);
}

TEST(BuildPicture, TextsRunOverIntoEmptyNeighbours) {
  constexpr char const* text = "<is><t>a text of some more letters</t></is>";
  auto const cell = [](std::string const& place, int style) {
    return "<c r='" + place + "' t='inlineStr' s='" + std::to_string(style) + "'>" + text + "</c>";
  };
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles(redFill, "",
                            "<xf><alignment horizontal='right'/></xf>"
                            "<xf><alignment horizontal='center'/></xf>"
                            "<xf><alignment wrapText='1'/></xf>"
                            "<xf><alignment shrinkToFit='1'/></xf>"
                            "<xf><alignment textRotation='45'/></xf><xf fillId='2'/>"))
          .setSheet(
              "<row r='1'>" + cell("B1", 0) + "<c r='C1' s='6'/></row><row r='2'>" + cell("B2", 0) +
                  "<c r='D2'><v>1</v></c></row><row r='3'>" + cell("F3", 1) + "</row><row r='4'>" +
                  cell("D4", 2) + "</row><row r='5'>" + cell("B5", 3) + "</row><row r='6'>" +
                  cell("B6", 4) + "</row><row r='7'>" + cell("B7", 5) + "</row><row r='8'>" +
                  cell("B8", 0) +
                  "</row><row r='9'><c r='B9' t='str'><v>ab</v></c><c r='I9'><v>1</v></c></row>",
              "<mergeCells><mergeCell ref='C8:C9'/></mergeCells>"));
  EXPECT_EQ(picture.at("B1").freeRight, 3U);  // a fill does not stop it
  EXPECT_EQ(picture.at("B2").freeRight, 1U);
  EXPECT_EQ(picture.at("F3").freeLeft, 3U);
  EXPECT_EQ(picture.at("F3").freeRight, 0U);
  EXPECT_EQ(picture.at("D4").freeLeft, 2U);
  EXPECT_EQ(picture.at("D4").freeRight, 2U);
  for (char const* place : {"B5", "B6", "B7", "B8", "B9"}) {
    EXPECT_EQ(picture.at(place).freeRight, 0U) << place;
  }
}

TEST(BuildPicture, GoesOnToTheRightForTextsThatRunOutOfIt) {
  BuiltPicture const picture(WorkbookBuilder().setSheet(
      "<row r='1'><c r='A1' t='str'><v>The sales of all branches in the last year</v></c></row>"));
  EXPECT_GE(picture.sheet().width, 220);
  EXPECT_LE(picture.sheet().width, 320);
  EXPECT_EQ(picture.at("A1").freeRight + 1, picture.sheet().columns.size());
}

TEST(BuildPicture, TextsAreCentredAcrossTheEmptyCellsOfASelection) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles("", "", "<xf><alignment horizontal='centerContinuous'/></xf>"))
          .setSheet("<row r='1'><c r='A1' t='str' s='1'><v>a</v></c><c r='B1' s='1'/>"
                    "<c r='C1' s='1'/><c r='D1'/><c r='E1'><v>1</v></c></row>"));
  EXPECT_EQ(picture.at("A1").horizontal, HorizontalAlignment::CenterContinuous);
  EXPECT_EQ(picture.at("A1").freeRight, 2U);
}

TEST(BuildPicture, LooksHaveAlignmentIndentAndRotation) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles("", "",
                            "<xf><alignment horizontal='left' indent='2' vertical='top'/></xf>"
                            "<xf><alignment indent='2' wrapText='1' shrinkToFit='1'/></xf>"
                            "<xf><alignment textRotation='255'/></xf>"
                            "<xf><alignment textRotation='135' readingOrder='2'/></xf>"))
          .setSheet("<row r='1'><c r='A1' s='1'><v>1</v></c><c r='B1' s='2'><v>1</v></c>"
                    "<c r='C1' s='3'><v>1</v></c><c r='D1' s='4'><v>1</v></c></row>"));
  EXPECT_EQ(picture.lookAt("A1").indent, 18);
  EXPECT_EQ(picture.lookAt("A1").vertical, DOM::VerticalAlignment::Top);
  EXPECT_EQ(picture.lookAt("B1").indent, 0);
  EXPECT_TRUE(picture.lookAt("B1").wraps);
  EXPECT_FALSE(picture.lookAt("B1").shrinksToFit);
  EXPECT_TRUE(picture.lookAt("C1").isStacked);
  EXPECT_EQ(picture.lookAt("C1").rotation, 0);
  EXPECT_EQ(picture.lookAt("D1").rotation, -45);
  EXPECT_TRUE(picture.lookAt("D1").readsRightToLeft);
}

TEST(BuildPicture, RowsWithoutAHeightAreAsHighAsTheirTexts) {
  std::string const rows =
      "<row r='1'><c r='A1' s='1' t='str'><v>several words that are wrapped</v></c></row>"
      "<row r='2' ht='15'><c r='A2' s='1' t='str'><v>several words that are wrapped</v></c></row>"
      "<row r='3'><c r='A3' s='2'><v>1</v></c></row><row r='4'><c r='A4'><v>1</v></c></row>";
  std::string const formats =
      "<fonts><font><sz val='11'/></font><font><sz val='20'/></font></fonts><cellXfs><xf/>"
      "<xf><alignment wrapText='1'/></xf><xf fontId='1'/></cellXfs>";
  BuiltPicture const picture(WorkbookBuilder().setStyles(formats).setSheet(rows));
  EXPECT_EQ(picture.sheet().rows[0].size, 80);
  EXPECT_EQ(picture.sheet().rows[1].size, 20);
  EXPECT_EQ(picture.sheet().rows[2].size, 35);
  EXPECT_EQ(picture.sheet().rows[3].size, 20);
  EXPECT_EQ(picture.sheet().rows[3].start, 135);
  BuiltPicture const fixed(WorkbookBuilder().setStyles(formats).addSheet(
      "Sheet1", "<sheetFormatPr defaultRowHeight='15' customHeight='1'/>" + sheetData(rows)));
  EXPECT_EQ(fixed.sheet().rows[0].size, 20);
}

TEST(BuildPicture, ColoursOfNumberFormatsComeFromThePalette) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles("<numFmts><numFmt numFmtId='170' formatCode='[Color10]0;[Red]0'/></numFmts>"
                     "<cellXfs><xf/><xf numFmtId='170'/></cellXfs>")
          .setSheet("<row r='1'><c r='A1' s='1'><v>1</v></c><c r='B1' s='1'><v>-1</v></c>"
                    "<c r='C1'><v>-1</v></c></row>"));
  EXPECT_EQ(picture.at("A1").textColour, (Colour{0, 0x80, 0}));
  EXPECT_EQ(picture.at("B1").textColour, red);
  EXPECT_EQ(picture.at("C1").textColour, std::nullopt);
}

TEST(BuildPicture, CellsBeyondTheLimitOfRunsHaveTheFontOfTheCellAlone) {
  constexpr int runsOfAText = 1'000;
  std::string text = "<c t='inlineStr'><is>";
  for (int run = 0; run < runsOfAText; ++run) {
    text += run % 2 == 0 ? "<r><rPr><b/></rPr><t>x</t></r>" : "<r><t>x</t></r>";
  }
  text += "</is></c>";
  std::string row = "<row r='1'>";
  for (int cell = 0; cell < 502; ++cell) {
    row += text;
  }
  BuiltPicture const picture(WorkbookBuilder().setSheet(row + "</row>"));
  EXPECT_NE(picture.at("SF1").runs, 0U);  // the 500th
  EXPECT_EQ(picture.at("SG1").runs, 0U);
  EXPECT_EQ(picture.at("SG1").text, std::string(runsOfAText, 'x'));
  ASSERT_THAT(picture.get().findings, SizeIs(1));
  EXPECT_THAT(picture.get().findings.front(), HasSubstr("2 texts are in the font"));
}

TEST(BuildPicture, RunsHaveFontsOverThatOfTheirCell) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles("", "", "<xf fontId='1'/>"))
          .setSheet("<row r='1'><c r='A1' t='inlineStr' s='1'><is><r><t xml:space='preserve'>one "
                    "</t></r><r><rPr><i/><rFont val='Arial'/></rPr><t>two</t></r></is></c>"
                    "<c r='B1' t='inlineStr'><is><t>plain</t></is></c></row>"));
  ASSERT_EQ(picture.at("A1").runs, 1U);
  EXPECT_EQ(picture.at("B1").runs, 0U);
  auto const& runs = picture.sheet().richTexts.at(0);
  ASSERT_THAT(runs, SizeIs(2));
  EXPECT_EQ(runs[0].text, "one ");
  EXPECT_TRUE(runs[0].font.bold);
  EXPECT_FALSE(runs[0].font.italic);
  EXPECT_EQ(runs[1].text, "two");
  EXPECT_TRUE(runs[1].font.bold);
  EXPECT_TRUE(runs[1].font.italic);
  EXPECT_EQ(runs[1].font.name, "Arial");
}

TEST(BuildPicture, ATextThatItsFormatChangesHasNoRuns) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles("<numFmts><numFmt numFmtId='170' formatCode='0;0;0;&lt;@&gt;'/></numFmts>"
                     "<cellXfs><xf/><xf numFmtId='170'/></cellXfs>")
          .setSheet("<row r='1'><c r='A1' t='inlineStr' s='1'><is><r><rPr><b/></rPr><t>a</t></r>"
                    "</is></c></row>"));
  EXPECT_EQ(picture.textAt("A1"), "<a>");
  EXPECT_EQ(picture.at("A1").runs, 0U);
}

TEST(BuildPicture, CellsLeadToTheirHyperlinks) {
  BuiltPicture const picture(WorkbookBuilder().setSheet(
      "<row r='1'><c r='A1'><v>1</v></c><c r='B1'><v>1</v></c><c r='C1'><v>1</v></c></row>",
      "<hyperlinks><hyperlink ref='A1:B1' location='Sheet2!A1'/></hyperlinks>"));
  EXPECT_THAT(picture.sheet().links, ElementsAre("#Sheet2!A1"));
  EXPECT_EQ(picture.at("A1").link, 1U);
  EXPECT_EQ(picture.at("B1").link, 1U);
  EXPECT_EQ(picture.at("C1").link, 0U);
}

TEST(BuildPicture, FrozenLinesAreCountedAsTheyAreSeen) {
  BuiltPicture const picture(WorkbookBuilder().addSheet(
      "Sheet1",
      "<sheetViews><sheetView rightToLeft='1' showGridLines='0'><pane xSplit='2' ySplit='3' "
      "state='frozen'/></sheetView></sheetViews>" +
          sheetData("<row r='2' hidden='1'/><row r='9'><c r='I9'><v>1</v></c></row>")));
  EXPECT_EQ(picture.sheet().frozenRows, 2U);
  EXPECT_EQ(picture.sheet().frozenColumns, 2U);
  EXPECT_TRUE(picture.sheet().rightToLeft);
  EXPECT_FALSE(picture.sheet().showsGridLines);
}

TEST(BuildPicture, PagesAreLaidOutInThePicturesLines) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setWorkbook("",
                       "<definedNames><definedName name='_xlnm.Print_Area' localSheetId='0'>"
                       "'It''s, one'!$A$1:$B$4,'It''s, one'!$C$5:$D$6</definedName>"
                       "<definedName name='_xlnm.Print_Titles' localSheetId='0'>"
                       "'It''s, one'!$A:$A,'It''s, one'!$1:$3</definedName></definedNames>")
          .addSheet(
              "It's, one",
              "<sheetPr><pageSetUpPr fitToPage='1'/></sheetPr>" +
                  sheetData("<row r='2' hidden='1'/><row r='9'><c r='I9'><v>1</v></c></row>") +
                  "<printOptions horizontalCentered='1' gridLines='1'/>"
                  "<pageMargins left='1' right='0.5' top='2' bottom='0'/>"
                  "<pageSetup paperSize='9' orientation='landscape' scale='50' "
                  "fitToHeight='0'/><rowBreaks><brk id='4'/><brk id='1'/></rowBreaks>"
                  "<colBreaks><brk id='3'/></colBreaks>"));
  PageSetup const& page = picture.sheet().page;
  EXPECT_NEAR(page.width, 1122.5, 0.1);
  EXPECT_NEAR(page.height, 793.7, 0.1);
  EXPECT_EQ(page.left, 96);
  EXPECT_EQ(page.right, 48);
  EXPECT_EQ(page.top, 192);
  EXPECT_EQ(page.bottom, 0);
  EXPECT_EQ(page.scale, 0.5);
  EXPECT_TRUE(page.fitsPages);
  EXPECT_EQ(page.fitWidth, 1U);
  EXPECT_EQ(page.fitHeight, 0U);
  EXPECT_THAT(page.rowBreaks, ElementsAre(1U, 3U));
  EXPECT_THAT(page.columnBreaks, ElementsAre(3U));
  EXPECT_THAT(page.areas, ElementsAre(PrintArea{0, 3, 0, 2}, PrintArea{3, 5, 2, 4}));
  EXPECT_EQ(page.titleRowsEnd, 2U);
  EXPECT_EQ(page.titleColumnsEnd, 1U);
  EXPECT_TRUE(page.isCentredAcross);
  EXPECT_FALSE(page.isCentredDown);
  EXPECT_TRUE(page.printsGridLines);
}

std::string describe(std::vector<PageTextPiece> const& pieces) {
  std::string text;
  for (PageTextPiece const& piece : pieces) {
    switch (piece.kind) {
      case PageTextPiece::Kind::Text:
        text += piece.text;
        break;
      case PageTextPiece::Kind::PageNumber:
        text += "{page" + (piece.offset == 0 ? "" : std::to_string(piece.offset)) + "}";
        break;
      case PageTextPiece::Kind::PageCount:
        text += "{pages}";
        break;
      case PageTextPiece::Kind::FileName:
        text += "{file}";
        break;
    }
  }
  return text;
}

TEST(BuildPicture, HeadersHaveTheirCodesResolvedAndThoseOfFontsLeftOut) {
  OfficeUtils::ScopedClock const clock(std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) +
                                       std::chrono::hours(15));
  BuiltPicture const picture(WorkbookBuilder().addSheet(
      "Sales &amp; Co",
      sheetData("<row r='1'><c r='A1'><v>1</v></c></row>") +
          "<headerFooter><oddHeader>in the middle&amp;L&amp;\"Arial,Bold\"&amp;14&amp;K01+000"
          "&amp;A&amp;R&amp;P of &amp;N, &amp;P+3&amp;&amp;</oddHeader>"
          "<oddFooter>&amp;L&amp;D &amp;T&amp;C&amp;B&amp;F&amp;R&amp;Z&amp;G</oddFooter>"
          "</headerFooter>"));
  PageTexts const& texts = picture.sheet().page.texts;
  EXPECT_EQ(describe(texts.header.left), "Sales & Co");
  EXPECT_EQ(describe(texts.header.centre), "in the middle");
  EXPECT_EQ(describe(texts.header.right), "{page} of {pages}, {page3}&");
  EXPECT_EQ(describe(texts.footer.left), "11/21/2026 15:00");
  EXPECT_EQ(describe(texts.footer.centre), "{file}");
  EXPECT_EQ(describe(texts.footer.right), "");
}

TEST(BuildPicture, TablesOfAStyleAreSeenAlsoWhereTheyHaveNoCells) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setSheet("<row r='1'><c r='A1' t='inlineStr'><is><t>a</t></is></c></row>"
                    "<row r='2'><c r='A2'><v>20</v></c></row>",
                    rule("A1:B9", above(10, 0)) +
                        "<tableParts><tablePart xmlns:r='http://schemas.openxmlformats.org/"
                        "officeDocument/2006/relationships' r:id='t'/></tableParts>")
          .setStyles(styles("", "", "", greenDxf))
          .setPart("xl/worksheets/_rels/sheet1.xml.rels",
                   "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/"
                   "relationships'><Relationship Id='t' Type='http://schemas.openxmlformats.org/"
                   "officeDocument/2006/relationships/table' Target='../tables/table1.xml'/>"
                   "</Relationships>")
          .setPart("xl/tables/table1.xml",
                   "<table xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main' "
                   "id='1' displayName='T' ref='A1:B3'><tableStyleInfo "
                   "name='TableStyleMedium9' showRowStripes='1'/></table>"));
  Colour const accent{0x4F, 0x81, 0xBD};
  EXPECT_EQ(picture.sheet().range, (TableRange{0, 0, 3, 2}));
  EXPECT_EQ(picture.lookAt("A1").fill.colour, accent);
  EXPECT_TRUE(picture.lookAt("A1").font.bold);
  EXPECT_EQ(picture.lookAt("B1").fill.colour, accent);
  EXPECT_EQ(picture.lookAt("A2").fill.colour, green);
  EXPECT_EQ(picture.lookAt("B2").fill.colour, (Colour{0xB9, 0xCD, 0xE5}));
  EXPECT_EQ(picture.lookAt("B3").fill.colour, (Colour{0xDC, 0xE6, 0xF2}));
  EXPECT_EQ(picture.edgesAt("B1").bottom.style, LineStyle::Thick);
}

TEST(BuildPicture, HasNoMorePositionsThanItsLimitAndTellsWhatIsLeftOut) {
  PictureOptions options;
  options.positionLimit = 6;
  BuiltPicture const picture(
      WorkbookBuilder()
          .addSheet("One", sheetData("<row r='1'><c r='A1'><v>1</v></c></row>"
                                     "<row r='4'><c r='B4'><v>2</v></c></row>"))
          .addSheet("Two", sheetData("<row r='1'><c r='A1'><v>1</v></c></row>")),
      options);
  EXPECT_EQ(picture.sheet(0).range, (TableRange{0, 0, 3, 2}));
  EXPECT_TRUE(picture.sheet(1).range.isEmpty());
  EXPECT_THAT(
      picture.get().findings,
      ElementsAre("One: what lies outside of A1:B3 is left out, since a picture has no more "
                  "than 6 positions",
                  "Two: is left out, since the picture has 6 positions without it, which is "
                  "the limit"));
}

TEST(BuildPicture, DrawsTheRangeThatIsChosen) {
  PictureOptions options;
  options.sheets = {{.sheet = 0, .range = TableRange{1, 1, 3, 4}}};
  BuiltPicture const picture(WorkbookBuilder().setSheet("<row r='1'><c r='A1'><v>1</v></c></row>"
                                                        "<row r='2'><c r='B2'><v>2</v></c></row>"),
                             options);
  EXPECT_EQ(picture.sheet().range, (TableRange{1, 1, 3, 4}));
  EXPECT_THAT(picture.sheet().cells, SizeIs(1));
  EXPECT_EQ(picture.textAt("B2"), "2");
  EXPECT_EQ(picture.at("B2").row, 0U);
}

TEST(BuildPicture, ChosenColumnsAreDrawnAsFarAsSomethingIsSeen) {
  PictureOptions options;
  options.sheets = {{.sheet = 0, .range = TableRange{0, 1, 1'048'576, 2}},
                    {.sheet = 0, .range = TableRange{1, 0, 2, 16'384}},
                    {.sheet = 0, .range = TableRange{5, 0, 1'048'576, 1}}};
  BuiltPicture const picture(WorkbookBuilder().setSheet("<row r='1'><c r='A1'><v>1</v></c></row>"
                                                        "<row r='3'><c r='B3'><v>2</v></c></row>"),
                             options);
  EXPECT_EQ(picture.sheet(0).range, (TableRange{0, 1, 3, 2}));
  EXPECT_EQ(picture.sheet(1).range, (TableRange{1, 0, 2, 2}));
  EXPECT_TRUE(picture.sheet(2).range.isEmpty());
}

TEST(BuildPicture, SheetsFromRightToLeftHaveTheirSidesAsTheyAreSeen) {
  BuiltPicture const picture(
      WorkbookBuilder()
          .setStyles(styles("", border("left", "thin", "FFFF0000"),
                            "<xf borderId='1'/><xf><alignment horizontal='right'/></xf>"))
          .addSheet("Sheet1",
                    "<sheetViews><sheetView rightToLeft='1'/></sheetViews>" +
                        sheetData("<row r='1'><c r='A1'><v>1</v></c><c r='B1' s='1'><v>1</v></c>"
                                  "</row><row r='2'><c r='C2' t='str'><v>a text that is longer"
                                  "</v></c><c r='E2'><v>1</v></c></row><row r='3'><c r='C3' "
                                  "t='str' s='2'><v>a text that is longer</v></c></row>")));
  EXPECT_EQ(picture.edgesAt("B1").right, (DOM::BorderLine{LineStyle::Thin, red}));
  EXPECT_EQ(picture.edgesAt("A1").left, (DOM::BorderLine{LineStyle::Thin, red}));
  EXPECT_EQ(picture.at("C2").freeRight, 2U);
  EXPECT_EQ(picture.at("C2").freeLeft, 0U);
  EXPECT_EQ(picture.at("C3").freeLeft, 2U);
  EXPECT_EQ(picture.at("C3").freeRight, 0U);
}

TEST(BuildPicture, SpendsFromTheBudget) {
  WorkBudget budget({.steps = 1'000});
  PictureOptions options;
  options.budget = &budget;
  options.sheets = {{.sheet = 0, .range = TableRange{0, 0, 1'000, 100}}};
  EXPECT_THROW(BuiltPicture(WorkbookBuilder().setSheet(""), options), WorkBudgetExceeded);
}

}  // namespace
}  // namespace Zorv::Render
