#pragma once

#include <span>

#include "visuals/IconSet.h"

namespace Zorv::Visuals {

/// The icon of a number in a set whose steps have these bounds: of the last step that it reaches
/// without missing one before. Requires a bound for each step.
[[nodiscard]] Icon findIcon(IconSet const& set, std::span<double const> bounds,
                            double value) noexcept;

}  // namespace Zorv::Visuals
