#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

#include "DOM/ConditionalFormat.h"

namespace Zorv::ConditionalFormatters {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Interval = std::pair<unsigned long, unsigned long>;

constexpr unsigned long lastIndex = std::numeric_limits<unsigned long>::max();

std::vector<FormatIndex> listFormats(RangeIndex const& index) {
  std::vector<FormatIndex> formats;
  for (FormatRange const& entry : index.getRanges()) {
    formats.push_back(entry.format);
  }
  return formats;
}

TEST(RangeIndex, OrdersRangesByFirstRowAndThenByFormat) {
  RangeIndex const index(std::vector<FormatRange>{
      {{5, 0, 6, 1}, 0}, {{2, 0, 9, 1}, 3}, {{2, 4, 3, 5}, 1}, {{0, 0, 1, 1}, 2}});
  EXPECT_THAT(listFormats(index), ElementsAre(2U, 1U, 3U, 0U));
}

TEST(RangeIndex, OrdersRangesByEndRowAndThenByFormatFromTheLast) {
  RangeIndex const index(
      std::vector<FormatRange>{{{0, 0, 9, 1}, 0}, {{1, 0, 4, 1}, 1}, {{2, 0, 9, 1}, 2}});
  EXPECT_THAT(index.getByEndRow(), ElementsAre(1U, 2U, 0U));
}

TEST(RangeIndex, LeavesOutEmptyRanges) {
  RangeIndex const index(
      std::vector<TableRange>{{3, 3, 3, 8}, {5, 5, 6, 5}, {5, 5, 4, 9}, {1, 2, 3, 4}});
  ASSERT_EQ(index.getRanges().size(), 1U);
  EXPECT_EQ(index.getRanges().front().range, (TableRange{1, 2, 3, 4}));
  EXPECT_THAT(index.getColumnBorders(), ElementsAre(2U, 4U));
}

TEST(RangeIndex, BordersCutTheSheetIntoIntervals) {
  RangeIndex const index(std::vector<TableRange>{{2, 10, 6, 20}, {4, 15, 8, 20}});
  EXPECT_EQ(index.rowsAround(0), (Interval{0, 2}));
  EXPECT_EQ(index.rowsAround(2), (Interval{2, 4}));
  EXPECT_EQ(index.rowsAround(5), (Interval{4, 6}));
  EXPECT_EQ(index.rowsAround(7), (Interval{6, 8}));
  EXPECT_EQ(index.rowsAround(8), (Interval{8, lastIndex}));
  EXPECT_THAT(index.getColumnBorders(), ElementsAre(10U, 15U, 20U));
  EXPECT_EQ(index.columnIntervalOf(9), 0U);
  EXPECT_EQ(index.columnIntervalOf(10), 1U);
  EXPECT_EQ(index.columnIntervalOf(19), 2U);
  EXPECT_EQ(index.columnIntervalOf(20), 3U);
  EXPECT_EQ(index.columnsOf(0), (Interval{0, 10}));
  EXPECT_EQ(index.columnsOf(1), (Interval{10, 15}));
  EXPECT_EQ(index.columnsOf(3), (Interval{20, lastIndex}));
}

TEST(RangeIndex, HoldsTheRangesOfEachFormat) {
  DOM::ConditionalFormat const format({}, DOM::NullaryConditionalFormatOperator({}), UUID());
  ConditionalFormatRefs const refs{
      {{}, format}, {{{7, 0, 8, 1}, {0, 0, 1, 1}}, format}, {{{0, 0, 9, 9}}, format}};
  EXPECT_THAT(listFormats(RangeIndex(refs)), ElementsAre(1U, 2U, 1U));
}

TEST(RangeIndex, OfNothingIsOneInterval) {
  RangeIndex const index(std::vector<TableRange>{});
  EXPECT_THAT(index.getRanges(), IsEmpty());
  EXPECT_EQ(index.rowsAround(5), (Interval{0, lastIndex}));
  EXPECT_EQ(index.columnsOf(index.columnIntervalOf(5)), (Interval{0, lastIndex}));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
