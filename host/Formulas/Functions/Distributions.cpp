// The normal distribution.

#include <array>
#include <cmath>
#include <numbers>

#include <boost/math/policies/policy.hpp>
#include <boost/math/special_functions/erf.hpp>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

double standardDensity(double z) noexcept {
  constexpr double rootOfTwoPi = std::numbers::sqrt2 / std::numbers::inv_sqrtpi;
  return std::exp(-z * z / 2.0) / rootOfTwoPi;
}

double standardShareBelow(double z) noexcept { return std::erfc(-z / std::numbers::sqrt2) / 2.0; }

/// The inverse of standardShareBelow(); requires a share between 0 and 1. Reports nothing by
/// exceptions or errno.
double standardQuantile(double share) {
  namespace Policies = boost::math::policies;
  using Policy = Policies::policy<Policies::domain_error<Policies::ignore_error>,
                                  Policies::pole_error<Policies::ignore_error>,
                                  Policies::overflow_error<Policies::ignore_error>,
                                  Policies::evaluation_error<Policies::ignore_error>>;
  double const quantile = -std::numbers::sqrt2 * boost::math::erfc_inv(2.0 * share, Policy());
  return quantile == 0.0 ? 0.0 : quantile;
}

Value fromStandardShare(double share, double mean, double deviation) {
  bool const hasQuantile = share > 0.0 && share < 1.0 && deviation > 0.0;
  return hasQuantile ? Value::number(mean + deviation * standardQuantile(share)) : notANumber();
}

/// NORM.DIST(x, mean, deviation, cumulative)
Value normal(Call& call) {
  double const deviation = call.number(2);
  if (deviation <= 0.0) {
    return notANumber();
  }
  double const z = (call.number(0) - call.number(1)) / deviation;
  return Value::number(call.truth(3) ? standardShareBelow(z) : standardDensity(z) / deviation);
}

/// NORM.S.DIST(z, cumulative); the older function is always cumulative.
Value standardNormal(Call& call) {
  double const z = call.number(0);
  return Value::number(call.truth(1, true) ? standardShareBelow(z) : standardDensity(z));
}

/// NORM.INV(share, mean, deviation)
Value normalQuantile(Call& call) {
  return fromStandardShare(call.number(0), call.number(1), call.number(2));
}

Value standardNormalQuantile(Call& call) { return fromStandardShare(call.number(0), 0.0, 1.0); }

/// STANDARDIZE(x, mean, deviation)
Value standardise(Call& call) {
  double const deviation = call.number(2);
  return deviation > 0.0 ? Value::number((call.number(0) - call.number(1)) / deviation)
                         : notANumber();
}

/// CONFIDENCE(significance, deviation, count): half the width of the interval around a mean.
Value confidence(Call& call) {
  double const significance = call.number(0);
  double const deviation = call.number(1);
  double const count = std::trunc(call.number(2));
  bool const isPossible =
      significance > 0.0 && significance < 1.0 && deviation > 0.0 && count >= 1.0;
  if (!isPossible) {
    return notANumber();
  }
  return Value::number(-standardQuantile(significance / 2.0) * deviation / std::sqrt(count));
}

}  // namespace

std::span<FunctionEntry const> distributionFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"CONFIDENCE", "alpha:n, deviation:n, size:n", confidence,
                    "Half width of the confidence interval of a mean, by the normal distribution."},
      FunctionEntry{"CONFIDENCE.NORM", "alpha:n, deviation:n, size:n", confidence,
                    "Half width of the confidence interval of a mean, by the normal distribution."},
      FunctionEntry{"NORM.DIST", "x:n, mean:n, deviation:n, isCumulative:b", normal,
                    "Normal distribution or its density."},
      FunctionEntry{"NORM.INV", "probability:n, mean:n, deviation:n", normalQuantile,
                    "Quantile of the normal distribution."},
      FunctionEntry{"NORM.S.DIST", "z:n, isCumulative:b", standardNormal,
                    "Standard normal distribution or its density."},
      FunctionEntry{"NORM.S.INV", "probability:n", standardNormalQuantile,
                    "Quantile of the standard normal distribution."},
      FunctionEntry{"NORMDIST", "x:n, mean:n, deviation:n, isCumulative:b", normal,
                    "Normal distribution or its density."},
      FunctionEntry{"NORMINV", "probability:n, mean:n, deviation:n", normalQuantile,
                    "Quantile of the normal distribution."},
      FunctionEntry{"NORMSDIST", "z:n", standardNormal, "Standard normal distribution."},
      FunctionEntry{"NORMSINV", "probability:n", standardNormalQuantile,
                    "Quantile of the standard normal distribution."},
      FunctionEntry{"STANDARDIZE", "x:n, mean:n, deviation:n", standardise,
                    "Distance from the mean in standard deviations."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
