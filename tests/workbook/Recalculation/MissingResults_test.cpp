#include "workbook/Recalculation/MissingResults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Zorv::Workbook {
namespace {

using testing::Optional;

/// By number: A1, A5, B3, D2 of the first sheet, A1 of the second.
MissingResults makeResults() {
  return MissingResults({{1, 0, 0, 9}, {0, 1, 2, 9}, {0, 0, 4, 9}, {0, 3, 1, 9}, {0, 0, 0, 9}});
}

TEST(MissingResults, AreOrderedBySheetColumnAndRow) {
  MissingResults const results = makeResults();
  ASSERT_EQ(results.size(), 5U);
  EXPECT_EQ(results[1].row, 4U);
  EXPECT_EQ(results[2].column, 1U);
  EXPECT_EQ(results[4].sheet, 1U);
}

TEST(MissingResults, AreFoundInRanges) {
  MissingResults results = makeResults();
  EXPECT_THAT(results.findIn(0, {0, 0, 9, 9}), Optional(0U));
  EXPECT_THAT(results.findIn(0, {1, 0, 9, 9}), Optional(1U));
  EXPECT_THAT(results.findIn(0, {1, 0, 3, 9}), Optional(2U));
  EXPECT_THAT(results.findIn(0, {1, 0, 2, 9}), Optional(3U));
  EXPECT_THAT(results.findIn(1, {0, 0, 1, 1}), Optional(4U));
}

TEST(MissingResults, AreNotFoundBesideRanges) {
  MissingResults results = makeResults();
  EXPECT_EQ(results.findIn(0, {1, 0, 4, 1}), std::nullopt);
  EXPECT_EQ(results.findIn(0, {2, 2, 9, 9}), std::nullopt);
  EXPECT_EQ(results.findIn(0, {1, 1, 2, 3}), std::nullopt);
  EXPECT_EQ(results.findIn(1, {0, 1, 9, 9}), std::nullopt);
  EXPECT_EQ(results.findIn(2, {0, 0, 9, 9}), std::nullopt);
}

TEST(MissingResults, AreSteppedOverOnceTheyAreThere) {
  MissingResults results = makeResults();
  results.finish(1);
  results.finish(0);
  EXPECT_FALSE(results.isMissing(0));
  EXPECT_TRUE(results.isMissing(2));
  EXPECT_THAT(results.findIn(0, {0, 0, 9, 9}), Optional(2U));
  EXPECT_EQ(results.findIn(0, {0, 0, 9, 1}), std::nullopt);
  results.finish(2);
  results.finish(3);
  results.finish(4);
  EXPECT_EQ(results.findIn(0, {0, 0, 9, 9}), std::nullopt);
  EXPECT_EQ(results.findIn(1, {0, 0, 9, 9}), std::nullopt);
}

TEST(MissingResults, ACellThatIsThereTwiceCountsOnce) {
  EXPECT_EQ(MissingResults({{0, 1, 2, 3}, {0, 1, 2, 4}}).size(), 1U);
}

}  // namespace
}  // namespace Zorv::Workbook
