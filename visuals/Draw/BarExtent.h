#pragma once

#include <span>

#include "visuals/CellVisuals.h"
#include "visuals/DataBar.h"

namespace Zorv::Visuals {

/// Where the bar of a number lies. `bounds` are the bar's minimum and maximum. Numbers beyond them
/// count as the nearer one.
///
/// Without an axis inside the cell, the shortest bar is that of the minimum, and starts at the near
/// edge; with an automatic axis and no bound above zero it is that of the maximum, and starts at
/// the far edge. With an axis inside the cell, bars start there, and their lengths are proportional
/// to the numbers: equal numbers of opposite signs have equal lengths.
[[nodiscard]] BarExtent findBarExtent(DataBar const& bar, std::span<double const> bounds,
                                      double value) noexcept;

}  // namespace Zorv::Visuals
