#pragma once

#include "DOM/StyleProps.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// The colour between two: `first` at 0, `second` at 1.
[[nodiscard]] DOM::Colour mix(DOM::Colour const& first, DOM::Colour const& second,
                              double part) noexcept;

/// The colour of a fill seen from afar, at a place of its cell: 0, 0 is the top left, 1, 1 the
/// bottom right. Patterns give the mean of their colours.
[[nodiscard]] DOM::Colour findFillColour(CellFill const& fill, double x, double y) noexcept;

}  // namespace Zorv::Render
