#pragma once

#include <span>

#include "DOM/StyleProps.h"
#include "visuals/ColourScale.h"

namespace Zorv::Visuals {

/// The colour of a number on a scale whose points have these bounds: linear between two points, by
/// component; that of the outermost point beyond it. Requires a bound for each point.
[[nodiscard]] DOM::Colour findScaleColour(ColourScale const& scale, std::span<double const> bounds,
                                          double value) noexcept;

}  // namespace Zorv::Visuals
