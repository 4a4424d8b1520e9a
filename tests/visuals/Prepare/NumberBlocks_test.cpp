#include "visuals/Prepare/NumberBlocks.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace Zorv::Visuals {
namespace {

/// Checks every rank against the sorted numbers; they come in two blocks.
void checkAllRanks(std::vector<double> const& numbers) {
  NumberBlocks blocks;
  auto const middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  blocks.add({numbers.begin(), middle});
  blocks.add({middle, numbers.end()});
  ASSERT_EQ(blocks.count(), numbers.size());
  auto sorted = numbers;
  std::ranges::sort(sorted);
  for (std::size_t rank = 0; rank < sorted.size(); ++rank) {
    auto const [at, next] = blocks.select(rank, sorted.front(), sorted.back());
    EXPECT_EQ(at, sorted[rank]);
    EXPECT_EQ(next, sorted[std::min(rank + 1, sorted.size() - 1)]);
  }
}

TEST(NumberBlocks, SelectsByRank) { checkAllRanks({5, 3, 9, 1, 1, 7}); }

TEST(NumberBlocks, SelectsAmongEqualNumbers) { checkAllRanks({4, 4, 4}); }

TEST(NumberBlocks, SelectsTheOnlyNumber) { checkAllRanks({-2}); }

TEST(NumberBlocks, SelectsAcrossTheWholeRangeOfNumbers) {
  constexpr double largest = std::numeric_limits<double>::max();
  checkAllRanks({-largest, largest, 0, 1, -1, largest / 2});
}

TEST(NumberBlocks, SelectsAmongNumbersTooCloseForADifference) {
  constexpr double least = std::numeric_limits<double>::denorm_min();
  checkAllRanks({least, 0, -least, least});
  checkAllRanks({3 * least, 0, 2 * least, least});
}

TEST(NumberBlocks, SelectsNextToOneThatIsFarAway) { checkAllRanks({1e300, 3, 2, 1, 2.5}); }

RC_GTEST_PROP(NumberBlocks, SelectsLikeSorting, ()) {
  auto const whole = *rc::gen::nonEmpty<std::vector<int>>();
  std::vector<double> numbers(whole.begin(), whole.end());
  checkAllRanks(numbers);
}

}  // namespace
}  // namespace Zorv::Visuals
