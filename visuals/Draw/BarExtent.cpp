#include "visuals/Draw/BarExtent.h"

#include <algorithm>

#include "visuals/Draw/ShareOf.h"

namespace Zorv::Visuals {

namespace {

/// Length of a bar in a cell of width 1.
double lengthOf(DataBar const& bar, double share) noexcept {
  constexpr double percent = 100;
  return (bar.minLength + share * (bar.maxLength - bar.minLength)) / percent;
}

/// `reach` is the number whose bar ends at an edge.
BarExtent extendFrom(double axis, DataBar const& bar, double number, double reach) noexcept {
  if (number < 0) {
    return {axis - axis * lengthOf(bar, shareOf(-number, 0, reach)), axis, axis};
  }
  return {axis, axis + (1 - axis) * lengthOf(bar, shareOf(number, 0, reach)), axis};
}

}  // namespace

BarExtent findBarExtent(DataBar const& bar, std::span<double const> bounds, double value) noexcept {
  double const lowest = bounds[0];
  double const highest = bounds[1];
  if (bar.axis == BarAxis::None || (bar.axis == BarAxis::Automatic && lowest >= 0)) {
    return {0, lengthOf(bar, shareOf(value, lowest, highest)), std::nullopt};
  }
  if (bar.axis == BarAxis::Automatic && highest <= 0) {
    return {1 - lengthOf(bar, shareOf(-value, -highest, -lowest)), 1, std::nullopt};
  }
  double const number = std::clamp(value, lowest, highest);
  if (bar.axis == BarAxis::Middle) {
    constexpr double middle = 0.5;
    return extendFrom(middle, bar, number, std::max(-lowest, highest));
  }
  return extendFrom(shareOf(0, lowest, highest), bar, number, number < 0 ? -lowest : highest);
}

}  // namespace Zorv::Visuals
