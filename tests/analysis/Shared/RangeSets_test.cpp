#include "analysis/Shared/RangeSets.h"

#include <random>
#include <set>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Zorv::Analysis {
namespace {

using Position = std::pair<unsigned long, unsigned long>;

std::set<Position> listPositions(RangeSet const& ranges) {
  std::set<Position> positions;
  for (TableRange const& range : ranges) {
    for (auto row = range.firstRow; row < range.endRow; ++row) {
      for (auto column = range.firstColumn; column < range.endColumn; ++column) {
        positions.emplace(row, column);
      }
    }
  }
  return positions;
}

RangeSet makeRandomSet(std::mt19937& random) {
  RangeSet ranges;
  for (auto count = 1 + random() % 6; count > 0; --count) {
    unsigned long const row = random() % 8;
    unsigned long const column = random() % 8;
    ranges.push_back({row, column, row + 1 + random() % 4, column + 1 + random() % 4});
  }
  return ranges;
}

class RangeSets : public testing::Test {
protected:
  StepCounter counter{nullptr};
};

TEST_F(RangeSets, AgreeWithSetsOfPositions) {
  constexpr unsigned seed = 11;
  std::mt19937 random(seed);
  for (int round = 0; round < 3'000; ++round) {
    auto const a = makeRandomSet(random);
    auto const b = makeRandomSet(random);
    auto const c = makeRandomSet(random);
    auto const inA = listPositions(a);
    auto const inB = listPositions(b);
    auto const inC = listPositions(c);
    bool shares = false;
    bool hasAll = true;
    bool hasPart = true;
    for (auto const& position : inB) {
      bool const isInA = inA.contains(position);
      shares = shares || isInA;
      hasAll = hasAll && isInA;
      hasPart = hasPart && (isInA || !inC.contains(position));
    }
    ASSERT_EQ(overlaps(a, b, counter), shares) << "round " << round << " of seed " << seed;
    ASSERT_EQ(covers(a, b, counter), hasAll) << "round " << round << " of seed " << seed;
    ASSERT_EQ(coversPart(a, b, c, counter), hasPart) << "round " << round << " of seed " << seed;
    auto const united = unite(a, counter);
    ASSERT_EQ(listPositions(united), inA) << "round " << round << " of seed " << seed;
    ASSERT_LE(united.size(), a.size() * a.size()) << "round " << round << " of seed " << seed;
  }
}

TEST_F(RangeSets, UniteNeighbours) {
  EXPECT_THAT(unite({{0, 0, 5, 1}, {5, 0, 9, 1}}, counter),
              testing::ElementsAre(TableRange{0, 0, 9, 1}));
  EXPECT_THAT(unite({{0, 1, 5, 2}, {0, 0, 5, 1}}, counter),
              testing::ElementsAre(TableRange{0, 0, 5, 2}));
}

TEST_F(RangeSets, UniteManyCellsToTheRectangleThatTheyFill) {
  RangeSet cells;
  for (unsigned long row = 0; row < 60; ++row) {
    for (unsigned long column = 0; column < 7; ++column) {
      cells.push_back({row, column, row + 1, column + 1});
    }
  }
  EXPECT_THAT(unite(cells, counter), testing::ElementsAre(TableRange{0, 0, 60, 7}));
}

TEST_F(RangeSets, UniteToTheFewerRangesOfTwoDirections) {
  // A bar with three teeth: four ranges by rows, five by columns.
  RangeSet const comb{{0, 0, 9, 1}, {0, 1, 1, 2}, {0, 2, 9, 3}, {0, 3, 1, 4}, {0, 4, 9, 5}};
  EXPECT_EQ(unite(comb, counter).size(), 4U);
  RangeSet turned;
  for (TableRange const& range : comb) {
    turned.push_back({range.firstColumn, range.firstRow, range.endColumn, range.endRow});
  }
  EXPECT_EQ(unite(turned, counter).size(), 4U);
}

TEST_F(RangeSets, UniteKeepsACrossAsItsTwoBars) {
  RangeSet const cross{{2, 0, 3, 5}, {0, 2, 5, 3}};
  EXPECT_THAT(unite(cross, counter), testing::UnorderedElementsAreArray(cross));
}

TEST_F(RangeSets, CoversGivesUpAfterSoManyComparisons) {
  RangeSet const outer{{0, 0, 1, 1}, {1, 0, 2, 1}, {2, 0, 3, 1}};
  EXPECT_TRUE(covers(outer, {{0, 0, 3, 1}}, counter, 6));
  EXPECT_FALSE(covers(outer, {{0, 0, 3, 1}}, counter, 2));
}

TEST_F(RangeSets, SpendTheirComparisons) {
  WorkBudget budget({.steps = 5'000});
  StepCounter limited(&budget);
  RangeSet const many(200, TableRange{0, 0, 1, 1});
  EXPECT_THROW(static_cast<void>(overlaps(many, RangeSet(200, TableRange{5, 5, 6, 6}), limited)),
               WorkBudgetExceeded);
}

}  // namespace
}  // namespace Zorv::Analysis
