#pragma once

#include <cstddef>
#include <vector>

#include "Utils/FloatNumber.h"

// The ranking of numbers by which top and bottom conditions find their threshold: equal numbers
// share one rank, and the two zeros are equal.
//
// A NaN is neither above nor below any number, so no order of the numbers holds it. It stands
// behind all of them, whichever end of the numbers is wanted, and shares the rank of the last: it
// is never counted, unless there is nothing else and all share the one rank that there is.
namespace Zorv::ConditionalFormatters {

enum class RankingOrder : bool { LargestFirst, SmallestFirst };

/// Up to this rank, selectBest() beats rankDistinct().
inline constexpr std::size_t largestSelectedRank = 64;

/// Sorts numbers into their ranking and leaves each distinct one once. In place, n log n.
void rankDistinct(std::vector<FloatNumber>& values, RankingOrder order);

/// The first `count` numbers of the ranking, or all when it is shorter: what rankDistinct() would
/// put there, found in one pass and without sorting. What is best among the best of several parts
/// is best among all.
///
/// Requires `0 < count <= largestSelectedRank`.
[[nodiscard]] std::vector<FloatNumber> selectBest(std::vector<FloatNumber> const& values,
                                                  RankingOrder order, std::size_t count);

}  // namespace Zorv::ConditionalFormatters
