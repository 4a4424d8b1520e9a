#include <gtest/gtest.h>

#include "render/draw/DrawnPng.h"
#include "render/draw/SheetBuilder.h"

namespace Zorv::Render::Tests {
namespace {

using DOM::HorizontalAlignment;
using DOM::VerticalAlignment;

/// A row of cells of 64 x 20 pixels without grid lines.
SheetBuilder makeRow(std::uint32_t columns, double height = 20) {
  SheetBuilder builder(1, columns, height);
  builder.sheet().showsGridLines = false;
  return builder;
}

std::string const wide = "mmmmmmmmmmmm";

TEST(DrawnTexts, ATextStaysInItsCell) {
  SheetBuilder builder = makeRow(3);
  builder.text(0, 1, wide);
  DrawnPng const drawn(builder.build());
  EXPECT_GT(drawn.inkIn(64, 0, 128, 20), 0.1);
  EXPECT_EQ(drawn.inkIn(-2, 0, 64, 20), 0);
  EXPECT_EQ(drawn.inkIn(128, 0, 194, 20), 0);
}

TEST(DrawnTexts, ATextRunsOverFreeNeighboursAndNoFurther) {
  struct OverrunCase {
    HorizontalAlignment horizontal;
    std::uint32_t freeLeft;
    std::uint32_t freeRight;
  };
  for (auto const& [horizontal, freeLeft, freeRight] :
       {OverrunCase{HorizontalAlignment::Left, 0, 1}, OverrunCase{HorizontalAlignment::Right, 1, 0},
        OverrunCase{HorizontalAlignment::Center, 1, 1}}) {
    SheetBuilder builder = makeRow(5);
    PictureCell& cell = builder.text(0, 2, wide + wide + wide);
    cell.horizontal = horizontal;
    cell.freeLeft = freeLeft;
    cell.freeRight = freeRight;
    DrawnPng const drawn(builder.build());
    EXPECT_GT(drawn.inkIn(128, 0, 192, 20), 0.1);
    EXPECT_EQ(drawn.inkIn(64, 0, 128, 20) > 0.1, freeLeft > 0);
    EXPECT_EQ(drawn.inkIn(192, 0, 256, 20) > 0.1, freeRight > 0);
    EXPECT_EQ(drawn.inkIn(0, 0, 64, 20), 0);
    EXPECT_EQ(drawn.inkIn(256, 0, 320, 20), 0);
  }
}

TEST(DrawnTexts, FreeNeighboursAreThoseSeenAtItsSidesInASheetFromRightToLeft) {
  SheetBuilder builder = makeRow(3);
  builder.sheet().rightToLeft = true;
  PictureCell& cell = builder.text(0, 1, wide);
  cell.horizontal = HorizontalAlignment::Right;
  cell.freeLeft = 1;
  DrawnPng const drawn(builder.build());
  EXPECT_GT(drawn.inkIn(0, 0, 64, 20), 0.05);
  EXPECT_EQ(drawn.inkIn(128, 0, 192, 20), 0);
}

TEST(DrawnTexts, ATextThatRunsOverHidesTheGridLinesBelowIt) {
  SheetBuilder builder(1, 3);
  builder.text(0, 0, "x" + std::string(20, ' ') + "x").freeRight = 2;
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.at(63, 2), (DOM::Colour{255, 255, 255}));
  EXPECT_NE(drawn.at(127, 2), (DOM::Colour{255, 255, 255}));
}

TEST(DrawnTexts, TextsLieWhereTheyAreAligned) {
  struct AlignmentCase {
    HorizontalAlignment horizontal;
    double left;
    double right;
  };
  for (auto const& [horizontal, left, right] :
       {AlignmentCase{HorizontalAlignment::Left, 0, 24},
        AlignmentCase{HorizontalAlignment::Center, 20, 44},
        AlignmentCase{HorizontalAlignment::Right, 40, 64}}) {
    SheetBuilder builder = makeRow(1);
    builder.text(0, 0, "m").horizontal = horizontal;
    DrawnPng const drawn(builder.build());
    EXPECT_GT(drawn.inkIn(left, 0, right, 20), 0.02) << left;
    EXPECT_EQ(drawn.inkIn(0, 0, left, 20), 0) << left;
    EXPECT_EQ(drawn.inkIn(right, 0, 64, 20), 0) << left;
  }
}

TEST(DrawnTexts, TextsLieAtTheirHeight) {
  struct HeightCase {
    VerticalAlignment vertical;
    double top;
    double bottom;
  };
  for (auto const& [vertical, top, bottom] :
       {HeightCase{VerticalAlignment::Top, 0, 20}, HeightCase{VerticalAlignment::Center, 30, 50},
        HeightCase{VerticalAlignment::Bottom, 60, 80}}) {
    for (char const* const text : {"mm", "םםם"}) {
      SheetBuilder builder = makeRow(1, 80);
      builder.text(0, 0, text);
      builder.look(0, 0, [place = vertical](Look& look) { look.vertical = place; });
      DrawnPng const drawn(builder.build());
      EXPECT_GT(drawn.inkIn(0, top, 64, bottom), 0.02) << top << text;
      EXPECT_EQ(drawn.inkIn(0, 0, 64, top), 0) << top << text;
      EXPECT_EQ(drawn.inkIn(0, bottom, 64, 80), 0) << top << text;
    }
  }
}

TEST(DrawnTexts, AnIndentMovesATextFromItsEdge) {
  SheetBuilder builder = makeRow(1);
  builder.text(0, 0, "m");
  builder.look(0, 0, [](Look& look) { look.indent = 30; });
  DrawnPng const drawn(builder.build());
  EXPECT_EQ(drawn.inkIn(0, 0, 32, 20), 0);
  EXPECT_GT(drawn.inkIn(32, 0, 56, 20), 0.02);
}

TEST(DrawnTexts, AWrappedTextGoesOnBelow) {
  SheetBuilder builder = makeRow(1, 80);
  builder.text(0, 0, "mmmm mmmm mmmm");
  builder.look(0, 0, [](Look& look) {
    look.wraps = true;
    look.vertical = VerticalAlignment::Top;
  });
  DrawnPng const drawn(builder.build());
  for (double const top : {0.0, 19.0, 37.0}) {
    EXPECT_GT(drawn.inkIn(0, top, 64, top + 17), 0.05) << top;
  }
  EXPECT_EQ(drawn.inkIn(0, 58, 64, 80), 0);
}

TEST(DrawnTexts, OfTooManyLinesTheFirstOnesAreSeen) {
  SheetBuilder builder = makeRow(1, 20);
  builder.text(0, 0, "m\n\n\n");
  builder.look(0, 0, [](Look& look) { look.wraps = true; });
  EXPECT_GT(DrawnPng(builder.build()).inkIn(0, 0, 20, 20), 0.05);
}

TEST(DrawnTexts, JustifiedLinesReachBothEdges) {
  for (HorizontalAlignment const horizontal :
       {HorizontalAlignment::Justify, HorizontalAlignment::Distributed}) {
    SheetBuilder builder = makeRow(1, 40);
    builder.text(0, 0, "m m mm m m").horizontal = horizontal;
    DrawnPng const drawn(builder.build());
    EXPECT_GT(drawn.inkIn(2, 2, 14, 20), 0);
    EXPECT_GT(drawn.inkIn(50, 2, 62, 20), 0);
    EXPECT_EQ(drawn.inkIn(50, 22, 62, 40) > 0, horizontal == HorizontalAlignment::Distributed)
        << "the last line";
  }
}

TEST(DrawnTexts, AFillRepeatsTheTextAsOftenAsItFits) {
  SheetBuilder builder = makeRow(1);
  builder.text(0, 0, "mm").horizontal = HorizontalAlignment::Fill;
  DrawnPng const drawn(builder.build());
  EXPECT_GT(drawn.inkIn(2, 0, 26, 20), 0.05);
  EXPECT_GT(drawn.inkIn(26, 0, 50, 20), 0.05);
  EXPECT_EQ(drawn.inkIn(51, 0, 64, 20), 0);
}

TEST(DrawnTexts, ATextIsCentredAcrossItsSelection) {
  SheetBuilder builder = makeRow(3);
  PictureCell& cell = builder.text(0, 0, "m");
  cell.horizontal = HorizontalAlignment::CenterContinuous;
  cell.freeRight = 2;
  DrawnPng const drawn(builder.build());
  EXPECT_GT(drawn.inkIn(84, 0, 108, 20), 0.02);
  EXPECT_EQ(drawn.inkIn(0, 0, 84, 20), 0);
}

TEST(DrawnTexts, AShrunkTextFitsItsCell) {
  SheetBuilder builder = makeRow(2);
  builder.text(0, 0, wide);
  builder.look(0, 0, [](Look& look) { look.shrinksToFit = true; });
  DrawnPng const drawn(builder.build());
  EXPECT_GT(drawn.inkIn(50, 0, 62, 20), 0.02) << "its end is seen";
  EXPECT_EQ(drawn.inkIn(62, 0, 128, 20), 0);
}

TEST(DrawnTexts, ATurnedTextStandsUpright) {
  for (int const rotation : {90, -90}) {
    SheetBuilder builder = makeRow(1, 80);
    builder.text(0, 0, "mmmm");
    builder.look(0, 0, [&](Look& look) { look.rotation = rotation; });
    DrawnPng const drawn(builder.build());
    EXPECT_GT(drawn.inkIn(0, 30, 20, 80), 0.1);
    EXPECT_EQ(drawn.inkIn(22, 0, 64, 80), 0);
  }
}

TEST(DrawnTexts, AStackedTextHasALetterALine) {
  SheetBuilder builder = makeRow(1, 80);
  builder.text(0, 0, "mmm");
  builder.look(0, 0, [](Look& look) {
    look.isStacked = true;
    look.vertical = VerticalAlignment::Top;
  });
  DrawnPng const drawn(builder.build());
  EXPECT_GT(drawn.inkIn(0, 40, 20, 56), 0.02);
  EXPECT_EQ(drawn.inkIn(20, 0, 64, 80), 0);
}

TEST(DrawnTexts, ATextInTwoPiecesStandsAtBothEdges) {
  SheetBuilder builder = makeRow(1);
  builder.text(0, 0, "mm").splitAt = 1;
  builder.cell(0, 0).horizontal = HorizontalAlignment::Center;
  DrawnPng const drawn(builder.build());
  EXPECT_GT(drawn.inkIn(2, 0, 16, 20), 0.02);
  EXPECT_GT(drawn.inkIn(48, 0, 62, 20), 0.02);
  EXPECT_EQ(drawn.inkIn(18, 0, 46, 20), 0);
}

/// Does the rectangle hold a pixel whose parts tell such a colour?
bool holdsColour(DrawnPng const& drawn, double left, double right, DOM::Colour const& like) {
  for (double y = 0; y < 20; ++y) {
    for (double x = left; x < right; ++x) {
      DOM::Colour const seen = drawn.at(x, y);
      auto const differ = [](std::uint8_t a, std::uint8_t b) { return a > b + 60 || b > a + 60; };
      if (!differ(seen.red, like.red) && !differ(seen.green, like.green) &&
          !differ(seen.blue, like.blue)) {
        return true;
      }
    }
  }
  return false;
}

TEST(DrawnTexts, TheColourOfTheNumberFormatCountsBeforeThatOfTheFont) {
  SheetBuilder builder = makeRow(2);
  builder.text(0, 0, "III").textColour = DOM::Colour{255, 0, 0};
  builder.text(0, 1, "III");
  builder.look(0, 1, [](Look& look) { look.font.colour = {0, 0, 255}; });
  DrawnPng const drawn(builder.build(), {.scale = 3});
  EXPECT_TRUE(holdsColour(drawn, 0, 64, {255, 0, 0}));
  EXPECT_TRUE(holdsColour(drawn, 64, 128, {0, 0, 255}));
  EXPECT_FALSE(holdsColour(drawn, 0, 128, {0, 0, 0}));
}

TEST(DrawnTexts, RunsHaveTheirOwnFonts) {
  SheetBuilder builder = makeRow(2);
  builder.text(0, 0, "IIII").runs = 1;
  Font redFont = builder.sheet().looks[0].font;
  redFont.colour = {255, 0, 0};
  builder.sheet().richTexts.push_back({{"II", redFont}, {"II", builder.sheet().looks[0].font}});
  DrawnPng const drawn(builder.build(), {.scale = 3});
  EXPECT_TRUE(holdsColour(drawn, 0, 10, {255, 0, 0}));
  EXPECT_FALSE(holdsColour(drawn, 12, 64, {255, 0, 0}));
  EXPECT_TRUE(holdsColour(drawn, 10, 64, {0, 0, 0}));
}

TEST(DrawnTexts, LinesBelowAndThroughATextAreDrawn) {
  struct DecorationCase {
    DOM::Underline underline;
    bool strikethrough;
    int lines;
  };
  using enum DOM::Underline;
  for (auto const& [underline, strikethrough, lines] :
       {DecorationCase{None, false, 0}, DecorationCase{Single, false, 1},
        DecorationCase{Double, false, 2}, DecorationCase{SingleAccounting, false, 1},
        DecorationCase{DoubleAccounting, false, 2}, DecorationCase{None, true, 1}}) {
    SheetBuilder builder = makeRow(1, 40);
    builder.text(0, 0, "    ");
    builder.look(0, 0, [below = underline, through = strikethrough](Look& look) {
      look.font.underline = below;
      look.font.strikethrough = through;
      look.font.size = 14;
    });
    DrawnPng const drawn(builder.build());
    int seen = 0;
    for (int y = 0; y < 40; ++y) {
      seen += drawn.inkIn(4, y, 12, y + 1) == 1 ? 1 : 0;
    }
    EXPECT_EQ(seen, lines) << static_cast<int>(underline);
  }
}

TEST(DrawnTexts, SuperscriptStandsHigherThanSubscriptAndBothAreSmaller) {
  auto const topOf = [](DOM::VerticalRun run) {
    SheetBuilder builder = makeRow(1, 40);
    builder.text(0, 0, "mm");
    builder.look(0, 0, [&](Look& look) { look.font.verticalRun = run; });
    DrawnPng const drawn(builder.build());
    int y = 0;
    while (y < 40 && drawn.inkIn(0, y, 64, y + 1) == 0) {
      ++y;
    }
    return y;
  };
  EXPECT_LT(topOf(DOM::VerticalRun::Superscript), topOf(DOM::VerticalRun::Baseline));
  EXPECT_GT(topOf(DOM::VerticalRun::Subscript), topOf(DOM::VerticalRun::Baseline));
}

TEST(DrawnTexts, EveryScriptIsDrawn) {
  for (char const* const text :
       {"Žluťoučký kůň", "Ελληνικά", "Кириллица", "שלום", "مرحبا", "e\xCC\x81"}) {
    SheetBuilder builder = makeRow(2);
    builder.text(0, 0, text).freeRight = 1;
    EXPECT_GT(DrawnPng(builder.build()).inkIn(0, 0, 64, 20), 0.01) << text;
  }
}

}  // namespace
}  // namespace Zorv::Render::Tests
