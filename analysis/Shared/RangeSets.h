#pragma once

#include <cstdint>
#include <vector>

#include "Utils/TableRange.h"
#include "Utils/WorkBudget.h"

// Sets of positions as lists of ranges, which may overlap and none of which is empty. The counters
// are borrowed; each comparison of two ranges is a step.
namespace Zorv::Analysis {

using RangeSet = std::vector<TableRange>;

/// True if some position is in both sets.
[[nodiscard]] bool overlaps(RangeSet const& a, RangeSet const& b, StepCounter& counter);

/// True if every position of `inner` that is also in `part` is in `outer`.
[[nodiscard]] bool coversPart(RangeSet const& outer, RangeSet const& inner, RangeSet const& part,
                              StepCounter& counter);

/// True if every position of `inner` is in `outer`. False, too, if more than `mostComparisons` of
/// two ranges are needed to know.
[[nodiscard]] bool covers(RangeSet const& outer, RangeSet const& inner, StepCounter& counter,
                          std::uint64_t mostComparisons = WorkBudget::unlimited);

/// The same positions in few ranges, ordered by first row, then first column. The ranges of the
/// result share no position unless the given ones do and are fewer. Cost: with n ranges, n log n
/// for each of up to 2n bands.
[[nodiscard]] RangeSet unite(RangeSet const& ranges, StepCounter& counter);

}  // namespace Zorv::Analysis
