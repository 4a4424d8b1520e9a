#pragma once

#include <cstdint>

#include "DOM/StyleProps.h"

namespace Zorv::Render {

/// Weight of a line that is drawn with box characters.
enum class LineWeight : std::uint8_t { None, Light, Heavy, Double };

/// Lines that meet in the middle of a character.
struct LineArms {
  LineWeight left = LineWeight::None;
  LineWeight right = LineWeight::None;
  LineWeight up = LineWeight::None;
  LineWeight down = LineWeight::None;

  friend bool operator==(LineArms const&, LineArms const&) = default;
};

[[nodiscard]] LineWeight toLineWeight(DOM::LineStyle style) noexcept;

/// The character (Unicode, 2500 to 257F) in which the lines meet; a space where there are none.
/// Where Unicode has no character for some weights together, the nearest.
[[nodiscard]] char32_t findBoxCharacter(LineArms const& arms) noexcept;

/// The character of a piece of a line that meets no other: dashed and dotted ones have their own.
[[nodiscard]] char32_t findLineCharacter(DOM::LineStyle style, bool isVertical) noexcept;

}  // namespace Zorv::Render
