#include "visuals/IconSet.h"

#include <map>
#include <string_view>

#include <gtest/gtest.h>

namespace Zorv::Visuals {
namespace {

TEST(IconSet, NamesAreThoseOfTheFiles) {
  unsigned count = 0;
  for (std::string_view const name :
       {"3Arrows",     "3ArrowsGray", "3Flags",         "3TrafficLights1", "3TrafficLights2",
        "3Signs",      "3Symbols",    "3Symbols2",      "4Arrows",         "4ArrowsGray",
        "4RedToBlack", "4Rating",     "4TrafficLights", "5Arrows",         "5ArrowsGray",
        "5Rating",     "5Quarters",   "3Stars",         "3Triangles",      "5Boxes",
        "NoIcons"}) {
    auto const set = parseIconSetName(name);
    ASSERT_TRUE(set) << name;
    EXPECT_EQ(static_cast<unsigned>(*set), count++);
    EXPECT_EQ(toText(*set), name);
  }
  EXPECT_FALSE(parseIconSetName("3arrows"));
  EXPECT_FALSE(parseIconSetName(""));
}

TEST(IconSet, TheNumberOfIconsIsThatInTheName) {
  EXPECT_EQ(countIcons(IconSetName::Triangles3), 3U);
  EXPECT_EQ(countIcons(IconSetName::Rating4), 4U);
  EXPECT_EQ(countIcons(IconSetName::Quarters5), 5U);
  EXPECT_EQ(countIcons(IconSetName::NoIcons), 0U);
}

}  // namespace
}  // namespace Zorv::Visuals
