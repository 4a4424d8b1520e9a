#include "visuals/Draw/FindIcon.h"

#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Visuals {
namespace {

std::vector<double> const arrowBounds{0, 33, 67};

IconSet makeArrows() { return {.name = IconSetName::Arrows3, .steps = {{}, {}, {}}}; }

unsigned indexOf(IconSet const& set, double value) {
  return findIcon(set, arrowBounds, value).index;
}

TEST(FindIcon, AValueAtAThresholdReachesIt) {
  auto const set = makeArrows();
  EXPECT_EQ(indexOf(set, 32.9), 0U);
  EXPECT_EQ(indexOf(set, 33), 1U);
  EXPECT_EQ(indexOf(set, 66.9), 1U);
  EXPECT_EQ(indexOf(set, 67), 2U);
  EXPECT_EQ(findIcon(set, arrowBounds, 67).set, IconSetName::Arrows3);
}

TEST(FindIcon, ValuesBelowTheFirstThresholdHaveTheFirstIcon) {
  EXPECT_EQ(indexOf(makeArrows(), -5), 0U);
}

TEST(FindIcon, AStrictThresholdIsNotReachedByAnEqualValue) {
  auto set = makeArrows();
  set.steps[1].orEqual = false;
  EXPECT_EQ(indexOf(set, 33), 0U);
  EXPECT_EQ(indexOf(set, 33.1), 1U);
  EXPECT_EQ(indexOf(set, 67), 2U);
}

TEST(FindIcon, AReversedSetGivesTheIconThatIsDrawn) {
  auto set = makeArrows();
  set.isReversed = true;
  EXPECT_EQ(indexOf(set, 0), 2U);
  EXPECT_EQ(indexOf(set, 50), 1U);
  EXPECT_EQ(indexOf(set, 99), 0U);
}

TEST(FindIcon, OwnIconsAreThoseOfTheSteps) {
  auto set = makeArrows();
  set.ownIcons = {{IconSetName::Flags3, 2}, {IconSetName::NoIcons, 0}, {IconSetName::Boxes5, 4}};
  EXPECT_EQ(findIcon(set, arrowBounds, 0), set.ownIcons[0]);
  EXPECT_EQ(findIcon(set, arrowBounds, 50), set.ownIcons[1]);
  EXPECT_EQ(findIcon(set, arrowBounds, 99), set.ownIcons[2]);
  set.isReversed = true;
  EXPECT_EQ(findIcon(set, arrowBounds, 99), set.ownIcons[0]);
}

/// The second threshold counts as the higher of the first two, so that no step is skipped.
TEST(FindIcon, AStepIsReachedOnlyThroughTheOnesBefore) {
  EXPECT_EQ(findIcon(makeArrows(), std::vector<double>{0, 67, 67}, 66).index, 0U);
  EXPECT_EQ(findIcon(makeArrows(), std::vector<double>{0, 67, 67}, 67).index, 2U);
}

}  // namespace
}  // namespace Zorv::Visuals
