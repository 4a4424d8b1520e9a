#include "OfficeUtils/RationalApproximation.h"

#include <cmath>

namespace Zorv::OfficeUtils {

namespace {

double distanceTo(Ratio const& ratio, double number) noexcept {
  return std::abs(ratio.numerator / ratio.denominator - number);
}

}  // namespace

// Convergents of the continued fraction approach the number. After the last convergent within the
// limit, a semiconvergent may be nearer.
Ratio findNearestRatio(double number, double largestDenominator) noexcept {
  constexpr int mostSteps = 64;
  constexpr double lastBits = 1e-12;
  Ratio before{1.0, 0.0};
  Ratio current{std::floor(number), 1.0};
  double rest = number - std::floor(number);
  for (int step = 0; step < mostSteps && rest > lastBits; ++step) {
    double const inverse = 1.0 / rest;
    double const term = std::floor(inverse);
    Ratio const next{term * current.numerator + before.numerator,
                     term * current.denominator + before.denominator};
    if (next.denominator > largestDenominator) {
      double const part =
          std::floor((largestDenominator - before.denominator) / current.denominator);
      Ratio const between{part * current.numerator + before.numerator,
                          part * current.denominator + before.denominator};
      bool const isNearer =
          between.denominator > 0.0 && distanceTo(between, number) < distanceTo(current, number);
      return isNearer ? between : current;
    }
    before = current;
    current = next;
    rest = inverse - term;
  }
  return current;
}

}  // namespace Zorv::OfficeUtils
