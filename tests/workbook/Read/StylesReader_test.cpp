#include "workbook/Read/StylesReader.h"

#include <gtest/gtest.h>

#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using DOM::Colour;
using DOM::FillPattern;
using TestSupport::WorkbookBuilder;

constexpr Colour red{255, 0, 0, 255};

/// The named style that a differential format becomes.
DOM::NamedTableStyle differentialStyle(std::string const& inner) {
  Document const document = WorkbookBuilder()
                                .setStyles("<dxfs><dxf>" + inner + "</dxf></dxfs>")
                                .setRules("A1", "<cfRule type='uniqueValues' dxfId='0'/>")
                                .load();
  return TestSupport::styleOf(document, 0);
}

DOM::CellProps fill(std::string const& pattern) {
  return *differentialStyle("<fill>" + pattern + "</fill>").getCellProps();
}

TEST(DifferentialFormats, FontsSetWhatTheyName) {
  auto const style = differentialStyle(
      "<font><b/><i val='0'/><strike val='1'/><u/><vertAlign val='superscript'/><sz val='9.5'/>"
      "<color rgb='FFFF0000'/><name val='Arial'/></font>");
  DOM::RunProps const& run = *style.getRunProps();
  EXPECT_EQ(run.bold, true);
  EXPECT_EQ(run.italic, false);
  EXPECT_EQ(run.strikethrough, true);
  EXPECT_EQ(run.underline, DOM::Underline::Single);
  EXPECT_EQ(run.verticalRun, DOM::VerticalRun::Superscript);
  EXPECT_EQ(run.fontSize, 9.5);
  EXPECT_EQ(run.colour, red);
  EXPECT_EQ(run.fontName, "Arial");
  EXPECT_FALSE(style.getCellProps());
  EXPECT_FALSE(style.getParaProps());
  EXPECT_FALSE(style.getCellFormat());
}

TEST(DifferentialFormats, WhatAFontDoesNotNameStaysUnset) {
  auto const style = differentialStyle("<font><u val='double'/></font>");
  EXPECT_EQ(style.getRunProps()->underline, DOM::Underline::Double);
  EXPECT_FALSE(style.getRunProps()->bold);
  EXPECT_FALSE(style.getRunProps()->colour);
}

TEST(DifferentialFormats, TheColourOfASolidFillStandsInTheBackground) {
  for (char const* pattern :
       {"<patternFill><bgColor rgb='FFFF0000'/></patternFill>",
        "<patternFill patternType='solid'><bgColor rgb='FFFF0000'/></patternFill>",
        "<patternFill patternType='solid'><fgColor rgb='FF00FF00'/><bgColor rgb='FFFF0000'/>"
        "</patternFill>",
        "<patternFill patternType='solid'><fgColor rgb='FFFF0000'/></patternFill>"}) {
    auto const props = fill(pattern);
    EXPECT_EQ(props.fillPattern, FillPattern::Solid) << pattern;
    EXPECT_EQ(props.fillColour, red) << pattern;
    EXPECT_FALSE(props.fillPatternColour) << pattern;
  }
}

TEST(DifferentialFormats, PatternsHaveTwoColours) {
  auto const props = fill(
      "<patternFill patternType='lightGrid'><fgColor rgb='FF00FF00'/>"
      "<bgColor rgb='FFFF0000'/></patternFill>");
  EXPECT_EQ(props.fillPattern, FillPattern::LightGrid);
  EXPECT_EQ(props.fillColour, red);
  EXPECT_EQ(props.fillPatternColour, (Colour{0, 255, 0, 255}));
}

TEST(DifferentialFormats, NoFillIsSetAndHasNoColour) {
  auto const props = fill("<patternFill patternType='none'><bgColor auto='1'/></patternFill>");
  EXPECT_EQ(props.fillPattern, FillPattern::None);
  EXPECT_FALSE(props.fillColour);
}

TEST(DifferentialFormats, AnAutomaticBackgroundIsPaper) {
  EXPECT_EQ(fill("<patternFill><bgColor auto='1'/></patternFill>").fillColour,
            (Colour{255, 255, 255, 255}));
}

TEST(DifferentialFormats, AGradientKeepsItsAngleAndItsColours) {
  auto const props = fill(
      "<gradientFill degree='90'><stop position='0'><color rgb='FFFF0000'/></stop>"
      "<stop position='1'><color rgb='FF00FF00'/></stop></gradientFill>");
  EXPECT_EQ(props.fillPattern, FillPattern::Gradient);
  EXPECT_FALSE(props.fillColour);
  DOM::GradientFill const expected{.degree = 90, .stops = {{0, red}, {1, Colour{0, 255, 0, 255}}}};
  EXPECT_EQ(props.fillGradient, expected);
}

