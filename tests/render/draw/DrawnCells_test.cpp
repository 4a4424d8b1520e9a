#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

#include "render/draw/DrawnPng.h"
#include "render/draw/SheetBuilder.h"

namespace Zorv::DOM {

void PrintTo(Colour const& colour, std::ostream* stream) {
  *stream << '(' << +colour.red << ' ' << +colour.green << ' ' << +colour.blue << ')';
}

}  // namespace Zorv::DOM

namespace Zorv::Render::Tests {
namespace {

using DOM::Colour;
using DOM::HorizontalAlignment;
using DOM::LineStyle;

constexpr Colour white{255, 255, 255};
constexpr Colour black{0, 0, 0};
constexpr Colour red{255, 0, 0};
constexpr Colour blue{0, 0, 255};
constexpr Colour gridGrey{0xD4, 0xD4, 0xD4};

CellEdges boxOf(LineStyle style, Colour const& colour) {
  DOM::BorderLine const line{style, colour};
  return {line, line, line, line, {}, {}};
}

TEST(DrawnCells, GridLinesAreTheLastPixelsOfCells) {
  DrawnPng const drawn(SheetBuilder(2, 2).build());
  EXPECT_EQ(drawn.at(63, 10), gridGrey);
  EXPECT_EQ(drawn.at(64, 10), white);
  EXPECT_EQ(drawn.at(10, 19), gridGrey);
  EXPECT_EQ(drawn.at(10, 20), white);
  EXPECT_EQ(drawn.at(-1, -1), gridGrey);
  EXPECT_EQ(drawn.at(-2, -2), white);
}

TEST(DrawnCells, ASheetWithoutGridLinesHasNone) {
  SheetBuilder builder(2, 2);
  builder.sheet().showsGridLines = false;
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.inkIn(-2, -2, 130, 42), 0);
}

TEST(DrawnCells, AFillCoversItsCellWithTheGridLinesAroundIt) {
  SheetBuilder builder(3, 3);
  builder.fill(1, 1, red);
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(96, 30), red);
  EXPECT_EQ(drawn.at(63, 19), red);
  EXPECT_EQ(drawn.at(127, 39), red);
  EXPECT_EQ(drawn.at(62, 30), white);
  EXPECT_EQ(drawn.at(128, 30), white);
}

TEST(DrawnCells, NeighboursOfOneFillHaveNoGridLineBetweenThem) {
  SheetBuilder builder(1, 3);
  builder.fill(0, 0, red);
  builder.fill(0, 1, red);
  builder.fill(0, 2, blue);
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(63, 10), red);
  EXPECT_EQ(drawn.at(126, 10), red);
  EXPECT_EQ(drawn.at(128, 10), blue);
}

TEST(DrawnCells, AColourScaleLiesOverTheFill) {
  SheetBuilder builder(1, 1);
  builder.fill(0, 0, red).scaleColour = blue;
  EXPECT_EQ(DrawnPng(builder.build()).at(30, 10), blue);
}

TEST(DrawnCells, RowsAndColumnsHaveTheirLookWhereThereAreNoCells) {
  SheetBuilder builder(2, 3);
  builder.fill(1, 2, red);
  builder.fill(1, 1, blue);
  std::uint32_t const redLook = builder.cell(1, 2).look;
  std::uint32_t const blueLook = builder.cell(1, 1).look;
  builder.sheet().cells.clear();
  builder.sheet().rows[1].look = redLook;
  builder.sheet().columns[0].look = blueLook;
  builder.cell(1, 1).look = 0;
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(30, 10), blue);
  EXPECT_EQ(drawn.at(30, 30), red) << "the row counts before the column";
  EXPECT_EQ(drawn.at(96, 30), white) << "a cell has its own look";
  EXPECT_EQ(drawn.at(160, 30), red);
}

