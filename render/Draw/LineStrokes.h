#pragma once

#include "render/Draw/Box.h"
#include "render/Draw/Cairo.h"
#include "render/Draw/PixelGrid.h"

namespace Zorv::Render::Draw {

/// Line from one place to another; lengths in CSS pixels.
struct Stroke {
  double fromX = 0;
  double fromY = 0;
  double toX = 0;
  double toY = 0;
  double width = 1;
};

/// Strokes a line in the dashes of its style and in the colour that is set. A double line is one
/// line here. The dashes of one place do not depend on where the line begins: they start at the
/// sheet's corner.
void strokeLine(cairo_t* cairo, DOM::LineStyle style, Stroke const& stroke, PixelGrid const& grid);

}  // namespace Zorv::Render::Draw