TEST(DifferentialFormats, AGradientAlongAPathKeepsItsInnerRectangle) {
  auto const props = fill(
      "<gradientFill type='path' left='0.25' right='0.75' top='0.5' bottom='1' degree='9'>"
      "<stop position='0.5'><color rgb='FFFF0000'/></stop></gradientFill>");
  DOM::GradientFill const expected{.type = DOM::GradientType::Path,
                                   .left = 0.25,
                                   .right = 0.75,
                                   .top = 0.5,
                                   .bottom = 1,
                                   .stops = {{0.5, red}}};
  EXPECT_EQ(props.fillGradient, expected);
}

TEST(DifferentialFormats, AGradientWithoutColoursSetsNothing) {
  EXPECT_FALSE(differentialStyle("<fill><gradientFill><stop position='0'/></gradientFill></fill>")
                   .getCellProps());
}

TEST(DifferentialFormats, ColoursThatAreNoneAreLeftOutAndTold) {
  Document const document = WorkbookBuilder()
                                .setStyles(
                                    "<dxfs><dxf><font><color rgb='red'/></font><fill><patternFill>"
                                    "<bgColor theme='99'/></patternFill></fill></dxf>"
                                    "<dxf><font><color theme='4' tint='NaN'/></font></dxf></dxfs>")
                                .setRules("A1", "<cfRule type='uniqueValues' dxfId='1'/>")
                                .load();
  EXPECT_EQ(TestSupport::styleOf(document, 0).getRunProps()->colour,
            (Colour{0x4F, 0x81, 0xBD, 255}));
  ASSERT_EQ(document.getFindings().size(), 1U);
  EXPECT_EQ(document.getFindings()[0].part, "xl/styles.xml");
  EXPECT_EQ(document.getFindings()[0].message,
            "3 colours of formats cannot be read and are left out, this one first: rgb=\"red\"");
}

TEST(DifferentialFormats, MoreFormatsThanTheLimitAreRefused) {
  LoadOptions options;
  options.limits.formats = 2;
  auto const message = [&options](char const* styles) {
    return WorkbookBuilder().setStyles(styles).setSheet("").loadMessage(options);
  };
  EXPECT_EQ(message("<cellXfs><xf/><xf/></cellXfs><dxfs><dxf/><dxf/></dxfs>"), "");
  char const* const refusal =
      "xl/styles.xml: the workbook has more than 2 fonts, fills, borders, cell formats or "
      "differential formats, which is the limit";
  EXPECT_EQ(message("<cellXfs><xf/><xf/><xf/></cellXfs>"), refusal);
  EXPECT_EQ(message("<dxfs><dxf/><dxf/><dxf/></dxfs>"), refusal);
  EXPECT_EQ(message("<fills><fill/><fill/><fill/></fills>"), refusal);
}

TEST(DifferentialFormats, BordersSetTheLinesThatHaveAStyle) {
  auto const style = differentialStyle(
      "<border diagonalUp='1'><left style='thin'><color rgb='FFFF0000'/></left><right/>"
      "<top style='none'/><bottom style='double'/><diagonal style='hair'/></border>");
  DOM::CellProps const& cell = *style.getCellProps();
  EXPECT_EQ(cell.borderLeft, (DOM::BorderLine{DOM::LineStyle::Thin, red}));
  EXPECT_FALSE(cell.borderRight);
  EXPECT_EQ(cell.borderTop, (DOM::BorderLine{DOM::LineStyle::None, std::nullopt}));
  EXPECT_EQ(cell.borderBottom, (DOM::BorderLine{DOM::LineStyle::Double, std::nullopt}));
  EXPECT_EQ(cell.borderDiagonalUp, (DOM::BorderLine{DOM::LineStyle::Hair, std::nullopt}));
  EXPECT_FALSE(cell.borderDiagonalDown);
}

TEST(DifferentialFormats, StrictDocumentsNameSidesByTheDirectionOfWriting) {
  auto const style =
      differentialStyle("<border><start style='thin'/><end style='thick'/></border>");
  EXPECT_EQ(style.getCellProps()->borderLeft->style, DOM::LineStyle::Thin);
  EXPECT_EQ(style.getCellProps()->borderRight->style, DOM::LineStyle::Thick);
}

TEST(DifferentialFormats, AlignmentAndProtectionAreRead) {
  auto const style = differentialStyle(
      "<alignment horizontal='center' vertical='top' textRotation='135' wrapText='1' indent='2' "
      "shrinkToFit='0' readingOrder='1'/><protection locked='0' hidden='1'/>");
  DOM::ParaProps const& para = *style.getParaProps();
  EXPECT_EQ(para.horizontalAlignment, DOM::HorizontalAlignment::Center);
  EXPECT_EQ(para.textRotation, -45);
  EXPECT_EQ(para.wrapText, true);
  EXPECT_EQ(para.indent, 2U);
  EXPECT_EQ(para.shrinkToFit, false);
  EXPECT_EQ(para.readingOrder, 1U);
  EXPECT_EQ(style.getCellProps()->verticalAlignment, DOM::VerticalAlignment::Top);
  EXPECT_EQ(style.getCellProps()->locked, false);
  EXPECT_EQ(style.getCellProps()->hidden, true);
}

