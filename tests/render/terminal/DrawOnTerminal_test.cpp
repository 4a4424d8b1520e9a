#include "render/Terminal/DrawOnTerminal.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TerminalPicture.h"
#include "Utils/WorkBudget.h"

namespace Zorv::Render {
namespace {

using DOM::HorizontalAlignment;
using DOM::LineStyle;
using testing::HasSubstr;
using testing::Not;
using TestSupport::TerminalPicture;

TEST(DrawOnTerminal, TextsAndNumbersStandUnderTheirLetters) {
  TerminalPicture picture(3, 3);
  picture.add(0, 0, "Month");
  picture.add(0, 1, "Sales");
  picture.add(2, 0, "June");
  picture.add(2, 1, "1,280.50", CellContent::Number);
  picture.add(2, 2, "paid");
  EXPECT_EQ(picture.draw(),
            "      A        B        C\n"
            "1 Month    Sales\n"
            "2\n"
            "3 June     1,280.50 paid\n");
}

TEST(DrawOnTerminal, ASheetWithoutCellsIsItsHeadings) {
  EXPECT_EQ(TerminalPicture(1, 2).draw(), "      A        B\n1\n");
  EXPECT_EQ(TerminalPicture(0, 0).draw(), "\n");
}

TEST(DrawOnTerminal, AlignmentAndIndentCount) {
  TerminalPicture picture(5, 1);
  picture.add(0, 0, "ab").horizontal = HorizontalAlignment::Right;
  picture.add(1, 0, "ab").horizontal = HorizontalAlignment::Center;
  picture.lookOf(picture.add(2, 0, "ab")).indent = 14;
  picture.add(3, 0, "ab").horizontal = HorizontalAlignment::Fill;
  picture.lookOf(picture.add(4, 0, "12", CellContent::Number)).indent = 7;
  EXPECT_EQ(picture.draw(),
            "      A\n"
            "1       ab\n"
            "2    ab\n"
            "3   ab\n"
            "4 abababab\n"
            "5      12\n");
}

TEST(DrawOnTerminal, ATextRunsOverEmptyNeighboursOnly) {
  TerminalPicture picture(4, 3);
  picture.add(0, 0, "a title that is long").freeRight = 2;
  picture.add(1, 0, "a title that is long").freeRight = 1;
  picture.add(1, 2, "x");
  auto& right = picture.add(2, 2, "from the right");
  right.horizontal = HorizontalAlignment::Right;
  right.freeLeft = 2;
  auto& centred = picture.add(3, 1, "both to left and right");
  centred.horizontal = HorizontalAlignment::Center;
  centred.freeLeft = centred.freeRight = 1;
  EXPECT_EQ(picture.draw(),
            "      A        B        C\n"
            "1 a title that is long\n"
            "2 a title that is…  x\n"
            "3             from the right\n"
            "4   both to left and right\n");
}

TEST(DrawOnTerminal, ATextIsCentredAcrossItsColumns) {
  TerminalPicture picture(1, 3);
  auto& cell = picture.add(0, 0, "title");
  cell.horizontal = HorizontalAlignment::CenterContinuous;
  cell.freeRight = 2;
  EXPECT_EQ(picture.draw(),
            "      A        B        C\n"
            "1           title\n");
}

TEST(DrawOnTerminal, ATextEndsBeforeABorder) {
  TerminalPicture picture(2, 2);
  picture.add(0, 0, "a title that is long").freeRight = 1;
  picture.edgesOf(picture.add(0, 1, "", CellContent::Empty)).left = {.style = LineStyle::Thin};
  picture.add(1, 0, "a title that is long").freeRight = 1;
  EXPECT_EQ(picture.draw(),
            "      A         B\n"
            "1 a title… │\n"
            "2 a title that is l…\n");
}

TEST(DrawOnTerminal, AColumnIsWideEnoughForItsNumbers) {
  TerminalPicture picture(2, 2);
  picture.sheet.columns[0].size = 20;
  picture.add(0, 0, "1,234,567.89", CellContent::Number);
  picture.add(1, 0, "a text of some length");
  picture.add(1, 1, "x");
  EXPECT_EQ(picture.draw(),
            "        A          B\n"
            "1 1,234,567.89\n"
            "2 a text of s… x\n");
}

TEST(DrawOnTerminal, ColumnsAreNarrowedToFitATerminal) {
  TerminalPicture picture(1, 3);
  for (auto& column : picture.sheet.columns) {
    column.size = 140;
  }
  picture.add(0, 0, "one");
  picture.add(0, 1, "two");
  picture.add(0, 2, "12", CellContent::Number);
  EXPECT_EQ(picture.draw({.width = 13}),
            "   A   B   C\n"
            "1 one two 12\n");
}

TEST(DrawOnTerminal, ColumnsThatDoNotFitAreLeftOut) {
  TerminalPicture picture(1, 4);
  for (std::uint32_t column = 0; column < 4; ++column) {
    picture.add(0, column, "12345678", CellContent::Number);
  }
  std::string text;
  auto const count = drawOnTerminal(picture.sheet, {.width = 25},
                                    [&](std::string_view line) { text.append(line) += '\n'; });
  EXPECT_EQ(count, 2U);
  EXPECT_EQ(text,
            "      A        B\n"
            "1 12345678 12345678\n");
}

TEST(DrawOnTerminal, OneColumnIsDrawnOnTheNarrowestTerminal) {
  TerminalPicture picture(1, 2);
  picture.add(0, 0, "12345678", CellContent::Number);
  EXPECT_EQ(picture.draw({.width = 6}),
            "   A\n"
            "1 ###\n");
  EXPECT_NO_THROW(static_cast<void>(picture.draw({.width = 0})));
}

TEST(DrawOnTerminal, BordersAreBoxes) {
  TerminalPicture picture(2, 2);
  for (std::uint32_t row = 0; row < 2; ++row) {
    for (std::uint32_t column = 0; column < 2; ++column) {
      picture.box(picture.add(row, column, "x"), row == 0 ? LineStyle::Medium : LineStyle::Thin);
    }
  }
  EXPECT_EQ(picture.draw(),
            "       A         B\n"
            "  ┏━━━━━━━━━┳━━━━━━━━━┓\n"
            "1 ┃x        ┃x        ┃\n"
            "  ┡━━━━━━━━━╇━━━━━━━━━┩\n"
            "2 │x        │x        │\n"
            "  └─────────┴─────────┘\n");
}

TEST(DrawOnTerminal, RowsThatAreRuledAlikeStandClose) {
  TerminalPicture picture(6, 1);
  for (std::uint32_t row = 0; row < 6; ++row) {
    auto& cell = picture.add(row, 0, "x");
    picture.box(cell, row == 2 ? LineStyle::Hair : LineStyle::Thin);
  }
  picture.sheet.edges.back().bottom.style = LineStyle::Thick;
  picture.sheet.edges[4].bottom.style = LineStyle::Medium;
  EXPECT_EQ(picture.draw(),
            "       A\n"
            "  ┌─────────┐\n"
            "1 │x        │\n"
            "2 │x        │\n"
            "3 ┊x        ┊\n"
            "  ├┈┈┈┈┈┈┈┈┈┤\n"
            "4 │x        │\n"
            "  ┝━━━━━━━━━┥\n"
            "5 │x        │\n"
            "  ├─────────┤\n"
            "6 │x        │\n"
            "  ┕━━━━━━━━━┙\n");
}

TEST(DrawOnTerminal, AMergedCellHasNoLinesInside) {
  TerminalPicture picture(3, 3);
  auto& merged = picture.add(0, 0, "merged");
  merged.rowCount = 2;
  merged.columnCount = 2;
  merged.horizontal = HorizontalAlignment::Center;
  picture.box(merged, LineStyle::Thin);
  picture.lookOf(merged).vertical = DOM::VerticalAlignment::Center;
  picture.box(picture.add(0, 2, "a"), LineStyle::Thin);
  picture.box(picture.add(1, 2, "b"), LineStyle::Thin);
  picture.box(picture.add(2, 0, "c"), LineStyle::Thin);
  picture.box(picture.add(2, 1, "d"), LineStyle::Thin);
  picture.box(picture.add(2, 2, "e"), LineStyle::Thin);
  EXPECT_EQ(picture.draw(),
            "       A         B         C\n"
            "  ┌───────────────────┬─────────┐\n"
            "1 │                   │a        │\n"
            "  │      merged       ├─────────┤\n"
            "2 │                   │b        │\n"
            "  ├─────────┬─────────┼─────────┤\n"
            "3 │c        │d        │e        │\n"
            "  └─────────┴─────────┴─────────┘\n");
}

TEST(DrawOnTerminal, WrappedTextsHaveLines) {
  TerminalPicture picture(2, 2);
  picture.sheet.rows[0].size = 60;
  auto& wrapped = picture.add(0, 0, "one two three four");
  picture.lookOf(wrapped).wraps = true;
  picture.add(0, 1, "x");
  picture.add(1, 0, "y");
  EXPECT_EQ(picture.draw(),
            "      A        B\n"
            "1 one two\n"
            "  three\n"
            "  four     x\n"
            "2 y\n");
}

TEST(DrawOnTerminal, AColumnGrowsForItsLongestWord) {
  TerminalPicture picture(1, 2);
  picture.sheet.rows[0].size = 40;
  picture.lookOf(picture.add(0, 0, "a Microsoft one")).wraps = true;
  picture.lookOf(picture.add(0, 1, "extraordinary circumstances")).wraps = true;
  EXPECT_EQ(picture.draw(),
            "      A          B\n"
            "1           extraordina\n"
            "  a         ry\n"
            "  Microsoft circumstanc\n"
            "  one       es\n");
}

TEST(DrawOnTerminal, LettersThatAreRotatedStandBelowEachOther) {
  TerminalPicture picture(1, 2);
  picture.sheet.rows[0].size = 60;
  picture.lookOf(picture.add(0, 0, "abc")).rotation = 90;
  picture.lookOf(picture.add(0, 1, "xy")).isStacked = true;
  EXPECT_EQ(picture.draw(),
            "      A        B\n"
            "1 a\n"
            "  b        x\n"
            "  c        y\n");
}

TEST(DrawOnTerminal, WideCharactersTakeTwoColumns) {
  TerminalPicture picture(3, 2);
  picture.add(0, 0, "日本");
  picture.add(0, 1, "x");
  picture.add(1, 0, "e\u0301e\u0301");
  picture.add(1, 1, "x");
  picture.add(2, 0, "日本語日本");
  picture.add(2, 1, "x");
  EXPECT_EQ(picture.draw(),
            "       A         B\n"
            "1 日本       x\n"
            "2 e\u0301e\u0301         x\n"
            "3 日本語日本 x\n");
}

TEST(DrawOnTerminal, ASheetFromRightToLeftIsMirrored) {
  TerminalPicture picture(1, 2);
  picture.sheet.rightToLeft = true;
  picture.add(0, 0, "first").horizontal = HorizontalAlignment::Right;
  picture.add(0, 1, "12", CellContent::Number).horizontal = HorizontalAlignment::Left;
  EXPECT_EQ(picture.draw(),
            "    B        A\n"
            " 12          first 1\n");
}

TEST(DrawOnTerminal, IconsStandBeforeTheValue) {
  TerminalPicture picture(2, 1);
  picture.add(0, 0, "12", CellContent::Number).icon = {Visuals::IconSetName::Arrows3, 2};
  auto& alone = picture.add(1, 0, "", CellContent::Number);
  alone.icon = {Visuals::IconSetName::Arrows3, 0};
  alone.horizontal = HorizontalAlignment::Center;
  EXPECT_EQ(picture.draw(),
            "      A\n"
            "1 ↑     12\n"
            "2     ↓\n");
}

Visuals::DataBar makeRecord(DOM::Colour fill) {
  Visuals::DataBar bar;
  bar.fill = fill;
  return bar;
}

/// A picture of one bar.
TerminalPicture makeBar(Visuals::DataBar const& bar, Visuals::BarExtent const& extent,
                        bool isNegative = false) {
  TerminalPicture picture(1, 1);
  picture.sheet.columns[0].size = 70;
  auto& cell = picture.add(0, 0, "12", CellContent::Number);
  cell.bar =
      Visuals::ShownBar{.format = 0, .extent = extent, .isNegative = isNegative, .bar = &bar};
  return picture;
}

TEST(DrawOnTerminal, BarsAreBlocksBesideTheValue) {
  auto bar = makeRecord({99, 142, 198});
  EXPECT_THAT(makeBar(bar, {0, 0.45, {}}).draw(), HasSubstr("1 ███▋     12\n"));
  EXPECT_THAT(makeBar(bar, {0, 1, {}}).draw(), HasSubstr("1 ████████ 12\n"));
  EXPECT_THAT(makeBar(bar, {0, 0, {}}).draw(), HasSubstr("1          12\n"));
  EXPECT_THAT(makeBar(bar, {0.25, 0.5, 0.25}).draw(), HasSubstr("1   ██     12\n"));
  EXPECT_THAT(makeBar(bar, {0.1, 0.1, 0.3}).draw(), HasSubstr("1   │      12\n"));
  bar.direction = Visuals::BarDirection::RightToLeft;
  EXPECT_THAT(makeBar(bar, {0, 0.9, {}}).draw(), HasSubstr("1 ▐███████ 12\n"));
}

TEST(DrawOnTerminal, BarsOfAColumnHaveTheSameScale) {
  auto const bar = makeRecord({99, 142, 198});
  auto picture = makeBar(bar, {0, 0.5, {}});
  picture.sheet.rows.push_back({.index = 1, .size = 20});
  auto& cell = picture.add(1, 0, "12,345", CellContent::Number);
  cell.bar = picture.sheet.cells.front().bar;
  EXPECT_THAT(picture.draw(), HasSubstr("1 ████         12\n2 ████     12,345\n"));
}

TEST(DrawOnTerminal, ColouredBarsAreGrounds) {
  auto bar = makeRecord({99, 142, 198});
  bar.isGradient = false;
  auto const text = makeBar(bar, {0, 0.45, {}}).draw({.colours = ColourDepth::Direct});
  EXPECT_THAT(text, HasSubstr("48;2;99;142;198m    \x1B[0;38;2;99;142;198;48;2;255;255;255m▌"));
}

TEST(DrawOnTerminal, ANegativeBarHasItsOwnColour) {
  auto bar = makeRecord({0, 0, 255});
  bar.negativeFill = DOM::Colour{255, 0, 0};
  bar.isGradient = false;
  auto const text = makeBar(bar, {0.15, 0.3, 0.3}, true).draw({.colours = ColourDepth::Direct});
  EXPECT_THAT(text, HasSubstr("\x1B[0;38;2;255;255;255;48;2;255;0;0m▌"));
  EXPECT_THAT(text, Not(HasSubstr("0;0;255m")));
}

TEST(DrawOnTerminal, AFadingBarIsPalestAtItsEnd) {
  auto const bar = makeRecord({0, 0, 0});
  auto const text = makeBar(bar, {0, 0.5, {}}).draw({.colours = ColourDepth::Direct});
  EXPECT_LT(text.find("48;2;19;19;19m"), text.find("48;2;172;172;172m"));
}

void setSolidFill(Look& look, DOM::Colour colour) {
  look.fill.pattern = DOM::FillPattern::Solid;
  look.fill.colour = colour;
}

TEST(DrawOnTerminal, FillsAndFontsHaveTheirColours) {
  TerminalPicture picture(1, 2);
  auto& look = picture.lookOf(picture.add(0, 0, "late"));
  setSolidFill(look, {255, 199, 206});
  look.font.colour = {156, 0, 6};
  look.font.bold = true;
  EXPECT_EQ(picture.draw({.colours = ColourDepth::Direct}),
            "\x1B[0;38;2;68;68;68;48;2;230;230;230m      A        B    \x1B[0m\n"
            "\x1B[0;38;2;68;68;68;48;2;230;230;230m1 "
            "\x1B[0;1;38;2;156;0;6;48;2;255;199;206mlate"
            "\x1B[0;38;2;0;0;0;48;2;255;199;206m     "
            "\x1B[0;38;2;0;0;0;48;2;255;255;255m         \x1B[0m\n");
}

TEST(DrawOnTerminal, AColourScaleHidesTheFill) {
  TerminalPicture picture(1, 1);
  auto& cell = picture.add(0, 0, "1", CellContent::Number);
  setSolidFill(picture.lookOf(cell), {1, 2, 3});
  cell.scaleColour = DOM::Colour{248, 105, 107};
  auto const text = picture.draw({.colours = ColourDepth::Direct});
  EXPECT_THAT(text, HasSubstr("48;2;248;105;107m"));
  EXPECT_THAT(text, Not(HasSubstr("48;2;1;2;3m")));
}

TEST(DrawOnTerminal, PositionsWithoutACellHaveTheLookOfTheirLine) {
  TerminalPicture picture(2, 2);
  setSolidFill(picture.sheet.looks.emplace_back(), {1, 2, 3});
  setSolidFill(picture.sheet.looks.emplace_back(), {4, 5, 6});
  picture.sheet.rows[0].look = 1;
  picture.sheet.columns[1].look = 2;
  auto const text = picture.draw({.colours = ColourDepth::Direct});
  EXPECT_THAT(text, HasSubstr("48;2;1;2;3m                  \x1B[0m\n"));
  EXPECT_THAT(text, HasSubstr("48;2;4;5;6m         \x1B[0m\n"));
}

TEST(DrawOnTerminal, RunsOfARichTextHaveTheirFonts) {
  TerminalPicture picture(1, 1);
  picture.add(0, 0, "ab").runs = 1;
  picture.sheet.richTexts = {{{"a", {}}, {"b", {}}}};
  picture.sheet.richTexts[0][0].font.colour = {255, 0, 0};
  picture.sheet.richTexts[0][1].font.colour = {0, 0, 255};
  EXPECT_THAT(picture.draw({.colours = ColourDepth::Direct}),
              HasSubstr("38;2;255;0;0;48;2;255;255;255ma\x1B[0;38;2;0;0;255;48;2;255;255;255mb"));
}

TEST(DrawOnTerminal, ASectionOfANumberFormatColoursTheNumber) {
  TerminalPicture picture(1, 1);
  picture.add(0, 0, "-5", CellContent::Number).textColour = DOM::Colour{255, 0, 0};
  EXPECT_THAT(picture.draw({.colours = ColourDepth::Direct}),
              HasSubstr("38;2;255;0;0;48;2;255;255;255m-5"));
}

TEST(DrawOnTerminal, AnAccountingFormatStandsAtBothEdges) {
  TerminalPicture picture(1, 1);
  picture.add(0, 0, "$1.50", CellContent::Number).splitAt = 1;
  EXPECT_THAT(picture.draw(), HasSubstr("1 $   1.50\n"));
}

TEST(DrawOnTerminal, NothingFromAFileReachesTheTerminalAsItIs) {
  TerminalPicture picture(1, 1);
  picture.add(0, 0, "\x1B]0;x\x07\x9B");
  EXPECT_THAT(picture.draw(), HasSubstr("1  ]0;x \uFFFD\n"));
}

TEST(DrawOnTerminal, AbsurdSizesAreBounded) {
  TerminalPicture picture(1, 300);
  for (auto& column : picture.sheet.columns) {
    column.size = 1e300;
  }
  picture.sheet.columns[1].size = -5;
  picture.sheet.columns[2].size = std::numeric_limits<double>::quiet_NaN();
  picture.sheet.rows[0].size = 1e300;
  auto& cell = picture.add(0, 0, std::string(100'000, 'x'));
  picture.lookOf(cell).wraps = true;
  picture.sheet.looks.back().indent = 1e300;
  EXPECT_LT(picture.draw().size(), 2'000'000U);
}

TEST(DrawOnTerminal, ABudgetEndsTheWork) {
  WorkBudget budget({.steps = 1'000});
  TerminalPicture const picture(10'000, 1);
  EXPECT_THROW(static_cast<void>(picture.draw({.budget = &budget})), WorkBudgetExceeded);
}

}  // namespace
}  // namespace Zorv::Render
