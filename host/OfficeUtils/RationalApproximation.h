#pragma once

namespace Zorv::OfficeUtils {

/// Fraction of two integers.
struct Ratio {
  double numerator = 0.0;
  double denominator = 1.0;
};

/// The fraction nearest to a number, among those with a denominator up to a limit; of equally near
/// ones, that with the smaller denominator. Requires `number >= 0`. Takes some tens of steps.
[[nodiscard]] Ratio findNearestRatio(double number, double largestDenominator) noexcept;

}  // namespace Zorv::OfficeUtils