TEST(DifferentialFormats, NumberFormatsAreCodesOrBuiltIn) {
  EXPECT_EQ(differentialStyle("<numFmt numFmtId='170' formatCode='0.000'/>").getCellFormat()->code,
            "0.000");
  EXPECT_EQ(differentialStyle("<numFmt numFmtId='14'/>").getCellFormat()->code, "mm-dd-yy");
  EXPECT_FALSE(differentialStyle("<numFmt numFmtId='999'/>").getCellFormat());
}

TEST(DifferentialFormats, ThemeColoursComeFromTheWorkbooksTheme) {
  Document const document =
      WorkbookBuilder()
          .addRelationship("theme", "/xl/theme/theme1.xml")
          .setPart("xl/theme/theme1.xml",
                   "<d:theme xmlns:d='http://schemas.openxmlformats.org/drawingml/2006/main'>"
                   "<d:themeElements><d:clrScheme><d:accent1><d:srgbClr val='FF0000'/></d:accent1>"
                   "</d:clrScheme></d:themeElements></d:theme>")
          .setStyles("<dxfs><dxf><font><color theme='4'/></font></dxf></dxfs>")
          .setRules("A1", "<cfRule type='uniqueValues' dxfId='0'/>")
          .load();
  EXPECT_EQ(TestSupport::styleOf(document, 0).getRunProps()->colour, red);
}

TEST(DifferentialFormats, IndexedColoursComeFromTheWorkbooksPalette) {
  Document const document =
      WorkbookBuilder()
          .setStyles(
              "<dxfs><dxf><font><color indexed='0'/></font></dxf></dxfs>"
              "<colors><indexedColors><rgbColor rgb='00FF0000'/></indexedColors></colors>")
          .setRules("A1", "<cfRule type='uniqueValues' dxfId='0'/>")
          .load();
  EXPECT_EQ(TestSupport::styleOf(document, 0).getRunProps()->colour, red);
}

DOM::CellStyle cellStyle(std::string const& styles) {
  Document const document =
      WorkbookBuilder().setStyles(styles).setSheet("<row r='1'><c r='A1' s='1'/></row>").load();
  return **document.getSheets()[0].table->findCell(0, 0)->style;
}

TEST(CellFormats, TheColourOfASolidFillStandsInTheForeground) {
  auto const style = cellStyle(
      "<fills><fill><patternFill patternType='solid'><fgColor rgb='FFFF0000'/>"
      "<bgColor indexed='64'/></patternFill></fill></fills><cellXfs><xf/><xf "
      "fillId='0'/></cellXfs>");
  EXPECT_EQ(style.getCellProps()->fillPattern, FillPattern::Solid);
  EXPECT_EQ(style.getCellProps()->fillColour, red);
}

TEST(CellFormats, PatternsLieOverTheBackground) {
  auto const style = cellStyle(
      "<fills><fill><patternFill patternType='gray125'><fgColor rgb='FF00FF00'/>"
      "<bgColor rgb='FFFF0000'/></patternFill></fill></fills><cellXfs><xf/><xf "
      "fillId='0'/></cellXfs>");
  EXPECT_EQ(style.getCellProps()->fillColour, red);
  EXPECT_EQ(style.getCellProps()->fillPatternColour, (Colour{0, 255, 0, 255}));
}

TEST(CellFormats, MissingNumbersComeFromTheFormatOnWhichTheyAreBased) {
  auto const style = cellStyle(
      "<numFmts><numFmt numFmtId='170' formatCode='0.0'/></numFmts>"
      "<fonts><font/><font><b/></font></fonts><cellStyleXfs><xf/><xf fontId='1' numFmtId='170'>"
      "<alignment horizontal='right'/></xf></cellStyleXfs><cellXfs><xf/><xf xfId='1'/></cellXfs>");
  EXPECT_EQ(style.getRunProps()->bold, true);
  EXPECT_EQ(style.getCellFormat()->code, "0.0");
  EXPECT_EQ(style.getParaProps()->horizontalAlignment, DOM::HorizontalAlignment::Right);
}

TEST(CellFormats, NumbersThatLeadNowhereSetNothing) {
  auto const style = cellStyle("<cellXfs><xf/><xf fontId='7' fillId='-1' borderId='x'/></cellXfs>");
  EXPECT_FALSE(style.getRunProps());
  EXPECT_FALSE(style.getCellProps());
}

}  // namespace
}  // namespace Zorv::Workbook
