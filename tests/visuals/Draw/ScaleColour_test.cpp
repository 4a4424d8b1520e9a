#include "visuals/Draw/ScaleColour.h"

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Visuals {
namespace {

constexpr DOM::Colour darkest{0, 0, 0};
constexpr DOM::Colour midGrey{100, 100, 100};
constexpr DOM::Colour lightest{255, 255, 255};
constexpr double largestValue = std::numeric_limits<double>::max();

struct ScaleCase {
  char const* name;
  std::vector<DOM::Colour> colours;
  std::vector<double> bounds;
  double value;
  DOM::Colour expected;
};

class ScaleColours : public testing::TestWithParam<ScaleCase> {};

TEST_P(ScaleColours, AreLinearBetweenPoints) {
  ColourScale scale;
  for (auto const& colour : GetParam().colours) {
    scale.points.push_back({{}, colour});
  }
  EXPECT_EQ(findScaleColour(scale, GetParam().bounds, GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    ScaleColour, ScaleColours,
    testing::Values(
        ScaleCase{"Middle", {darkest, midGrey}, {0, 10}, 5, {50, 50, 50}},
        ScaleCase{"Rounded", {darkest, midGrey}, {0, 1000}, 4, {0, 0, 0}},
        ScaleCase{"RoundedUp", {darkest, midGrey}, {0, 1000}, 5, {1, 1, 1}},
        ScaleCase{"Falling", {lightest, darkest}, {0, 10}, 1, {230, 230, 230}},
        ScaleCase{"EachComponentByItself", {{0, 200, 40}, {100, 0, 40}}, {0, 4}, 1, {25, 150, 40}},
        ScaleCase{"Below", {midGrey, lightest}, {0, 10}, -1, midGrey},
        ScaleCase{"Above", {midGrey, lightest}, {0, 10}, 11, lightest},
        ScaleCase{"AllEqual", {midGrey, lightest}, {7, 7}, 7, midGrey},
        ScaleCase{"AboveEqualBounds", {midGrey, lightest}, {7, 7}, 7.5, lightest},
        ScaleCase{"ThreePointsBelowTheSecond",
                  {darkest, midGrey, lightest},
                  {0, 10, 20},
                  5,
                  {50, 50, 50}},
        ScaleCase{"ThreePointsAtTheSecond", {darkest, midGrey, lightest}, {0, 10, 20}, 10, midGrey},
        ScaleCase{"ThreePointsBeyondTheSecond",
                  {darkest, midGrey, lightest},
                  {0, 10, 41},
                  11,
                  {105, 105, 105}},
        ScaleCase{"ThreeEqualPoints", {darkest, midGrey, lightest}, {7, 7, 7}, 7, darkest},
        ScaleCase{"SecondPointAtTheFirst", {darkest, midGrey, lightest}, {0, 0, 20}, 0, darkest},
        ScaleCase{
            "HugeBounds", {darkest, midGrey}, {-largestValue, largestValue}, 0, {50, 50, 50}}),
    [](auto const& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace Zorv::Visuals
