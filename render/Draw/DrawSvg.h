#pragma once

#include "render/Drawing.h"

namespace Zorv::Render::Draw {

/// The first sheet of a picture as an SVG, its characters as outlines; see draw().
void drawSvg(Picture const& picture, DrawOptions const& options, ByteSink const& sink);

}  // namespace Zorv::Render::Draw
