#include "render/Fonts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Zorv::Render {
namespace {

using testing::ElementsAre;

TEST(Fonts, AKnownFontIsFollowedByItsSubstituteAndItsKind) {
  EXPECT_THAT(listFontFamilies("Calibri"), ElementsAre("Calibri", "Carlito", "sans-serif"));
  EXPECT_THAT(listFontFamilies("Arial"), ElementsAre("Arial", "Liberation Sans", "sans-serif"));
  EXPECT_THAT(listFontFamilies("Times New Roman"),
              ElementsAre("Times New Roman", "Liberation Serif", "serif"));
  EXPECT_THAT(listFontFamilies("Courier New"),
              ElementsAre("Courier New", "Liberation Mono", "monospace"));
  EXPECT_THAT(listFontFamilies("Cambria"), ElementsAre("Cambria", "Caladea", "serif"));
  EXPECT_THAT(listFontFamilies("Comic Sans MS"),
              ElementsAre("Comic Sans MS", "Comic Neue", "cursive"));
}

TEST(Fonts, CaseDoesNotCount) {
  EXPECT_THAT(listFontFamilies("CAMBRIA"), ElementsAre("CAMBRIA", "Caladea", "serif"));
}

TEST(Fonts, AnUnknownFontIsFollowedByTheSansSerifOne) {
  EXPECT_THAT(listFontFamilies("Fraktur des Hauses"),
              ElementsAre("Fraktur des Hauses", "sans-serif"));
  EXPECT_THAT(listFontFamilies("Überschrift"), ElementsAre("Überschrift", "sans-serif"));
}

TEST(Fonts, ANameThatCannotBeThatOfAFontIsLeftOut) {
  std::vector<std::string> const names{"",        "a\nb", "x\"y",     "x'y",
                                       "Arial,y", "a;b",  "</style>", "a}b{",
                                       "url(x)",  "a&b",  "back\\5c", std::string(65, 'a'),
                                       "\x7F"};
  for (std::string const& name : names) {
    EXPECT_THAT(listFontFamilies(name), ElementsAre("sans-serif")) << name;
  }
}

}  // namespace
}  // namespace Zorv::Render
