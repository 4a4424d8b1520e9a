// Means of other kinds, and how far numbers lie from their mean.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Moments.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Functions/Summaries.h"

namespace Zorv::Formulas {

namespace {

using Numbers = std::vector<double>;

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

/// The sum of some power of the distances from the mean, in units of the sample deviation; nothing
/// for too few numbers, or equal ones.
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
  call.steps().spend(stepsOfSort(numbers.size()));
  std::ranges::sort(numbers);
  return Value::number(meanOf(std::span(numbers).subspan(cut, numbers.size() - 2 * cut)));
}

constexpr ElementRule all = ElementRule::AllValues;

}  // namespace

std::span<FunctionEntry const> dispersionFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"AVEDEV", "number:a, (number:a)", reduceNumbers<meanDistance>,
                    "Mean distance of numbers from their mean."},
      FunctionEntry{"AVERAGEA", "value:a, (value:a)", reduceNumbers<arithmeticMean, all>,
                    "Mean of values; texts count as 0, truth values as 1 and 0."},
      FunctionEntry{"DEVSQ", "number:a, (number:a)", reduceNumbers<sumOfSquares>,
                    "Sum of the squared distances of numbers from their mean."},
      FunctionEntry{"GEOMEAN", "number:a, (number:a)", reduceNumbers<geometricMean>,
                    "Geometric mean of positive numbers."},
      FunctionEntry{"HARMEAN", "number:a, (number:a)", reduceNumbers<harmonicMean>,
                    "Harmonic mean of positive numbers."},
      FunctionEntry{"KURT", "number:a, (number:a)", reduceNumbers<excessKurtosis>,
                    "Excess kurtosis of a sample."},
      FunctionEntry{"MAXA", "value:a, (value:a)", reduceNumbers<largest, all>,
                    "Largest value; texts count as 0, truth values as 1 and 0."},
      FunctionEntry{"MINA", "value:a, (value:a)", reduceNumbers<smallest, all>,
                    "Smallest value; texts count as 0, truth values as 1 and 0."},
      FunctionEntry{"SKEW", "number:a, (number:a)", reduceNumbers<skewness>,
                    "Skewness of a sample."},
      FunctionEntry{"STDEV", "number:a, (number:a)", reduceNumbers<sampleDeviation>,
                    "Standard deviation of a sample."},
      FunctionEntry{"STDEV.P", "number:a, (number:a)", reduceNumbers<populationDeviation>,
                    "Standard deviation of a whole population."},
      FunctionEntry{"STDEV.S", "number:a, (number:a)", reduceNumbers<sampleDeviation>,
                    "Standard deviation of a sample."},
      FunctionEntry{"STDEVA", "value:a, (value:a)", reduceNumbers<sampleDeviation, all>,
                    "Standard deviation of a sample; texts count as 0, truth values as 1 and 0."},
      FunctionEntry{"STDEVP", "number:a, (number:a)", reduceNumbers<populationDeviation>,
                    "Standard deviation of a whole population."},
      FunctionEntry{
          "STDEVPA", "value:a, (value:a)", reduceNumbers<populationDeviation, all>,
          "Standard deviation of a whole population; texts count as 0, truth values as 1 and 0."},
      FunctionEntry{"TRIMMEAN", "numbers:a, share:n", trimmedMean,
                    "Mean without a share of the smallest and the largest numbers."},
      FunctionEntry{"VAR", "number:a, (number:a)", reduceNumbers<sampleVariance>,
                    "Variance of a sample."},
      FunctionEntry{"VAR.P", "number:a, (number:a)", reduceNumbers<populationVariance>,
                    "Variance of a whole population."},
      FunctionEntry{"VAR.S", "number:a, (number:a)", reduceNumbers<sampleVariance>,
                    "Variance of a sample."},
      FunctionEntry{"VARA", "value:a, (value:a)", reduceNumbers<sampleVariance, all>,
                    "Variance of a sample; texts count as 0, truth values as 1 and 0."},
      FunctionEntry{"VARP", "number:a, (number:a)", reduceNumbers<populationVariance>,
                    "Variance of a whole population."},
      FunctionEntry{"VARPA", "value:a, (value:a)", reduceNumbers<populationVariance, all>,
                    "Variance of a whole population; texts count as 0, truth values as 1 and 0."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
