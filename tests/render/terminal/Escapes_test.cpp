#include "render/Terminal/Escapes.h"

#include <string>

#include <gtest/gtest.h>

namespace Zorv::Render {
namespace {

std::string styleText(CharacterStyle const& style, ColourDepth depth) {
  std::string text;
  appendStyle(text, style, depth);
  return text;
}

TEST(Escapes, ColoursOf24BitsAreWrittenAsTheyAre) {
  EXPECT_EQ(styleText({.ink = DOM::Colour{1, 2, 3}, .ground = DOM::Colour{255, 199, 206}},
                      ColourDepth::Direct),
            "\x1B[0;38;2;1;2;3;48;2;255;199;206m");
}

TEST(Escapes, IndexedColoursAreTheNearest) {
  struct Case {
    DOM::Colour colour;
    int expected;
  };
  for (auto const& [colour, expected] : {
           Case{{0, 0, 0}, 16},
           Case{{255, 255, 255}, 231},
           Case{{255, 0, 0}, 196},
           Case{{95, 135, 175}, 67},
           Case{{128, 128, 128}, 244},
           Case{{8, 8, 8}, 232},
           Case{{238, 238, 238}, 255},
           Case{{255, 199, 206}, 224},
       }) {
    EXPECT_EQ(toIndexedColour(colour), expected);
  }
  EXPECT_EQ(styleText({.ground = DOM::Colour{255, 0, 0}}, ColourDepth::Indexed),
            "\x1B[0;48;5;196m");
}

TEST(Escapes, NothingIsWrittenWithoutColours) {
  EXPECT_EQ(styleText({.ink = DOM::Colour{}, .bold = true}, ColourDepth::None), "");
}

TEST(Escapes, LettersHaveTheirStyles) {
  EXPECT_EQ(styleText({.bold = true, .italic = true}, ColourDepth::Direct), "\x1B[0;1;3m");
  EXPECT_EQ(
      styleText({.underline = DOM::Underline::Single, .strikethrough = true}, ColourDepth::Direct),
      "\x1B[0;4;9m");
  EXPECT_EQ(styleText({.underline = DOM::Underline::DoubleAccounting}, ColourDepth::Direct),
            "\x1B[0;21m");
}

}  // namespace
}  // namespace Zorv::Render
