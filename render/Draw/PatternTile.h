#pragma once

#include "render/Draw/Cairo.h"

namespace Zorv::Render::Draw {

/// A tile of 8 x 8 CSS pixels for the lines or dots of a fill (ISO/IEC 29500-1, 18.18.55), to be
/// repeated over a cell; transparent between them. Null for patterns without lines or dots.
[[nodiscard]] PatternPtr makePatternTile(DOM::FillPattern pattern, DOM::Colour const& colour);

}  // namespace Zorv::Render::Draw
