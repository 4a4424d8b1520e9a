#pragma once

#include <cstdint>
#include <vector>

#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The number of positions that at least one of some ranges holds. `n log n` for n ranges, whatever
/// their size and however they overlap.
[[nodiscard]] std::uint64_t countPositions(std::vector<TableRange> const& ranges);

/// The parts of ranges that lie inside bounds, without empty ones.
[[nodiscard]] std::vector<TableRange> clip(std::vector<TableRange> const& ranges,
                                           TableRange const& bounds);

}  // namespace Zorv::ConditionalFormatters
