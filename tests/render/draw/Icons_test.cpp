#include "render/Icons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace Zorv::Render {
namespace {

using Visuals::Icon;
using Visuals::IconSetName;

constexpr auto setCount = static_cast<std::size_t>(IconSetName::NoIcons) + 1;

std::vector<Icon> allIcons() {
  std::vector<Icon> icons;
  for (std::size_t set = 0; set < setCount; ++set) {
    auto const name = static_cast<IconSetName>(set);
    for (unsigned index = 0; index < Visuals::countIcons(name); ++index) {
      icons.push_back({name, index});
    }
  }
  return icons;
}

/// Relative luminance of sRGB (IEC 61966-2-1).
double luminance(DOM::Colour const& colour) {
  auto const linear = [](std::uint8_t part) {
    double const share = part / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

bool differInLightness(DOM::Colour const& a, DOM::Colour const& b) {
  auto const [darker, lighter] = std::minmax({luminance(a), luminance(b)});
  return (lighter + 0.05) / (darker + 0.05) >= 1.5;
}

/// Do two icons differ for someone who sees no colours?
bool differWithoutColour(std::span<IconOutline const> a, std::span<IconOutline const> b) {
  if (a.size() != b.size()) {
    return true;
  }
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i].path != b[i].path || differInLightness(a[i].colour, b[i].colour)) {
      return true;
    }
  }
  return false;
}

TEST(Icons, EveryIconOfEverySetHasOutlinesAndWords) {
  for (Icon const& icon : allIcons()) {
    EXPECT_FALSE(outlineIcon(icon).empty()) << toText(icon.set) << ' ' << icon.index;
    EXPECT_FALSE(nameIcon(icon).empty()) << toText(icon.set) << ' ' << icon.index;
  }
}

TEST(Icons, SetsHaveNoMoreIconsThanTheyName) {
  for (std::size_t set = 0; set < setCount; ++set) {
    auto const name = static_cast<IconSetName>(set);
    EXPECT_TRUE(outlineIcon({name, Visuals::countIcons(name)}).empty()) << toText(name);
    EXPECT_TRUE(nameIcon({name, Visuals::countIcons(name)}).empty()) << toText(name);
  }
}

TEST(Icons, IconsOfASetDifferWithoutColour) {
  for (Icon const& a : allIcons()) {
    for (Icon const& b : allIcons()) {
      if (a.set == b.set && a.index < b.index) {
        EXPECT_TRUE(differWithoutColour(outlineIcon(a), outlineIcon(b)))
            << toText(a.set) << ' ' << a.index << ' ' << b.index;
      }
    }
  }
}

TEST(Icons, IconsOfASetHaveNamesOfTheirOwn) {
  std::set<std::string> names;
  for (Icon const& icon : allIcons()) {
    EXPECT_TRUE(
        names.insert(std::string(toText(icon.set)) + ' ' + std::string(nameIcon(icon))).second);
  }
}

TEST(Icons, OutlinesAreClosedAndStayInTheirBox) {
  for (Icon const& icon : allIcons()) {
    for (IconOutline const& outline : outlineIcon(icon)) {
      IconStep last;
      visitIconSteps(outline.path, [&](IconStep const& step) {
        EXPECT_EQ(step.kind == IconStep::Kind::Move, last.kind == IconStep::Kind::Close)
            << outline.path;
        for (double const coordinate : step.coordinates) {
          EXPECT_GE(coordinate, 0) << outline.path;
          EXPECT_LE(coordinate, iconBox) << outline.path;
        }
        last = step;
      });
      EXPECT_EQ(last.kind, IconStep::Kind::Close) << outline.path;
    }
  }
}

TEST(Icons, StepsAreThoseOfThePath) {
  std::vector<IconStep> steps;
  visitIconSteps("M1 2.5L3 4C5 6 7 8 9 10Z", [&](IconStep const& step) { steps.push_back(step); });
  ASSERT_EQ(steps.size(), 4U);
  EXPECT_EQ(steps[0].kind, IconStep::Kind::Move);
  EXPECT_EQ(steps[0].coordinates, (std::array<double, 6>{1, 2.5}));
  EXPECT_EQ(steps[1].kind, IconStep::Kind::Line);
  EXPECT_EQ(steps[1].coordinates, (std::array<double, 6>{3, 4}));
  EXPECT_EQ(steps[2].kind, IconStep::Kind::Curve);
  EXPECT_EQ(steps[2].coordinates, (std::array<double, 6>{5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(steps[3].kind, IconStep::Kind::Close);
}

}  // namespace
}  // namespace Zorv::Render
