#pragma once

#include <string>

#include "render/Picture.h"

namespace Zorv::Render {

/// CSS declarations of characters: font, colour and lines under or through them.
[[nodiscard]] std::string describeFont(Font const& font);

/// CSS declarations of a cell's appearance but for its edges, where they differ from those of a
/// sheet's cells without a style, which have `base`.
[[nodiscard]] std::string describeLook(Look const& look, DOM::HorizontalAlignment horizontal,
                                       Look const& base);

/// True if the text of a cell needs an element of its own to be turned.
[[nodiscard]] bool isTurned(Look const& look) noexcept;

}  // namespace Zorv::Render
