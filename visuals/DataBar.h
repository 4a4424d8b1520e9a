#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "DOM/StyleProps.h"
#include "visuals/Export.h"
#include "visuals/Threshold.h"

namespace Zorv::Visuals {

/// Where the axis of a data bar stands, from which its bars start.
enum class BarAxis : std::uint8_t {
  None,       ///< nowhere: all bars start at the edge
  Automatic,  ///< at zero, if the bar's bounds have zero between them; else nowhere
  Middle,     ///< in the middle of the cell
};

/// The edge at which bars begin.
enum class BarDirection : std::uint8_t {
  Context,  ///< that of the sheet
  LeftToRight,
  RightToLeft,
};

/// Name in workbook files: `automatic`.
[[nodiscard]] ZORV_VISUALS_EXPORT std::string_view toText(BarAxis axis) noexcept;
/// Name in workbook files: `leftToRight`.
[[nodiscard]] ZORV_VISUALS_EXPORT std::string_view toText(BarDirection direction) noexcept;

/// Data bar (ISO/IEC 29500-1, 18.3.1.28, and its extension): draws a bar whose length shows the
/// cell's number.
struct DataBar {
  Threshold minimum;                              ///< at or below it, bars are shortest
  Threshold maximum{.kind = ThresholdKind::Max};  ///< at or above it, bars are longest
  /// Lengths of the shortest and the longest bar, in percent of the cell's width.
  double minLength = 10;
  double maxLength = 90;                           ///< see `minLength`
  std::optional<DOM::Colour> fill;                 ///< nothing: none is written
  std::optional<DOM::Colour> border;               ///< nothing: bars have no border
  std::optional<DOM::Colour> negativeFill;         ///< nothing: as for positive numbers
  std::optional<DOM::Colour> negativeBorder;       ///< nothing: as for positive numbers
  std::optional<DOM::Colour> axisColour;           ///< nothing: none is written
  BarAxis axis = BarAxis::None;                    ///< where the axis stands
  BarDirection direction = BarDirection::Context;  ///< the edge at which bars begin
  bool isGradient = true;                          ///< the fill fades towards the end of the bar
  bool showValue = true;                           ///< the value stands in the cell, too
};

}  // namespace Zorv::Visuals
