#pragma once

#include "render/Draw/SheetGeometry.h"

namespace Zorv::Render::Draw {

/// Where a text stands.
struct TextPlace {
  PictureCell const& cell;
  Look const& look;
  DOM::HorizontalAlignment horizontal;  ///< of this piece of the text
  Box whole;                            ///< the cell
  Box inner;                            ///< room for the text, without padding, indent and icon
  Box allowed;  ///< where the text may be seen: the cell and its free neighbours
};

/// The place of a cell's text. Borrows the cell and the geometry's sheet.
[[nodiscard]] TextPlace findTextPlace(SheetGeometry const& geometry,
                                      PictureCell const& cell) noexcept;

}  // namespace Zorv::Render::Draw