TEST(DrawnCells, AMergedCellHasNoGridLinesInside) {
  SheetBuilder builder(3, 3);
  PictureCell& merged = builder.cell(0, 0);
  merged.rowCount = 2;
  merged.columnCount = 2;
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.inkIn(0, 0, 127, 39), 0);
  EXPECT_EQ(drawn.at(127, 10), gridGrey);
  EXPECT_EQ(drawn.at(10, 39), gridGrey);
}

TEST(DrawnCells, AMergedCellIsDrawnAlsoWhereItsFirstRowIsFarAbove) {
  SheetBuilder builder(200, 2);
  builder.fill(0, 0, red).rowCount = 200;
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(30, 5), red);
  EXPECT_EQ(drawn.at(30, 3990), red);
}

struct LineWidthCase {
  LineStyle style;
  int width;
  int before;  ///< pixels before the edge
};

TEST(DrawnCells, SolidLinesAreAsWideAsTheirStyles) {
  for (auto const& [style, width, before] :
       {LineWidthCase{LineStyle::Thin, 1, 1}, LineWidthCase{LineStyle::Medium, 2, 1},
        LineWidthCase{LineStyle::Thick, 3, 2}}) {
    SheetBuilder builder(3, 3);
    builder.edges(1, 1, boxOf(style, red));
    DrawnPng const drawn(builder.build());
    for (int offset = -4; offset < 4; ++offset) {
      bool const isLine = -before <= offset && offset < width - before;
      EXPECT_EQ(drawn.at(64 + offset, 30) == red, isLine) << width << ' ' << offset;
      EXPECT_EQ(drawn.at(128 + offset, 30) == red, isLine) << width << ' ' << offset;
      EXPECT_EQ(drawn.at(96, 20 + offset) == red, isLine) << width << ' ' << offset;
      EXPECT_EQ(drawn.at(96, 40 + offset) == red, isLine) << width << ' ' << offset;
    }
  }
}

TEST(DrawnCells, ThickLinesFillTheirCorners) {
  SheetBuilder builder(3, 3);
  builder.edges(1, 1, boxOf(LineStyle::Thick, red));
  DrawnPng const drawn(builder.build());
  for (int const x : {62, 64, 126, 128}) {
    for (int const y : {18, 20, 38, 40}) {
      EXPECT_EQ(drawn.at(x, y), red) << x << ' ' << y;
    }
  }
  EXPECT_EQ(drawn.at(61, 18), white);
  EXPECT_EQ(drawn.at(129, 40), white);
}

TEST(DrawnCells, DoubleLinesOpenIntoEachOther) {
  SheetBuilder builder(2, 2);
  for (std::uint32_t const row : {0U, 1U}) {
    for (std::uint32_t const column : {0U, 1U}) {
      builder.edges(row, column, boxOf(LineStyle::Double, red));
    }
  }
  builder.sheet().showsGridLines = false;
  DrawnPng const drawn(builder.build());
  // Two lines with a gap of one pixel.
  EXPECT_EQ(drawn.at(30, 18), red);
  EXPECT_EQ(drawn.at(30, 19), white);
  EXPECT_EQ(drawn.at(30, 20), red);
  // The crossing is open in all directions.
  for (int offset = -4; offset < 4; ++offset) {
    EXPECT_EQ(drawn.at(63, 19 + offset), white) << offset;
    EXPECT_EQ(drawn.at(63 + offset, 19), white) << offset;
  }
  // The outer corner is closed, the gap goes round it.
  EXPECT_EQ(drawn.at(-2, -2), red);
  EXPECT_EQ(drawn.at(-1, -1), white);
  EXPECT_EQ(drawn.at(0, 0), red);
}

TEST(DrawnCells, DottedLinesHaveGaps) {
  SheetBuilder builder(3, 3);
  builder.edges(1, 1, boxOf(LineStyle::Hair, red));
  builder.sheet().showsGridLines = false;
  DrawnPng const drawn(builder.build());
  EXPECT_NEAR(drawn.inkIn(66, 19, 126, 20), 0.5, 0.05);
}

