#pragma once

#include <cmath>

#include "Formulas/NumberOrder.h"

/// Rounding as people expect it of decimal numbers: what differs from a whole number in its last
/// bits only is that number, so that 2.3 / 0.1 has the whole part 23.
namespace Zorv::Formulas {

/// The nearest whole number where a number is one but for its last bits, otherwise the number.
[[nodiscard]] inline double snapToWhole(double number) noexcept {
  double const nearest = std::round(number);
  return std::abs(number - nearest) <= std::abs(number) * lastBits ? nearest : number;
}

[[nodiscard]] inline double roundDown(double number) noexcept {
  return std::floor(snapToWhole(number));
}

[[nodiscard]] inline double roundTowardsZero(double number) noexcept {
  return std::trunc(snapToWhole(number));
}

/// Away from zero.
[[nodiscard]] inline double roundUp(double number) noexcept {
  double const snapped = snapToWhole(number);
  return snapped < 0.0 ? std::floor(snapped) : std::ceil(snapped);
}

[[nodiscard]] inline double roundHalfAwayFromZero(double number) noexcept {
  // 1.005 * 100 lies just below 100.5: twice the number shows that a half is meant.
  double const twice = snapToWhole(number * 2.0);
  return std::round(std::trunc(twice) == twice ? twice / 2.0 : number);
}

/// Rounds to a number of decimal digits, negative ones left of the point; their fraction is cut
/// off.
[[nodiscard]] inline double roundToDigits(double number, double digits,
                                          double (*round)(double) noexcept) noexcept {
  // A double has no more digits, right or left of the point.
  constexpr double mostDigits = 308.0;
  double const count = std::trunc(digits);
  if (count > mostDigits) {
    return number;
  }
  if (count < -mostDigits) {
    return 0.0;
  }
  double const power = std::pow(10.0, std::abs(count));
  double const scaled = count < 0.0 ? number / power : number * power;
  if (!std::isfinite(scaled)) {
    return number;
  }
  double const rounded = round(scaled);
  return count < 0.0 ? rounded * power : rounded / power;
}

}  // namespace Zorv::Formulas
