#include "render/Terminal/BoxCharacters.h"

#include <gtest/gtest.h>

namespace Zorv::Render {
namespace {

constexpr auto none = LineWeight::None;
constexpr auto light = LineWeight::Light;
constexpr auto heavy = LineWeight::Heavy;
constexpr auto twofold = LineWeight::Double;

TEST(BoxCharacters, LinesMeetByTheirWeights) {
  struct Case {
    LineArms arms;
    char32_t expected;
  };
  for (auto const& [arms, expected] : {
           Case{{none, none, none, none}, U' '},
           Case{{light, light, none, none}, U'─'},
           Case{{none, none, heavy, heavy}, U'┃'},
           Case{{none, light, none, light}, U'┌'},
           Case{{light, none, none, light}, U'┐'},
           Case{{none, light, light, none}, U'└'},
           Case{{light, light, light, light}, U'┼'},
           Case{{heavy, heavy, light, light}, U'┿'},
           Case{{light, heavy, light, heavy}, U'╆'},
           Case{{twofold, twofold, none, twofold}, U'╦'},
           Case{{light, light, twofold, none}, U'╨'},
           Case{{none, twofold, light, light}, U'╞'},
           Case{{light, none, none, none}, U'╴'},
       }) {
    EXPECT_EQ(findBoxCharacter(arms), expected);
  }
}

TEST(BoxCharacters, WeightsThatUnicodeDoesNotCombineGiveTheNearest) {
  EXPECT_EQ(findBoxCharacter({heavy, heavy, twofold, twofold}), U'╫');
  EXPECT_EQ(findBoxCharacter({light, twofold, none, none}), U'═');
}

TEST(BoxCharacters, DashesAndDotsShowOnStraightLines) {
  EXPECT_EQ(findLineCharacter(DOM::LineStyle::Thin, false), U'─');
  EXPECT_EQ(findLineCharacter(DOM::LineStyle::Thick, true), U'┃');
  EXPECT_EQ(findLineCharacter(DOM::LineStyle::Dotted, true), U'┊');
  EXPECT_EQ(findLineCharacter(DOM::LineStyle::MediumDashed, false), U'╍');
  EXPECT_EQ(findLineCharacter(DOM::LineStyle::DashDotDot, false), U'┄');
  EXPECT_EQ(findLineCharacter(DOM::LineStyle::Double, true), U'║');
}

TEST(BoxCharacters, EveryStyleButNoneIsSeen) {
  for (int style = 1; style <= static_cast<int>(DOM::LineStyle::SlantDashDot); ++style) {
    EXPECT_NE(toLineWeight(static_cast<DOM::LineStyle>(style)), none) << style;
  }
  EXPECT_EQ(toLineWeight(DOM::LineStyle::None), none);
}

}  // namespace
}  // namespace Zorv::Render