TEST(DrawnCells, ALineWithoutAColourIsBlack) {
  SheetBuilder builder(1, 1);
  CellEdges edges;
  edges.bottom.style = LineStyle::Thin;
  builder.edges(0, 0, edges);
  EXPECT_EQ(DrawnPng(builder.build()).at(30, 19), black);
}

TEST(DrawnCells, DiagonalsGoFromCornerToCorner) {
  SheetBuilder builder(1, 1, 64, 64);
  CellEdges edges;
  edges.diagonalDown = {LineStyle::Medium, red};
  builder.edges(0, 0, edges);
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(32, 32), red);
  EXPECT_EQ(drawn.at(8, 8), red);
  EXPECT_EQ(drawn.at(56, 8), white);
}

TEST(DrawnCells, APatternHasTheShareOfDotsOfItsName) {
  struct PatternCase {
    DOM::FillPattern pattern;
    double share;
  };
  using enum DOM::FillPattern;
  for (auto const& [pattern, share] :
       {PatternCase{MediumGray, 0.5}, PatternCase{DarkGray, 0.75}, PatternCase{LightGray, 0.25},
        PatternCase{DarkHorizontal, 0.5}, PatternCase{DarkVertical, 0.5},
        PatternCase{DarkDown, 0.5}, PatternCase{DarkUp, 0.5}, PatternCase{DarkGrid, 0.5},
        PatternCase{DarkTrellis, 0.75}, PatternCase{LightHorizontal, 0.25},
        PatternCase{LightVertical, 0.25}, PatternCase{LightDown, 0.25}, PatternCase{LightUp, 0.25},
        PatternCase{LightGrid, 0.4375}, PatternCase{LightTrellis, 0.375},
        PatternCase{Gray125, 0.125}, PatternCase{Gray0625, 0.0625}}) {
    SheetBuilder builder(1, 1, 80, 80);
    builder.look(0, 0, [&, drawn = pattern](Look& look) { look.fill = {drawn, white, blue, {}}; });
    EXPECT_NEAR(DrawnPng(builder.build()).inkIn(8, 8, 72, 72), share, 1e-9)
        << static_cast<int>(pattern);
  }
}

Look gradientLook(DOM::GradientType type, double degree) {
  Look look;
  look.fill.pattern = DOM::FillPattern::Gradient;
  look.fill.gradient.emplace();
  look.fill.gradient->type = type;
  look.fill.gradient->degree = degree;
  look.fill.gradient->left = look.fill.gradient->right = 0.5;
  look.fill.gradient->top = look.fill.gradient->bottom = 0.5;
  look.fill.gradient->stops = {{0, red}, {1, blue}};
  return look;
}

TEST(DrawnCells, ALinearGradientGoesAlongItsAngle) {
  SheetBuilder builder(1, 2, 64, 64);
  builder.look(0, 0, [](Look& look) { look = gradientLook(DOM::GradientType::Linear, 0); });
  builder.look(0, 1, [](Look& look) { look = gradientLook(DOM::GradientType::Linear, 90); });
  DrawnPng const drawn(builder.build());
  EXPECT_GT(drawn.at(2, 32).red, 240);
  EXPECT_GT(drawn.at(60, 32).blue, 240);
  EXPECT_EQ(drawn.at(32, 2), drawn.at(32, 60));
  EXPECT_GT(drawn.at(96, 2).red, 240);
  EXPECT_GT(drawn.at(96, 60).blue, 240);
}

TEST(DrawnCells, APathGradientGoesFromItsInnerRectangleOutwards) {
  SheetBuilder builder(1, 1, 64, 64);
  builder.look(0, 0, [](Look& look) { look = gradientLook(DOM::GradientType::Path, 0); });
  DrawnPng const drawn(builder.build());
  EXPECT_GT(drawn.at(32, 32).red, 230);
  for (auto const& [x, y] : {std::pair{1, 32}, {62, 32}, {32, 1}, {32, 62}}) {
    EXPECT_GT(drawn.at(x, y).blue, 230) << x << ' ' << y;
  }
}

