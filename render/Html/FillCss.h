#pragma once

#include <string>

#include "render/Picture.h"

namespace Zorv::Render {

/// CSS declarations of a background; empty for no fill, and for a gradient from a rectangle
/// outwards, which PageGraphics draws.
[[nodiscard]] std::string describeFill(CellFill const& fill);

/// True for a gradient from a rectangle outwards.
[[nodiscard]] bool isPathGradient(CellFill const& fill) noexcept;

}  // namespace Zorv::Render
