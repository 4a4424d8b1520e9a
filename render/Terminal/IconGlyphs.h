#pragma once

#include "DOM/StyleProps.h"
#include "visuals/IconSet.h"

namespace Zorv::Render {

/// An icon as one character, one column wide. The characters of one set differ from each other, so
/// that icons can be told apart without colours.
struct IconGlyph {
  char32_t character;
  DOM::Colour colour;
};

/// Requires that the set has the icon.
[[nodiscard]] IconGlyph findIconGlyph(Visuals::Icon const& icon) noexcept;

}  // namespace Zorv::Render
