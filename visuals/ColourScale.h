#pragma once

#include <vector>

#include "DOM/StyleProps.h"
#include "visuals/Threshold.h"

namespace Zorv::Visuals {

/// Point of a colour scale.
struct ColourPoint {
  Threshold threshold;  ///< where the point is
  DOM::Colour colour;   ///< the colour there
};

/// Colour scale (ISO/IEC 29500-1, 18.3.1.16): fills cells with colours between those of its points.
struct ColourScale {
  std::vector<ColourPoint> points;  ///< two or three, ascending
};

}  // namespace Zorv::Visuals
