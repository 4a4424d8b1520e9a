#include "ConditionalFormatters/Operands/CndFrmt_DistinctRanking.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <span>
#include <vector>

#include <gtest/gtest.h>

#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using TestSupport::infinity;
using TestSupport::nan;

std::vector<FloatNumber> toNumbers(std::vector<double> const& values) {
  return {values.begin(), values.end()};
}

std::vector<double> toDoubles(std::vector<FloatNumber> const& numbers) {
  std::vector<double> values;
  for (auto const number : numbers) {
    values.push_back(number.get());
  }
  return values;
}

std::vector<double> rank(std::vector<double> const& values, RankingOrder order) {
  auto numbers = toNumbers(values);
  rankDistinct(numbers, order);
  return toDoubles(numbers);
}

/// The plainest ranking: each number that is not there yet goes before the first that is worse.
std::vector<double> rankPlainly(std::vector<double> const& values, RankingOrder order) {
  std::vector<double> ranking;
  for (double const value : values) {
    if (std::isnan(value) || std::ranges::find(ranking, value) != ranking.end()) {
      continue;
    }
    auto const isWorse = [&](double other) {
      return order == RankingOrder::LargestFirst ? other < value : other > value;
    };
    ranking.insert(std::ranges::find_if(ranking, isWorse), value);
  }
  return ranking.empty() && !values.empty() ? std::vector{nan} : ranking;
}

/// A NaN is alike to a NaN here, and the two zeros are alike.
bool isAlike(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

TEST(DistinctRanking, LeavesEachNumberOnceFromTheBestToTheWorst) {
  std::vector<double> const values = {5, 3, 5, -infinity, 4, infinity, -2.5, 4};
  EXPECT_EQ(rank(values, RankingOrder::LargestFirst),
            (std::vector<double>{infinity, 5, 4, 3, -2.5, -infinity}));
  EXPECT_EQ(rank(values, RankingOrder::SmallestFirst),
            (std::vector<double>{-infinity, -2.5, 3, 4, 5, infinity}));
}

TEST(DistinctRanking, OfNothingIsNothing) {
  EXPECT_TRUE(rank({}, RankingOrder::LargestFirst).empty());
  EXPECT_TRUE(rank({}, RankingOrder::SmallestFirst).empty());
  EXPECT_TRUE(selectBest({}, RankingOrder::LargestFirst, 1).empty());
}

TEST(DistinctRanking, TheTwoZerosAreOneNumber) {
  for (auto const order : {RankingOrder::LargestFirst, RankingOrder::SmallestFirst}) {
    EXPECT_EQ(rank({0.0, -0.0, 0.0, -0.0}, order).size(), 1);
  }
}

TEST(DistinctRanking, NaNsAreNotCounted) {
  EXPECT_EQ(rank({nan, 1, nan, 2, nan}, RankingOrder::LargestFirst), (std::vector<double>{2, 1}));
  EXPECT_EQ(rank({nan, 1, nan, 2, nan}, RankingOrder::SmallestFirst), (std::vector<double>{1, 2}));
}

TEST(DistinctRanking, OfNaNsAloneIsOneNaN) {
  for (auto const order : {RankingOrder::LargestFirst, RankingOrder::SmallestFirst}) {
    auto const ranking = rank({nan, -nan, nan}, order);
    ASSERT_EQ(ranking.size(), 1);
    EXPECT_TRUE(std::isnan(ranking.front()));
    auto const best = selectBest(toNumbers({nan, -nan}), order, 3);
    ASSERT_EQ(best.size(), 1);
    EXPECT_TRUE(std::isnan(best.front().get()));
  }
}

/// Numbers of a few forms, so that repeats, NaNs and zeros of both signs meet in every vector.
class RandomNumbers {
public:
  std::vector<double> make(std::size_t size, int spread) {
    std::uniform_int_distribution form(0, 19);
    std::uniform_int_distribution whole(-spread, spread);
    std::vector<double> values(size);
    for (double& value : values) {
      value = makeOne(form(_random), whole(_random));
    }
    return values;
  }

private:
  static double makeOne(int form, int whole) {
    switch (form) {
      case 0:
        return nan;
      case 1:
        return -0.0;
      case 2:
        return 0.0;
      case 3:
        return whole > 0 ? infinity : -infinity;
      case 4:
        return whole * 0.1;
      default:
        return whole;
    }
  }

  std::mt19937 _random{20240515};
};

TEST(DistinctRanking, SortingAndSelectingAgreeWithThePlainestRanking) {
  RandomNumbers random;
  for (int round = 0; round < 150; ++round) {
    auto const values = random.make(static_cast<std::size_t>(1 + 2 * round), 1 + round % 97);
    for (auto const order : {RankingOrder::LargestFirst, RankingOrder::SmallestFirst}) {
      auto const expected = rankPlainly(values, order);
      auto const ranking = rank(values, order);
      ASSERT_TRUE(std::ranges::equal(ranking, expected, isAlike)) << "round " << round;
      auto const numbers = toNumbers(values);
      for (std::size_t k = 1; k <= largestSelectedRank; k += k < 4 ? 1 : 6) {
        auto const best = toDoubles(selectBest(numbers, order, k));
        auto const first = std::span(expected).first(std::min(k, expected.size()));
        ASSERT_TRUE(std::ranges::equal(best, first, isAlike))
            << "round " << round << ", the best " << k;
      }
    }
  }
}

TEST(DistinctRanking, SelectingDoesNotDependOnTheOrderOfArrival) {
  std::vector<double> values(1000);
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = static_cast<double>(i / 3);
  }
  for (int turn = 0; turn < 2; ++turn) {
    for (std::size_t k = 1; k <= largestSelectedRank; ++k) {
      auto const rankAsNumber = static_cast<double>(k);
      EXPECT_EQ(selectBest(toNumbers(values), RankingOrder::LargestFirst, k).back().get(),
                334 - rankAsNumber);
      EXPECT_EQ(selectBest(toNumbers(values), RankingOrder::SmallestFirst, k).back().get(),
                rankAsNumber - 1);
    }
    std::ranges::reverse(values);
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
