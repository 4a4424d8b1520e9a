#pragma once

#include <cstddef>
#include <numeric>
#include <vector>

#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

/// Arithmetic mean of numbers. They are summed in the order in which they are added: the rounding
/// depends on it.
class Mean {
public:
  void add(std::vector<FloatNumber> const& numbers) {
    _sum = std::accumulate(numbers.begin(), numbers.end(), _sum);
    _count += numbers.size();
  }

  /// How many numbers were added.
  [[nodiscard]] std::size_t getCount() const noexcept { return _count; }

  /// NaN where no number was added.
  [[nodiscard]] FloatNumber get() const noexcept {
    return _sum / FloatNumber(static_cast<double>(_count));
  }

private:
  FloatNumber _sum{0.0};
  std::size_t _count = 0;
};

}  // namespace Zorv::ConditionalFormatters
