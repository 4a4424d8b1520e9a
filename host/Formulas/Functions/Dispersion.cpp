// Means of other kinds, and how far numbers lie from their mean.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "Formulas/Functions/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Moments.h"
#include "Formulas/Functions/Numbers.h"

namespace Zorv::Formulas {

namespace {

using Numbers = std::vector<double>;

Value divisionByZero() { return Value::error(FormulaErrorCode::DivisionByZero); }
Value notANumber() { return Value::error(FormulaErrorCode::Number); }

double countOf(Numbers const& numbers) noexcept { return static_cast<double>(numbers.size()); }

Value sampleVariance(Numbers& numbers) {
  return numbers.size() < 2 ? divisionByZero()
                            : Value::number(squaredDeviations(numbers) / (countOf(numbers) - 1.0));
}

Value populationVariance(Numbers& numbers) {
  return numbers.empty() ? divisionByZero()
                         : Value::number(squaredDeviations(numbers) / countOf(numbers));
}

/// The deviation that belongs to a variance.
template <Value (*variance)(Numbers&)>
Value deviation(Numbers& numbers) {
  Value const square = variance(numbers);
  return square.isError() ? square : Value::number(std::sqrt(square.asNumber()));
}

constexpr auto sampleDeviation = deviation<sampleVariance>;
constexpr auto populationDeviation = deviation<populationVariance>;

/// AVEDEV: the mean of the distances from the mean.
Value meanDistance(Numbers& numbers) {
  if (numbers.empty()) {
    return notANumber();
  }
  double const total = sumOfDeviations(numbers, meanOf(numbers),
                                       [](double deviation) { return std::abs(deviation); });
  return Value::number(total / countOf(numbers));
}

/// DEVSQ
Value sumOfSquares(Numbers& numbers) {
  return numbers.empty() ? notANumber() : Value::number(squaredDeviations(numbers));
}

/// The sum of some power of the distances from the mean, told in sample deviations; nothing where
/// there are too few numbers, or all are equal.
std::optional<double> sumOfStandardised(Numbers const& numbers, std::size_t leastCount,
                                        int exponent) {
  double const count = countOf(numbers);
  if (numbers.size() < leastCount) {
    return std::nullopt;
  }
  double const scale = std::sqrt(squaredDeviations(numbers) / (count - 1.0));
  if (scale == 0.0) {
    return std::nullopt;
  }
  return sumOfDeviations(numbers, meanOf(numbers),
                         [&](double deviation) { return std::pow(deviation / scale, exponent); });
}

/// SKEW
Value skewness(Numbers& numbers) {
  auto const cubes = sumOfStandardised(numbers, 3, 3);
  double const n = countOf(numbers);
  return cubes ? Value::number(*cubes * n / ((n - 1.0) * (n - 2.0))) : divisionByZero();
}

/// KURT: how much heavier the tails are than those of a normal distribution.
Value excessKurtosis(Numbers& numbers) {
  auto const fourths = sumOfStandardised(numbers, 4, 4);
  if (!fourths) {
    return divisionByZero();
  }
  double const n = countOf(numbers);
  double const rest = (n - 2.0) * (n - 3.0);
  return Value::number(*fourths * n * (n + 1.0) / ((n - 1.0) * rest) -
                       3.0 * (n - 1.0) * (n - 1.0) / rest);
}

bool areAllPositive(Numbers const& numbers) {
  return !numbers.empty() &&
         std::ranges::all_of(numbers, [](double number) { return number > 0.0; });
}

/// GEOMEAN
Value geometricMean(Numbers& numbers) {
  if (!areAllPositive(numbers)) {
    return notANumber();
  }
  // By logarithms, since the product of many numbers is no number any more.
  std::ranges::transform(numbers, numbers.begin(), [](double number) { return std::log(number); });
  return Value::number(std::exp(meanOf(numbers)));
}

/// HARMEAN
Value harmonicMean(Numbers& numbers) {
  if (!areAllPositive(numbers)) {
    return notANumber();
  }
  std::ranges::transform(numbers, numbers.begin(), [](double number) { return 1.0 / number; });
  return Value::number(1.0 / meanOf(numbers));
}

Value arithmeticMean(Numbers& numbers) {
  return numbers.empty() ? divisionByZero() : Value::number(meanOf(numbers));
}

Value largest(Numbers& numbers) {
  return Value::number(numbers.empty() ? 0.0 : *std::ranges::max_element(numbers));
}

Value smallest(Numbers& numbers) {
  return Value::number(numbers.empty() ? 0.0 : *std::ranges::min_element(numbers));
}

/// TRIMMEAN(numbers, share): the mean without the largest and the smallest ones, as many of either.
Value trimmedMean(Call& call) {
  NumberList list(call, 0, 1);
  Numbers& numbers = list.numbers();
  double const share = call.number(1);
  if (list.error()) {
    return *list.error();
  }
  if (numbers.empty() || share < 0.0 || share >= 1.0) {
    return notANumber();
  }
  auto const cut = static_cast<std::size_t>(std::floor(countOf(numbers) * share / 2.0));
  std::ranges::sort(numbers);
  return Value::number(meanOf(std::span(numbers).subspan(cut, numbers.size() - 2 * cut)));
}

constexpr ElementRule all = ElementRule::AllValues;

constexpr std::array entries = {
    FunctionEntry{"AVEDEV", "a(a)", reduceNumbers<meanDistance>},
    FunctionEntry{"AVERAGEA", "a(a)", reduceNumbers<arithmeticMean, all>},
    FunctionEntry{"DEVSQ", "a(a)", reduceNumbers<sumOfSquares>},
    FunctionEntry{"GEOMEAN", "a(a)", reduceNumbers<geometricMean>},
    FunctionEntry{"HARMEAN", "a(a)", reduceNumbers<harmonicMean>},
    FunctionEntry{"KURT", "a(a)", reduceNumbers<excessKurtosis>},
    FunctionEntry{"MAXA", "a(a)", reduceNumbers<largest, all>},
    FunctionEntry{"MINA", "a(a)", reduceNumbers<smallest, all>},
    FunctionEntry{"SKEW", "a(a)", reduceNumbers<skewness>},
    FunctionEntry{"STDEV", "a(a)", reduceNumbers<sampleDeviation>},
    FunctionEntry{"STDEV.P", "a(a)", reduceNumbers<populationDeviation>},
    FunctionEntry{"STDEV.S", "a(a)", reduceNumbers<sampleDeviation>},
    FunctionEntry{"STDEVA", "a(a)", reduceNumbers<sampleDeviation, all>},
    FunctionEntry{"STDEVP", "a(a)", reduceNumbers<populationDeviation>},
    FunctionEntry{"STDEVPA", "a(a)", reduceNumbers<populationDeviation, all>},
    FunctionEntry{"TRIMMEAN", "an", trimmedMean},
    FunctionEntry{"VAR", "a(a)", reduceNumbers<sampleVariance>},
    FunctionEntry{"VAR.P", "a(a)", reduceNumbers<populationVariance>},
    FunctionEntry{"VAR.S", "a(a)", reduceNumbers<sampleVariance>},
    FunctionEntry{"VARA", "a(a)", reduceNumbers<sampleVariance, all>},
    FunctionEntry{"VARP", "a(a)", reduceNumbers<populationVariance>},
    FunctionEntry{"VARPA", "a(a)", reduceNumbers<populationVariance, all>},
};

}  // namespace

std::span<FunctionEntry const> dispersionFunctions() noexcept { return entries; }

}  // namespace Zorv::Formulas
