#include "render/Terminal/FillColour.h"

#include <utility>

#include <gtest/gtest.h>

namespace Zorv::Render {
namespace {

using DOM::Colour;
using DOM::FillPattern;
using DOM::GradientType;

constexpr Colour red{255, 0, 0};
constexpr Colour blue{0, 0, 255};

CellFill makeGradient(DOM::GradientFill gradient) {
  CellFill fill;
  fill.pattern = FillPattern::Gradient;
  fill.gradient = std::move(gradient);
  return fill;
}

TEST(FillColour, APatternIsTheMeanOfItsColours) {
  struct Case {
    FillPattern pattern;
    Colour expected;
  };
  for (auto const& [pattern, expected] : {
           Case{FillPattern::None, {255, 255, 255}},
           Case{FillPattern::Solid, red},
           Case{FillPattern::DarkGray, {64, 0, 191}},
           Case{FillPattern::MediumGray, {128, 0, 128}},
           Case{FillPattern::LightGray, {191, 0, 64}},
           Case{FillPattern::Gray125, {223, 0, 32}},
           Case{FillPattern::Gray0625, {239, 0, 16}},
       }) {
    CellFill fill;
    fill.pattern = pattern;
    fill.colour = red;
    fill.patternColour = blue;
    EXPECT_EQ(findFillColour(fill, 0.5, 0.5), expected);
  }
}

TEST(FillColour, ALinearGradientRunsAlongItsAngle) {
  auto gradient =
      makeGradient({.type = GradientType::Linear, .stops = {{.colour = red}, {1, blue}}});
  EXPECT_EQ(findFillColour(gradient, 0, 0.5), red);
  EXPECT_EQ(findFillColour(gradient, 0.5, 0), (Colour{128, 0, 128}));
  EXPECT_EQ(findFillColour(gradient, 1, 0), blue);
  gradient.gradient->degree = 90;
  EXPECT_EQ(findFillColour(gradient, 1, 0), red);
  EXPECT_EQ(findFillColour(gradient, 0, 1), blue);
}

TEST(FillColour, AGradientOfAPathRunsOutwards) {
  auto const gradient = makeGradient({.type = GradientType::Path,
                                      .left = 0.5,
                                      .right = 0.5,
                                      .top = 0.5,
                                      .bottom = 0.5,
                                      .stops = {{.colour = red}, {1, blue}}});
  EXPECT_EQ(findFillColour(gradient, 0.5, 0.5), red);
  EXPECT_EQ(findFillColour(gradient, 0.75, 0.5), (Colour{128, 0, 128}));
  EXPECT_EQ(findFillColour(gradient, 0.5, 0), blue);
}

TEST(FillColour, AGradientThatMakesNoSenseIsSomeColour) {
  EXPECT_EQ(findFillColour(makeGradient({}), 0.5, 0.5), (Colour{255, 255, 255}));
  auto const absurd = makeGradient(
      {.type = GradientType::Linear, .degree = 1e308, .stops = {{5, red}, {5, blue}, {-1, red}}});
  auto const colour = findFillColour(absurd, 0.3, 0.7);
  EXPECT_TRUE(colour == red || colour == blue);
}

}  // namespace
}  // namespace Zorv::Render
