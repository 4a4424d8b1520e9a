#pragma once

#include <vector>

#include "DOM/StyleProps.h"
#include "visuals/Threshold.h"

namespace Zorv::Visuals {

struct ColourPoint {
  Threshold threshold;
  DOM::Colour colour;
};

/// Colour scale (ISO/IEC 29500-1, 18.3.1.16): fills cells with colours between those of its points.
struct ColourScale {
  std::vector<ColourPoint> points;  ///< two or three, ascending
};

}  // namespace Zorv::Visuals
