#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "analysis/Explain/CellAccount.h"

namespace Zorv::Analysis {

/// The range of a rule that is nearest to a cell: the one with the fewest rows and columns in
/// between. Nothing for a rule without ranges. Linear in the ranges.
[[nodiscard]] std::optional<NearbyRule> findNearestRange(Workbook::Rule const& rule,
                                                         CellIndex cell);

/// Of some rules the nearest to a cell, the nearest first; rules of equal distance keep their
/// order.
[[nodiscard]] std::vector<NearbyRule> findNearestRules(std::span<Workbook::Rule const* const> rules,
                                                       CellIndex cell, std::size_t mostRules);

}  // namespace Zorv::Analysis
