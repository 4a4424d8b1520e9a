#pragma once

#include "render/Draw/Box.h"
#include "render/Draw/Cairo.h"

namespace Zorv::Render::Draw {

/// Fills a box with a gradient. A gradient without stops leaves it as it is; places of stops that
/// are no numbers or lie outside of 0 to 1 are moved into it.
void paintGradient(cairo_t* cairo, DOM::GradientFill const& gradient, Box const& box);

}  // namespace Zorv::Render::Draw
