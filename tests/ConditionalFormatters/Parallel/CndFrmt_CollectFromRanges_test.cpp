#include "ConditionalFormatters/Parallel/CndFrmt_CollectFromRanges.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

/// Collects positions and numbers of a block.
class Sink {
public:
  using State = std::vector<std::pair<unsigned long, double>>;

  void add(DOM::CellInfo const& cellInfo, FormulaValue const& value) {
    _state.emplace_back(cellInfo.getRowIndex(),
                        boost::get<FormulaModel::FormulaNumber>(value).value.get());
  }
  [[nodiscard]] State finalize() { return std::move(_state); }

private:
  State _state;
};

/// A column of the numbers of its rows, with a gap.
class CollectFromRangesTest : public testing::TestWithParam<unsigned> {
protected:
  static constexpr unsigned long rowCount = 20'000;

  CollectFromRangesTest() {
    for (unsigned long row = 0; row < rowCount; ++row) {
      if (row != 7) {
        _table.setValue(row, 0, number(static_cast<double>(row)));
      }
    }
  }

  Sink::State collect(ValueContextProvider const& provider, std::vector<TableRange> const& ranges,
                      WorkBudget* budget = nullptr) {
    Sink::State all;
    collectFromRanges(
        {provider, _table, ranges, {GetParam(), budget}}, [] { return Sink(); },
        [&](Sink::State const& state) { all.insert(all.end(), state.begin(), state.end()); });
    return all;
  }

  /// The rows of the cells that are collected, ascending.
  std::vector<unsigned long> collectRowsAtMostTwice(std::vector<TableRange> const& ranges) {
    PlainValueContextProvider const provider(_table);
    std::vector<unsigned long> rows;
    collectAtMostTwice(
        {provider, _table, ranges, {GetParam()}}, [] { return Sink(); },
        [&](Sink::State const& state) {
          for (auto const& [row, value] : state) {
            rows.push_back(row);
          }
        });
    std::ranges::sort(rows);
    return rows;
  }

  DOM::Table _table;
};

TEST_P(CollectFromRangesTest, CombinesExistingCellsInOrderOfRangesAndRows) {
  PlainValueContextProvider const provider(_table);
  Sink::State expected;
  for (auto const& [first, end] : {std::pair{15'000UL, rowCount}, {0UL, 16'000UL}}) {
    for (unsigned long row = first; row < end; ++row) {
      if (row != 7) {
        expected.emplace_back(row, static_cast<double>(row));
      }
    }
  }
  EXPECT_EQ(collect(provider, {{15'000, 0, 1'048'576, 1}, {3, 3, 3, 9}, {0, 0, 16'000, 1}}),
            expected);
}

TEST_P(CollectFromRangesTest, WithoutRangesNothingIsCombined) {
  PlainValueContextProvider const provider(_table);
  EXPECT_TRUE(collect(provider, {}).empty());
}

class FailingProvider final : public ForwardingValueContextProvider {
public:
  explicit FailingProvider(DOM::Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    if (cellInfo.getRowIndex() >= 9'000) {
      throw std::runtime_error(std::to_string(cellInfo.getRowIndex()));
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }
};

TEST_P(CollectFromRangesTest, ThrowsForTheFirstCellThatTheProviderRefuses) {
  FailingProvider const provider(_table);
  try {
    static_cast<void>(collect(provider, {{0, 0, rowCount, 1}}));
    FAIL();
  } catch (std::runtime_error const& error) {
    EXPECT_STREQ(error.what(), "9000");
  }
}

TEST_P(CollectFromRangesTest, SpendsAStepForEachCellAndMemoryForItsState) {
  PlainValueContextProvider const provider(_table);
  WorkBudget ample({});
  static_cast<void>(collect(provider, {{0, 0, rowCount, 1}}, &ample));
  EXPECT_GT(ample.getSteps(), rowCount / 2);
  EXPECT_EQ(ample.getBytes() % (rowCount - 1), 0U);
  WorkBudget tooFewSteps({.steps = rowCount / 4});
  EXPECT_THROW(static_cast<void>(collect(provider, {{0, 0, rowCount, 1}}, &tooFewSteps)),
               WorkBudgetExceeded);
  WorkBudget tooFewBytes({.bytes = rowCount});
  EXPECT_THROW(static_cast<void>(collect(provider, {{0, 0, rowCount, 1}}, &tooFewBytes)),
               WorkBudgetExceeded);
}

TEST_P(CollectFromRangesTest, CellsOfManyOverlappingRangesAreCollectedTwice) {
  // Rows 0 to 29 lie in one to thirty ranges, the row of the gap has no cell.
  std::vector<TableRange> ranges;
  for (unsigned long end = 1; end <= 30; ++end) {
    ranges.push_back({0, 0, end, 1});
  }
  std::vector<unsigned long> expected;
  for (unsigned long row = 0; row < 30; ++row) {
    expected.insert(expected.end(), row == 7 ? 0 : row == 29 ? 1 : 2, row);
  }
  EXPECT_EQ(collectRowsAtMostTwice(ranges), expected);
}

TEST_P(CollectFromRangesTest, FewOverlapsAreCollectedRangeByRange) {
  EXPECT_EQ(collectRowsAtMostTwice({{0, 0, 2, 1}, {0, 0, 2, 1}, {0, 0, 1, 1}}),
            (std::vector<unsigned long>{0, 0, 0, 1, 1}));
}

TEST(OverlapMuch, HoldsWhereCellsLieInManyRangesOnAverage) {
  TableRange const column{0, 0, 1'048'576, 1};
  EXPECT_FALSE(overlapMuch({column, column, column}));
  EXPECT_TRUE(overlapMuch(std::vector<TableRange>(5, column)));
  EXPECT_FALSE(
      overlapMuch({{0, 0, 9, 1}, {9, 0, 18, 1}, {18, 0, 27, 1}, {0, 0, 9, 1}, {0, 5, 9, 6}}));
}

INSTANTIATE_TEST_SUITE_P(Threads, CollectFromRangesTest, testing::Values(1U, 2U, 7U));

TEST(BlockList, HoldsTheBlocksOfOneRangeAfterTheOther) {
  using DOM::RowBlocks;
  BlockList blocks;
  EXPECT_EQ(blocks.count(), 0U);
  std::vector<TableRange> expected;
  for (TableRange const& range :
       {TableRange{0, 0, 9'000, 1}, {5, 5, 5, 9}, {2, 2, 3, 3}, {0, 0, 20, 1'000}}) {
    auto const ofRange = RowBlocks::ofPositions(range);
    blocks.add(ofRange);
    for (std::size_t block = 0; block < ofRange.count(); ++block) {
      expected.push_back(ofRange.at(block));
    }
  }
  ASSERT_EQ(blocks.count(), expected.size());
  for (std::size_t block = 0; block < expected.size(); ++block) {
    EXPECT_EQ(blocks.at(block), expected[block]) << block;
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
