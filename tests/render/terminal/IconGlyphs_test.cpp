#include "render/Terminal/IconGlyphs.h"

#include <set>

#include <gtest/gtest.h>

#include "render/Terminal/Glyphs.h"

namespace Zorv::Render {
namespace {

using Visuals::Icon;
using Visuals::IconSetName;

TEST(IconGlyphs, IconsOfOneSetDifferWithoutColours) {
  for (int set = 0; set < static_cast<int>(IconSetName::NoIcons); ++set) {
    auto const name = static_cast<IconSetName>(set);
    std::set<char32_t> characters;
    for (unsigned index = 0; index < Visuals::countIcons(name); ++index) {
      auto const glyph = findIconGlyph({name, index});
      characters.insert(glyph.character);
      EXPECT_EQ(measureWidth(splitIntoGlyphs(toUtf8(glyph.character), 5)), 1U);
    }
    EXPECT_EQ(characters.size(), Visuals::countIcons(name)) << toText(name);
  }
}

TEST(IconGlyphs, TheFirstIconIsThatOfTheLowestValues) {
  EXPECT_EQ(findIconGlyph({IconSetName::Arrows3, 0}).character, U'↓');
  EXPECT_EQ(findIconGlyph({IconSetName::Arrows3, 2}).character, U'↑');
  EXPECT_EQ(findIconGlyph({IconSetName::Stars3, 2}).character, U'★');
  EXPECT_EQ(findIconGlyph({IconSetName::Quarters5, 4}).character, U'●');
}

TEST(IconGlyphs, RedIsBadAndGreenIsGood) {
  auto const bad = findIconGlyph({IconSetName::TrafficLights3One, 0}).colour;
  auto const good = findIconGlyph({IconSetName::TrafficLights3One, 2}).colour;
  EXPECT_GT(bad.red, bad.green);
  EXPECT_GT(good.green, good.red);
}

}  // namespace
}  // namespace Zorv::Render
