#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "DOM/StyleProps.h"
#include "visuals/IconSet.h"

namespace Zorv::Render {

/// Side of the box that icons are drawn in. Its origin is the top left corner.
inline constexpr double iconBox = 16;

/// Filled outline of an icon. All paths run the same way round or do not overlap themselves, so any
/// rule of filling gives the same picture.
struct IconOutline {
  /// In the notation of SVG paths, with the absolute commands M, L, C and Z alone.
  std::string_view path;
  DOM::Colour colour;
};

/// The outlines of an icon, each to be filled over those before it. Empty where the set has no such
/// icon. Lasts as long as the program. Constant time, never throws.
[[nodiscard]] std::span<IconOutline const> outlineIcon(Visuals::Icon const& icon) noexcept;

/// Words for an icon, for those who do not see it: `green arrow up`. Empty where the set has no
/// such icon. Lasts as long as the program.
[[nodiscard]] std::string_view nameIcon(Visuals::Icon const& icon) noexcept;

/// Step of an outline.
struct IconStep {
  enum class Kind : std::uint8_t {
    Move,   ///< to the first two coordinates
    Line,   ///< to the first two coordinates
    Curve,  ///< by two control points to the last two coordinates
    Close,
  };

  Kind kind = Kind::Close;
  std::array<double, 6> coordinates{};  ///< x and y, in turn
};

/// Calls the visitor for each step of an outline's path.
void visitIconSteps(std::string_view path, std::function<void(IconStep const&)> const& visit);

}  // namespace Zorv::Render
