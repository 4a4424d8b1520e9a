#pragma once

#include "render/Drawing.h"

namespace Zorv::Render::Draw {

/// The first sheet of a picture as a PNG; see draw().
void drawPng(Picture const& picture, DrawOptions const& options, ByteSink const& sink);

}  // namespace Zorv::Render::Draw
