#pragma once

#include <cstddef>
#include <string>

#include "DOM/StyleProps.h"
#include "render/Terminal/Escapes.h"

namespace Zorv::Tool {

/// Columns of a terminal that a swatch takes.
inline constexpr std::size_t swatchWidth = 2;

/// Appends a small area of a colour. Opacity does not show.
void appendSwatch(std::string& text, DOM::Colour const& colour, Render::ColourDepth depth);

}  // namespace Zorv::Tool
