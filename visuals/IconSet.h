#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "visuals/Export.h"
#include "visuals/Threshold.h"

namespace Zorv::Visuals {

/// Sets of icons (ISO/IEC 29500-1, 18.18.42); the last four come from its extension.
enum class IconSetName : std::uint8_t {
  Arrows3,
  ArrowsGray3,
  Flags3,
  TrafficLights3One,
  TrafficLights3Two,
  Signs3,
  Symbols3,
  Symbols3Two,
  Arrows4,
  ArrowsGray4,
  RedToBlack4,
  Rating4,
  TrafficLights4,
  Arrows5,
  ArrowsGray5,
  Rating5,
  Quarters5,
  Stars3,
  Triangles3,
  Boxes5,
  NoIcons,  ///< the empty set: no icon is drawn
};

/// Name of a set in workbook files: `3TrafficLights1`.
[[nodiscard]] ZORV_VISUALS_EXPORT std::string_view toText(IconSetName name) noexcept;
/// The set of that name, or nothing.
[[nodiscard]] ZORV_VISUALS_EXPORT std::optional<IconSetName> parseIconSetName(
    std::string_view text) noexcept;
/// The number of icons in a set.
[[nodiscard]] ZORV_VISUALS_EXPORT unsigned countIcons(IconSetName name) noexcept;

/// An icon of a set. The index counts from 0, from the icon for the lowest values on.
struct Icon {
  IconSetName set = IconSetName::TrafficLights3One;  ///< the set of the icon
  unsigned index = 0;                                ///< its place in the set

  friend bool operator==(Icon const&, Icon const&) = default;
};

/// Icon set (ISO/IEC 29500-1, 18.3.1.49, and its extension): draws an icon that shows in which step
/// the cell's number lies.
struct IconSet {
  /// Most steps of an icon set.
  static constexpr std::size_t mostSteps = 5;

  IconSetName name = IconSetName::TrafficLights3One;  ///< the set of the icons
  /// Lower ends of the steps, ascending: as many as the set has icons. The first does not count,
  /// since lower values get the icon of the first step, too.
  std::vector<Threshold> steps{};
  /// One icon for each step, instead of those of the set; or none.
  std::vector<Icon> ownIcons{};
  bool isReversed = false;  ///< the first step has the last icon
  bool showValue = true;    ///< the value stands in the cell, too
};

}  // namespace Zorv::Visuals
