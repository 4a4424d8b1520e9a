#pragma once

#include "DOM/StyleProps.h"
#include "render/Draw/Box.h"
#include "render/Draw/PixelGrid.h"

// The sheet of paper that cells are drawn on.
namespace Zorv::Render::Draw {

inline constexpr DOM::Colour paperColour{255, 255, 255};
inline constexpr DOM::Colour inkColour{0, 0, 0};
inline constexpr DOM::Colour gridLineColour{0xD4, 0xD4, 0xD4};
inline constexpr double gridLineWidth = 1;

/// A cell's place with the grid lines on all its sides. Those at its right and at its bottom are
/// the last pixels of its place; those at its left and at its top belong to its neighbours.
[[nodiscard]] inline Box withGridLines(Box const& place, PixelGrid const& grid) noexcept {
  double const line = grid.thickness(gridLineWidth);
  return {place.left - line, place.top - line, place.right, place.bottom};
}

}  // namespace Zorv::Render::Draw
