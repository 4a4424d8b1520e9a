#pragma once

#include <compare>
#include <string>

#include "visuals/VisualFormat.h"

namespace Zorv::Analysis {

/// Comparable texts of what a colour scale, a data bar or an icon set decides by and draws. Not for
/// people.
struct VisualForm {
  std::string thresholds;
  std::string colours;
  std::string icons;
  std::string drawing;  ///< everything else

  friend auto operator<=>(VisualForm const&, VisualForm const&) = default;
};

[[nodiscard]] VisualForm makeVisualForm(Visuals::VisualKind const& kind);

}  // namespace Zorv::Analysis
