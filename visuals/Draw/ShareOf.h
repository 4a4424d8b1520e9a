#pragma once

#include <cmath>

namespace Zorv::Visuals {

/// The part of the way from one number to another at which a value lies, 0 to 1. A value at or
/// before the first is at 0, also if both are equal.
[[nodiscard]] inline double shareOf(double value, double from, double to) noexcept {
  if (value <= from) {
    return 0;
  }
  if (value >= to) {
    return 1;
  }
  // Of halves, since the difference of two finite numbers may be infinite.
  return (value / 2 - from / 2) / (to / 2 - from / 2);
}

/// The number at a part of the way from one number to another; exact at both ends.
[[nodiscard]] inline double interpolate(double from, double to, double share) noexcept {
  double const way = to - from;
  return std::isfinite(way) && share < 1 ? from + way * share : from * (1 - share) + to * share;
}

}  // namespace Zorv::Visuals
