#pragma once

#include <cstddef>
#include <numeric>
#include <span>

namespace Zorv::Formulas {

/// The mean of numbers, of which there is at least one. The second pass takes away what rounding
/// left over, so that equal numbers have themselves as their mean.
[[nodiscard]] inline double meanOf(std::span<double const> numbers) noexcept {
  auto const count = static_cast<double>(numbers.size());
  double const mean = std::accumulate(numbers.begin(), numbers.end(), 0.0) / count;
  double const rest =
      std::accumulate(numbers.begin(), numbers.end(), 0.0,
                      [&](double total, double number) { return total + (number - mean); });
  return mean + rest / count;
}

/// The sum of what `measure` makes of each number's distance from a centre.
template <class Measure>
[[nodiscard]] double sumOfDeviations(std::span<double const> numbers, double centre,
                                     Measure const& measure) {
  return std::accumulate(numbers.begin(), numbers.end(), 0.0, [&](double total, double number) {
    return total + measure(number - centre);
  });
}

/// The sum of the squares of the distances from the mean; requires a number.
[[nodiscard]] inline double squaredDeviations(std::span<double const> numbers) noexcept {
  return sumOfDeviations(numbers, meanOf(numbers),
                         [](double deviation) { return deviation * deviation; });
}

}  // namespace Zorv::Formulas
