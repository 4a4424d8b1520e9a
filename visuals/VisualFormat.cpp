#include "visuals/VisualFormat.h"

namespace Zorv::Visuals {

std::vector<Threshold const*> listThresholds(VisualKind const& kind) {
  std::vector<Threshold const*> thresholds;
  if (auto const* const scale = std::get_if<ColourScale>(&kind)) {
    for (ColourPoint const& point : scale->points) {
      thresholds.push_back(&point.threshold);
    }
  } else if (auto const* const bar = std::get_if<DataBar>(&kind)) {
    thresholds = {&bar->minimum, &bar->maximum};
  } else {
    for (Threshold const& step : std::get<IconSet>(kind).steps) {
      thresholds.push_back(&step);
    }
  }
  return thresholds;
}

}  // namespace Zorv::Visuals
