#pragma once

#include <cstddef>
#include <vector>

#include "Utils/FloatNumber.h"

// Ranking of numbers for the threshold of top and bottom conditions. Equal numbers share one rank,
// and the two zeros are equal.
//
// NaN has no place in an order of numbers. It ranks behind all of them, whichever end is wanted,
// and shares the rank of the last one: it counts only if there is nothing else, and then all NaNs
// share the only rank.
namespace Zorv::ConditionalFormatters {

enum class RankingOrder : bool { LargestFirst, SmallestFirst };

/// Up to this rank selectBest() is faster than rankDistinct().
inline constexpr std::size_t largestSelectedRank = 64;

/// Sorts numbers into their ranking and removes repeated ones. In place, n log n.
void rankDistinct(std::vector<FloatNumber>& values, RankingOrder order);

/// The first `count` numbers of rankDistinct(), or all of them if there are fewer, found in one
/// pass without sorting. The best numbers of a whole are the best among those of its parts.
///
/// Requires `0 < count <= largestSelectedRank`.
[[nodiscard]] std::vector<FloatNumber> selectBest(std::vector<FloatNumber> const& values,
                                                  RankingOrder order, std::size_t count);

}  // namespace Zorv::ConditionalFormatters
