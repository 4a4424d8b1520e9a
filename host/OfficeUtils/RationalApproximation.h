#pragma once

namespace Zorv::OfficeUtils {

/// A fraction of two whole numbers.
struct Ratio {
  double numerator = 0.0;
  double denominator = 1.0;
};

/// The fraction that is nearest to a number that is not negative, among those whose denominators
/// are not above a limit; of equally near ones that with the smaller denominator. Takes some tens
/// of steps.
[[nodiscard]] Ratio findNearestRatio(double number, double largestDenominator) noexcept;

}  // namespace Zorv::OfficeUtils
