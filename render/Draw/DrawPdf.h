#pragma once

#include "render/Drawing.h"

namespace Zorv::Render::Draw {

/// The sheets of a picture as the pages of a PDF; see draw().
void drawPdf(Picture const& picture, DrawOptions const& options, ByteSink const& sink);

}  // namespace Zorv::Render::Draw
