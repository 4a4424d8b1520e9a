#include "render/Html/RuledPositions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/MakePicture.h"

namespace Zorv::Render {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(RuledPositions, RangesThatOverlapGiveEachColumnOnce) {
  TestSupport::MadePicture made(4, 6);
  made.addRule({1, 0, 3, 2}, "a");
  made.addRule({2, 1, 4, 4}, "b");
  RuledPositions positions(made.sheet());
  EXPECT_THAT(positions.findColumns(0), IsEmpty());
  EXPECT_THAT(positions.findColumns(1), ElementsAre(0, 1));
  EXPECT_THAT(positions.findColumns(2), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(positions.findColumns(3), ElementsAre(1, 2, 3));
}

TEST(RuledPositions, HiddenLinesAreNotThere) {
  TestSupport::MadePicture made(2, 3);
  made.sheet().rows[1].index = 9;
  made.sheet().columns[2].index = 7;
  made.addRule({3, 3, 10, 8}, "a");
  made.addRule({0, 3, 1, 5}, "in hidden columns alone");
  RuledPositions positions(made.sheet());
  EXPECT_THAT(positions.findColumns(0), IsEmpty());
  EXPECT_THAT(positions.findColumns(1), ElementsAre(2));
}

TEST(RuledPositions, RowsMayBeLeftOut) {
  TestSupport::MadePicture made(4, 2);
  made.addRule({0, 0, 2, 1}, "a");
  made.addRule({1, 1, 4, 2}, "b");
  RuledPositions positions(made.sheet());
  EXPECT_THAT(positions.findColumns(3), ElementsAre(1));
}

}  // namespace
}  // namespace Zorv::Render
