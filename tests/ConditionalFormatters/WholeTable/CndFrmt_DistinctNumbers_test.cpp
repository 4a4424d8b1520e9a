#include "ConditionalFormatters/WholeTable/CndFrmt_DistinctNumbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "ConditionalFormatters/Operands/CndFrmt_DistinctRanking.h"
#include "Utils/HashPartitions.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {

namespace {

using TestSupport::infinity;
using TestSupport::nan;
constexpr RankingOrder bothOrders[] = {RankingOrder::LargestFirst, RankingOrder::SmallestFirst};

/// The distinct numbers of some values, which come in several blocks.
DistinctNumbers findDistinct(std::vector<double> const& values, unsigned threadCount = 1) {
  constexpr std::size_t numbersPerBlock = 4096;
  HashPartitions const partitions(values.size());
  std::vector<DistinctNumbers::Block> blocks;
  std::vector<FloatNumber> numbers;
  for (double const value : values) {
    numbers.emplace_back(value);
    if (numbers.size() == numbersPerBlock) {
      blocks.emplace_back(numbers, partitions);
      numbers.clear();
    }
  }
  blocks.emplace_back(numbers, partitions);
  return {blocks, partitions, threadCount};
}

std::vector<double> rankAll(DistinctNumbers const& numbers, RankingOrder order) {
  std::vector<double> ranking;
  for (std::size_t rank = 1; rank <= numbers.count(); ++rank) {
    ranking.push_back(numbers.at(rank, order).get());
  }
  return ranking;
}

TEST(DistinctNumbers, AreRankedFromEitherEnd) {
  DistinctNumbers const numbers = findDistinct({-1, 3, 0.5, 3, -infinity, infinity, -2});
  EXPECT_EQ(rankAll(numbers, RankingOrder::LargestFirst),
            (std::vector<double>{infinity, 3, 0.5, -1, -2, -infinity}));
  EXPECT_EQ(rankAll(numbers, RankingOrder::SmallestFirst),
            (std::vector<double>{-infinity, -2, -1, 0.5, 3, infinity}));
}

TEST(DistinctNumbers, OfNoNumbersAreNone) { EXPECT_EQ(findDistinct({}).count(), 0U); }

TEST(DistinctNumbers, TheTwoZerosAreOne) {
  DistinctNumbers const numbers = findDistinct({-0.0, 0.0, -0.0});
  EXPECT_EQ(rankAll(numbers, RankingOrder::LargestFirst), (std::vector<double>{0.0}));
}

TEST(DistinctNumbers, ANaNCountsOnlyWhereThereIsNothingElse) {
  EXPECT_EQ(findDistinct({nan, 7, nan}).count(), 1U);
  DistinctNumbers const onlyNaNs = findDistinct({nan, -nan});
  ASSERT_EQ(onlyNaNs.count(), 1);
  for (RankingOrder const order : bothOrders) {
    EXPECT_TRUE(std::isnan(onlyNaNs.at(1, order).get()));
  }
}

/// So many that they are sorted in several pieces, about half of them repeated.
std::vector<double> makeManyNumbers() {
  std::mt19937 random(11);
  std::uniform_int_distribution<int> draw(-60'000, 60'000);
  std::vector<double> values;
  for (int i = 0; i < 100'000; ++i) {
    int const drawn = draw(random);
    values.push_back(drawn % 7 == 1 ? (drawn % 2 == 0 ? nan : -0.0) : drawn * 0.25);
  }
  return values;
}

TEST(DistinctNumbers, OfManyNumbersAreThoseOfTheRankingOnAnyNumberOfThreads) {
  auto const values = makeManyNumbers();
  for (RankingOrder const order : bothOrders) {
    std::vector<FloatNumber> ranking;
    for (double const value : values) {
      ranking.emplace_back(value);
    }
    rankDistinct(ranking, order);
    for (unsigned const threadCount : {1U, 2U, 7U}) {
      DistinctNumbers const numbers = findDistinct(values, threadCount);
      ASSERT_EQ(numbers.count(), ranking.size());
      for (std::size_t rank = 1; rank <= ranking.size(); rank += rank < 100 ? 1 : 997) {
        ASSERT_EQ(numbers.at(rank, order).get(), ranking[rank - 1].get()) << "rank " << rank;
      }
      ASSERT_EQ(numbers.at(ranking.size(), order).get(), ranking.back().get());
    }
  }
}

}  // namespace

}  // namespace Zorv::ConditionalFormatters