Visuals::DataBar makeBar() {
  Visuals::DataBar bar;
  bar.fill = blue;
  bar.negativeFill = red;
  bar.axisColour = black;
  bar.isGradient = false;
  return bar;
}

PictureCell& addBar(SheetBuilder& builder, Visuals::DataBar const& bar, bool isNegative) {
  PictureCell& cell = builder.cell(0, 0);
  cell.bar = Visuals::ShownBar{0, {0.25, 0.75, std::nullopt}, isNegative, &bar};
  return cell;
}

/// The room for bars in a cell of 105 pixels begins at 2 and ends at 102.
TEST(DrawnCells, ABarBeginsAndEndsAtItsPartsOfTheWidth) {
  Visuals::DataBar const bar = makeBar();
  SheetBuilder builder(1, 1, 20, 105);
  addBar(builder, bar, false);
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(26, 10), white);
  EXPECT_EQ(drawn.at(27, 10), blue);
  EXPECT_EQ(drawn.at(76, 10), blue);
  EXPECT_EQ(drawn.at(77, 10), white);
}

TEST(DrawnCells, ABarFromTheRightIsMirrored) {
  Visuals::DataBar bar = makeBar();
  bar.direction = Visuals::BarDirection::RightToLeft;
  SheetBuilder builder(1, 1, 20, 105);
  addBar(builder, bar, false).bar->extent = {0, 0.25, std::nullopt};
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(76, 10), white);
  EXPECT_EQ(drawn.at(77, 10), blue);
  EXPECT_EQ(drawn.at(101, 10), blue);
}

TEST(DrawnCells, BarsFollowTheDirectionOfTheSheet) {
  Visuals::DataBar const bar = makeBar();
  SheetBuilder builder(1, 1, 20, 105);
  builder.sheet().rightToLeft = true;
  addBar(builder, bar, false).bar->extent = {0, 0.25, std::nullopt};
  EXPECT_EQ(DrawnPng(builder.build()).at(90, 10), blue);
}

TEST(DrawnCells, ABarOfANegativeNumberHasItsColourAndAnAxis) {
  Visuals::DataBar const bar = makeBar();
  SheetBuilder builder(1, 1, 20, 105);
  addBar(builder, bar, true).bar->extent = {0.25, 0.75, 0.75};
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(50, 10), red);
  EXPECT_NEAR(drawn.inkIn(76, 0, 77, 19), 1, 0.5);
}

TEST(DrawnCells, AGradientBarFadesToItsEnd) {
  Visuals::DataBar bar = makeBar();
  bar.isGradient = true;
  SheetBuilder builder(1, 1, 20, 105);
  addBar(builder, bar, false);
  DrawnPng const drawn(builder.build());
  EXPECT_LT(drawn.at(28, 10).red, 20);
  EXPECT_GT(drawn.at(75, 10).red, 200);
}

TEST(DrawnCells, AnIconStandsAtTheLeftAndTextMakesRoomForIt) {
  SheetBuilder builder(1, 2);
  builder.text(0, 0, "mm").icon = Visuals::Icon{Visuals::IconSetName::TrafficLights3One, 2};
  builder.cell(0, 1).icon = Visuals::Icon{Visuals::IconSetName::TrafficLights3One, 2};
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(5, 10), (Colour{0x34, 0xA8, 0x53}));
  EXPECT_EQ(drawn.at(69, 10), (Colour{0x34, 0xA8, 0x53}));
  for (int y = 0; y < 19; ++y) {
    for (int x = 0; x < 18; ++x) {
      ASSERT_EQ(drawn.at(x, y), drawn.at(x + 64, y)) << "the text begins behind the icon";
    }
  }
}

TEST(DrawnCells, ARightToLeftSheetHasItsFirstColumnAtTheRight) {
  SheetBuilder builder(1, 3);
  builder.sheet().rightToLeft = true;
  builder.fill(0, 0, red);
  builder.fill(0, 2, blue);
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(160, 10), red);
  EXPECT_EQ(drawn.at(30, 10), blue);
}

}  // namespace
}  // namespace Zorv::Render::Tests
