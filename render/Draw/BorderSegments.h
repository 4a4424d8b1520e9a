#pragma once

#include <cstdint>
#include <vector>

#include "render/Draw/SheetGeometry.h"

namespace Zorv::Render::Draw {

/// Straight piece of the lines around cells, between two crossings of the sheet's edges.
struct BorderSegment {
  bool isVertical = false;
  std::uint32_t edge = 0;   ///< of the columns if vertical, else of the rows
  std::uint32_t begin = 0;  ///< first crossing, along the edge
  std::uint32_t end = 0;    ///< last crossing
  DOM::LineStyle style = DOM::LineStyle::None;
  DOM::Colour colour;

  friend bool operator==(BorderSegment const&, BorderSegment const&) = default;
};

/// The lines around cells in an order that does not depend on that of the cells: each once, pieces
/// that go on in the same style joined to one, thin ones before thick ones.
[[nodiscard]] std::vector<BorderSegment> findBorderSegments(
    SheetGeometry const& geometry, std::vector<PictureCell const*> const& cells);

/// Width of a line of that style in CSS pixels. 0 for no line.
[[nodiscard]] double getLineWidth(DOM::LineStyle style) noexcept;

}  // namespace Zorv::Render::Draw
