#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "visuals/IconSet.h"

namespace Zorv::Visuals {

/// The thresholds of a visual format as numbers, ascending.
class Bounds {
public:
  /// A bound that is lower than the one before it counts as equal to that.
  void add(double bound) noexcept {
    _bounds.at(_count) = _count == 0 ? bound : std::max(bound, _bounds.at(_count - 1));
    ++_count;
  }

  [[nodiscard]] std::span<double const> get() const noexcept { return {_bounds.data(), _count}; }

private:
  std::array<double, IconSet::mostSteps> _bounds{};
  std::size_t _count = 0;
};

}  // namespace Zorv::Visuals
