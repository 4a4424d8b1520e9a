#include "ConditionalFormatters/Following/CndFrmt_NumberRanking.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

constexpr double rankedNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double rankedInfinity = std::numeric_limits<double>::infinity();

/// Expects the ranking of some numbers from both ends.
void expectRankingOf(std::vector<double> const& numbers, NumberRanking const& ranking) {
  for (RankingOrder const order : {RankingOrder::LargestFirst, RankingOrder::SmallestFirst}) {
    std::vector<FloatNumber> expected;
    for (double const number : numbers) {
      expected.emplace_back(number);
    }
    rankDistinct(expected, order);
    ASSERT_EQ(ranking.count(), expected.size());
    for (std::size_t rank = 1; rank <= expected.size(); ++rank) {
      double const wanted = expected[rank - 1].get();
      double const found = ranking.at(rank, order).get();
      ASSERT_TRUE(found == wanted || (std::isnan(found) && std::isnan(wanted))) << "rank " << rank;
    }
  }
}

/// Expects all numbers in their order, equal ones as often as they occur.
void expectOrderOf(std::vector<double> numbers, NumberRanking& ranking) {
  std::erase_if(numbers, [](double number) { return std::isnan(number); });
  std::ranges::sort(numbers);
  ranking.indexCounts();
  ASSERT_EQ(ranking.countAll(), numbers.size());
  for (std::size_t index = 0; index < numbers.size(); ++index) {
    ASSERT_EQ(ranking.atIndex(index).get(), numbers[index]) << "index " << index;
  }
  numbers.push_back(0.125);
  for (std::size_t index = 0; index < numbers.size(); index += 7) {
    double const asked = numbers[numbers.size() - 1 - index];
    auto const below = std::count_if(numbers.begin(), numbers.end() - 1,
                                     [&](double number) { return number < asked; });
    auto const equal = std::count(numbers.begin(), numbers.end() - 1, asked);
    auto const counts = ranking.countAround(FloatNumber(asked));
    ASSERT_EQ(counts.below, static_cast<std::size_t>(below)) << asked;
    ASSERT_EQ(counts.equal, static_cast<std::size_t>(equal)) << asked;
    ASSERT_EQ(counts.above, numbers.size() - 1 - counts.below - counts.equal) << asked;
  }
}

double drawRanked(std::mt19937& random) {
  switch (random() % 40) {
    case 0:
      return rankedNaN;
    case 1:
      return random() % 2 == 0 ? rankedInfinity : -rankedInfinity;
    case 2:
      return random() % 2 == 0 ? 0.0 : -0.0;
    default:
      return (static_cast<double>(random() % 4'000) - 2'000) * 0.25;
  }
}

TEST(NumberRanking, FollowsRandomEdits) {
  std::mt19937 random(3);
  NumberRanking ranking;
  std::vector<double> numbers;
  for (int edit = 0; edit < 12'000; ++edit) {
    // Grows, and then shrinks until nothing is left.
    if (numbers.empty() || random() % 10 < (edit < 7'000 ? 8U : 1U)) {
      numbers.push_back(drawRanked(random));
      ranking.insert(FloatNumber(numbers.back()));
    } else {
      std::swap(numbers[random() % numbers.size()], numbers.back());
      ranking.erase(FloatNumber(numbers.back()));
      numbers.pop_back();
    }
    if (edit % 1'000 == 0 || edit == 11'999) {
      ASSERT_NO_FATAL_FAILURE(expectRankingOf(numbers, ranking)) << "edit " << edit;
      ASSERT_NO_FATAL_FAILURE(expectOrderOf(numbers, ranking)) << "edit " << edit;
    }
  }
}

TEST(NumberRanking, TakesManyNumbersAtOnce) {
  std::mt19937 random(4);
  NumberRanking ranking;
  std::vector<double> numbers;
  for (std::size_t const count : {0UL, 1UL, 3'000UL, 10UL, 5'000UL}) {
    std::vector<FloatNumber> added;
    for (std::size_t index = 0; index < count; ++index) {
      numbers.push_back(drawRanked(random));
      added.emplace_back(numbers.back());
    }
    ranking.insertMany(added);
    ASSERT_NO_FATAL_FAILURE(expectRankingOf(numbers, ranking)) << count;
    ASSERT_NO_FATAL_FAILURE(expectOrderOf(numbers, ranking)) << count;
  }
  for (double const number : numbers) {
    ranking.erase(FloatNumber(number));
  }
  EXPECT_EQ(ranking.count(), 0U);
}

TEST(NumberRanking, NaNCountsWhereThereIsNothingElse) {
  NumberRanking ranking;
  ranking.insert(FloatNumber(rankedNaN));
  ranking.insert(FloatNumber(rankedNaN));
  ASSERT_NO_FATAL_FAILURE(expectRankingOf({rankedNaN, rankedNaN}, ranking));
  ranking.insert(FloatNumber(3));
  ASSERT_NO_FATAL_FAILURE(expectRankingOf({rankedNaN, 3}, ranking));
  ranking.erase(FloatNumber(3));
  ranking.erase(FloatNumber(rankedNaN));
  EXPECT_EQ(ranking.count(), 1U);
  ranking.erase(FloatNumber(rankedNaN));
  EXPECT_EQ(ranking.count(), 0U);
}

TEST(NumberRanking, TakesTwelveBytesForADistinctNumber) {
  NumberRanking ranking;
  constexpr std::size_t count = 100'000;
  std::vector<FloatNumber> numbers;
  for (std::size_t index = 0; index < 2 * count; ++index) {
    numbers.emplace_back(static_cast<double>(index % count));
  }
  ranking.insertMany(numbers);
  EXPECT_LT(ranking.countBytes(), 13 * count);
  EXPECT_GE(ranking.countBytes(), 12 * count);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
