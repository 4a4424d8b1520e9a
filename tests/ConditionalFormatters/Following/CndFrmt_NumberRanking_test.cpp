#include "ConditionalFormatters/Following/CndFrmt_NumberRanking.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
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

std::vector<FloatNumber> asRanked(std::vector<double> const& numbers) {
  return {numbers.begin(), numbers.end()};
}

void expectBothOf(std::vector<double> const& numbers, NumberRanking& ranking) {
  ASSERT_NO_FATAL_FAILURE(expectRankingOf(numbers, ranking));
  ASSERT_NO_FATAL_FAILURE(expectOrderOf(numbers, ranking));
}

TEST(NumberRanking, FollowsEditsOfManyNumbersAtOnce) {
  std::mt19937 random(5);
  NumberRanking ranking;
  std::vector<double> numbers;
  for (int edit = 0; edit < 24; ++edit) {
    // Grows, and then shrinks until nothing is left; some edits are small.
    std::size_t const most = edit % 4 == 0 ? 300 : 4'000;
    std::vector<double> inserted;
    for (std::size_t count = random() % (edit < 14 ? most : most / 4); count > 0; --count) {
      inserted.push_back(drawRanked(random));
    }
    numbers.insert(numbers.end(), inserted.begin(), inserted.end());
    std::ranges::shuffle(numbers, random);
    std::size_t const left = edit == 23 ? 0 : numbers.size() - random() % (numbers.size() / 2 + 1);
    std::vector<double> const erased(numbers.begin() + static_cast<std::ptrdiff_t>(left),
                                     numbers.end());
    numbers.resize(left);
    ranking.change(asRanked(inserted), asRanked(erased));
    ASSERT_NO_FATAL_FAILURE(expectBothOf(numbers, ranking)) << "edit " << edit;
  }
  EXPECT_EQ(ranking.count(), 0U);
}

/// The numbers from one up to, but without, another one.
std::vector<double> countRanked(int first, int end) {
  std::vector<double> numbers(static_cast<std::size_t>(end - first));
  std::iota(numbers.begin(), numbers.end(), first);
  return numbers;
}

TEST(NumberRanking, LosesWholeBlocksAndAllNumbersAtOnce) {
  NumberRanking ranking;
  ranking.insertMany(asRanked(countRanked(0, 9'000)));
  // Some blocks keep none of their numbers, and others a part.
  ranking.change({}, asRanked(countRanked(700, 6'000)));
  auto left = countRanked(0, 700);
  auto const upper = countRanked(6'000, 9'000);
  left.insert(left.end(), upper.begin(), upper.end());
  ASSERT_NO_FATAL_FAILURE(expectBothOf(left, ranking));
  ranking.change({}, asRanked(left));
  ASSERT_NO_FATAL_FAILURE(expectBothOf({}, ranking));
  ranking.change(asRanked(upper), {});
  ASSERT_NO_FATAL_FAILURE(expectBothOf(upper, ranking));
}

TEST(NumberRanking, StaysWhereTheSameNumbersComeAndGo) {
  auto const some = countRanked(-1'000, 1'000);
  NumberRanking ranking;
  ranking.change(asRanked(some), asRanked(some));
  ASSERT_NO_FATAL_FAILURE(expectBothOf({}, ranking));
  ranking.insertMany(asRanked(some));
  ranking.change(asRanked(some), asRanked(some));
  ASSERT_NO_FATAL_FAILURE(expectBothOf(some, ranking));
  std::vector<double> const another(1'500, 600.5);
  ranking.change(asRanked(another), asRanked(another));
  ASSERT_NO_FATAL_FAILURE(expectBothOf(some, ranking));
  // One zero comes and the other one goes.
  ranking.change(std::vector<FloatNumber>(1'500, FloatNumber(-0.0)),
                 std::vector<FloatNumber>(1'500, FloatNumber(0.0)));
  ASSERT_NO_FATAL_FAILURE(expectBothOf(some, ranking));
}

TEST(NumberRanking, LosesTheOnlyNumberOfABlockAmongMany) {
  auto some = countRanked(0, 513);  // one more than a block holds
  NumberRanking ranking;
  ranking.insertMany(asRanked(some));
  std::vector<double> const passing(1'500, 7.5);
  auto erased = passing;
  erased.push_back(some.back());
  some.pop_back();
  ranking.change(asRanked(passing), asRanked(erased));
  ASSERT_NO_FATAL_FAILURE(expectBothOf(some, ranking));
}

TEST(NumberRanking, SplitsABlockThatManyNumbersComeTo) {
  auto some = countRanked(0, 2'000);
  NumberRanking ranking;
  ranking.insertMany(asRanked(some));
  std::vector<double> inserted;
  for (int step = 1; step < 5'000; ++step) {
    inserted.push_back(700 + step / 5'000.0);
  }
  ranking.change(asRanked(inserted), {});
  some.insert(some.end(), inserted.begin(), inserted.end());
  ASSERT_NO_FATAL_FAILURE(expectBothOf(some, ranking));
  EXPECT_LT(ranking.countBytes(), 14 * some.size()) << "blocks are as long as their numbers";
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
