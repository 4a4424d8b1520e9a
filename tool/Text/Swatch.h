#pragma once

#include <string>

#include "DOM/StyleProps.h"

namespace Zorv::Tool {

/// Columns of a terminal that a swatch takes.
inline constexpr std::size_t swatchWidth = 2;

/// Appends a small area of a colour, for a terminal that has 24-bit colours (SGR 48;2 of ISO/IEC
/// 8613-6). Opacity does not show.
void appendSwatch(std::string& text, DOM::Colour const& colour);

}  // namespace Zorv::Tool
