#include "words/StyleText.h"

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace Zorv::Words {
namespace {

DOM::CellStyle makeStyle(DOM::CellProps cell, DOM::RunProps run = {}, DOM::ParaProps para = {}) {
  DOM::CellStyle style;
  style.setCellProps(std::make_shared<DOM::CellProps const>(std::move(cell)));
  style.setRunProps(std::make_shared<DOM::RunProps const>(std::move(run)));
  style.setParaProps(std::make_shared<DOM::ParaProps const>(std::move(para)));
  return style;
}

constexpr DOM::Colour rose{255, 199, 206, 255};
constexpr DOM::Colour wine{156, 0, 6, 255};

TEST(StyleText, ColoursAreHexadecimal) {
  EXPECT_EQ(toText(rose), "#FFC7CE");
  EXPECT_EQ(toText(DOM::Colour{1, 2, 3, 128}), "#01020380");
}

TEST(StyleText, NothingSetIsNothing) {
  EXPECT_EQ(describe(DOM::CellStyle()), "nothing");
  EXPECT_EQ(describe(makeStyle({})), "nothing");
}

TEST(StyleText, TellsFillThenText) {
  auto const style = makeStyle({.fillPattern = DOM::FillPattern::Solid, .fillColour = rose},
                               {.colour = wine, .bold = true, .italic = false});
  EXPECT_EQ(describe(style), "fill #FFC7CE, text #9C0006, bold, not italic");
}

TEST(StyleText, PatternsOtherThanSolidAreNamed) {
  EXPECT_EQ(describe(makeStyle({.fillPattern = DOM::FillPattern::LightUp})), "pattern lightUp");
  EXPECT_EQ(describe(makeStyle({.fillPattern = DOM::FillPattern::None})), "pattern none");
}

TEST(StyleText, AGradientIsToldByItsColoursWhereItShows) {
  DOM::GradientFill const gradient{.degree = 90, .stops = {{0, rose}, {1, wine}}};
  EXPECT_EQ(toText(gradient), "#FFC7CE to #9C0006");
  EXPECT_EQ(describe(makeStyle({.fillPattern = DOM::FillPattern::Gradient,
                                .fillColour = wine,
                                .fillPatternColour = wine,
                                .fillGradient = gradient})),
            "gradient #FFC7CE to #9C0006");
  EXPECT_EQ(
      describe(makeStyle(
          {.fillPattern = DOM::FillPattern::Solid, .fillColour = wine, .fillGradient = gradient})),
      "fill #9C0006");
}

TEST(StyleText, FourEqualSidesAreOneFrame) {
  DOM::BorderLine const line{DOM::LineStyle::Dashed, wine};
  auto const framed =
      makeStyle({.borderLeft = line, .borderRight = line, .borderTop = line, .borderBottom = line});
  EXPECT_EQ(describe(framed), "border dashed #9C0006");
  auto const open = makeStyle({.borderLeft = line, .borderBottom = DOM::BorderLine{}});
  EXPECT_EQ(describe(open), "left border dashed #9C0006, bottom border none");
}

TEST(StyleText, TellsTextParagraphAndNumberFormat) {
  auto style = makeStyle({.verticalAlignment = DOM::VerticalAlignment::Center},
                         {.fontName = "Arial",
                          .fontSize = 10.5,
                          .underline = DOM::Underline::Double,
                          .strikethrough = true,
                          .verticalRun = DOM::VerticalRun::Superscript},
                         {.horizontalAlignment = DOM::HorizontalAlignment::CenterContinuous,
                          .indent = 2U,
                          .wrapText = true,
                          .textRotation = -45});
  style.setCellFormat(std::make_shared<DOM::CellFormat const>(DOM::CellFormat{"0.00"}));
  EXPECT_EQ(describe(style),
            "vertical align center, font Arial, size 10.5, underline double, strikethrough, script "
            "superscript, align centerContinuous, indent 2, wrap, rotate -45, format 0.00");
}

TEST(StyleText, ValuesOutsideTheirEnumerationAreUnknown) {
  EXPECT_EQ(toText(static_cast<DOM::LineStyle>(200)), "unknown");
}

}  // namespace
}  // namespace Zorv::Words
