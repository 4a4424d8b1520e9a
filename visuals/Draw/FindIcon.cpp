#include "visuals/Draw/FindIcon.h"

#include <cstddef>

namespace Zorv::Visuals {

Icon findIcon(IconSet const& set, std::span<double const> bounds, double value) noexcept {
  std::size_t step = 0;
  while (step + 1 < set.steps.size() &&
         (value > bounds[step + 1] || (set.steps[step + 1].orEqual && value == bounds[step + 1]))) {
    ++step;
  }
  std::size_t const drawn = set.isReversed ? set.steps.size() - 1 - step : step;
  return set.ownIcons.empty() ? Icon{set.name, static_cast<unsigned>(drawn)} : set.ownIcons[drawn];
}

}  // namespace Zorv::Visuals
