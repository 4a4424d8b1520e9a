#include "words/VisualText.h"

#include <gtest/gtest.h>

namespace Zorv::Words {
namespace {

using Visuals::ThresholdKind;

constexpr DOM::Colour red{0xF8, 0x69, 0x6B};
constexpr DOM::Colour blue{0x63, 0x8E, 0xC6};

TEST(VisualText, WhatACellGetsIsOneLine) {
  Visuals::DataBar bar;
  bar.fill = blue;
  Visuals::CellVisuals visuals;
  EXPECT_EQ(describe(visuals), "");
  visuals.bar = {0, {0.25, 0.624, 0.25}, false, &bar};
  EXPECT_EQ(describe(visuals), "bar 37% #638EC6");
  visuals.scale = {1, red, false};
  visuals.icon = {2, {Visuals::IconSetName::Arrows3, 1}};
  visuals.showValue = false;
  EXPECT_EQ(describe(visuals), "scale #F8696B, bar 37% #638EC6, icon 3Arrows 2 of 3, value hidden");
}

TEST(VisualText, AHiddenScaleAndAMissingIconAreTold) {
  Visuals::CellVisuals visuals;
  visuals.scale = {0, red, true};
  visuals.icon = {1, {Visuals::IconSetName::NoIcons, 0}};
  EXPECT_EQ(describe(visuals), "scale #F8696B behind the fill, no icon");
}

TEST(VisualText, ABarWithoutAColourIsABar) {
  Visuals::DataBar const bar;
  Visuals::CellVisuals visuals;
  visuals.bar = {0, {0, 0, {}}, false, &bar};
  EXPECT_EQ(describe(visuals), "bar 0%");
}

TEST(VisualText, ThresholdsAreInWords) {
  EXPECT_EQ(describeThresholds(Visuals::ColourScale{
                {{{.kind = ThresholdKind::Min}, red},
                 {{.kind = ThresholdKind::Percentile, .operand = 50.0, .text = "50"}, red},
                 {{.kind = ThresholdKind::Max}, blue}}}),
            "colour scale: lowest, percentile 50, highest");
  Visuals::DataBar bar;
  bar.minimum = {.kind = ThresholdKind::AutoMin};
  bar.maximum = {.kind = ThresholdKind::AutoMax};
  EXPECT_EQ(describeThresholds(bar), "data bar: lowest or 0 to highest or 0");
  EXPECT_EQ(describeThresholds(Visuals::IconSet{
                .steps = {{.kind = ThresholdKind::Percent, .text = "0"},
                          {.kind = ThresholdKind::Percent, .text = "33"},
                          {.kind = ThresholdKind::Number, .text = "45", .orEqual = false},
                          {.kind = ThresholdKind::Formula, .text = "$T$5"}}}),
            "icon set: >= 33 %, > 45, >= $T$5");
}

TEST(VisualText, DrawingsAreInWords) {
  EXPECT_EQ(describeDrawing(Visuals::ColourScale{{{{}, red}, {{}, blue}}}), "#F8696B, #638EC6");
  Visuals::DataBar bar;
  EXPECT_EQ(describeDrawing(bar), "bar");
  bar.fill = blue;
  bar.border = red;
  bar.negativeFill = red;
  bar.isGradient = false;
  bar.axis = Visuals::BarAxis::Middle;
  bar.direction = Visuals::BarDirection::RightToLeft;
  bar.showValue = false;
  EXPECT_EQ(describeDrawing(bar),
            "bar #638EC6, solid, border #F8696B, negative #F8696B, axis in the middle, from the "
            "right, value hidden");
}

TEST(VisualText, IconsAreThoseOfTheSetOrOwnOnes) {
  Visuals::IconSet set{.name = Visuals::IconSetName::Rating4, .isReversed = true};
  EXPECT_EQ(describeDrawing(set), "icons 4Rating, reversed");
  set.ownIcons = {{Visuals::IconSetName::Flags3, 2}, {Visuals::IconSetName::NoIcons, 0}};
  set.showValue = false;
  EXPECT_EQ(describeDrawing(set), "icons 3Flags/3, none, reversed, value hidden");
}

}  // namespace
}  // namespace Zorv::Words
