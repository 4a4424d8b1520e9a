#include "Formulas/Functions/Summaries.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <optional>

#include "Formulas/Functions/Moments.h"
#include "Formulas/Functions/Rounding.h"

namespace Zorv::Formulas {

namespace {

Value rootOf(Value const& variance) {
  return variance.isError() ? variance : Value::number(std::sqrt(variance.asNumber()));
}

/// The index of a rank's number, from 0 on; none for a rank that no number has.
std::optional<std::size_t> findIndexOfRank(NumbersInOrder& numbers, double rank) {
  double const whole = std::ceil(rank);
  return whole >= 1.0 && whole <= static_cast<double>(numbers.size())
             ? std::optional(static_cast<std::size_t>(whole) - 1)
             : std::nullopt;
}

/// The number at an index of the sorted numbers; for a fraction of an index, a number between two
/// numbers.
double interpolateAt(NumbersInOrder& numbers, double index) {
  double const whole = roundDown(index);
  auto const lowerIndex = static_cast<std::size_t>(whole);
  double const fraction = std::max(index - whole, 0.0);
  if (fraction == 0.0 || lowerIndex + 1 >= numbers.size()) {
    return numbers.at(lowerIndex);
  }
  auto const [lower, upper] = numbers.pairAt(lowerIndex);
  return lower + (upper - lower) * fraction;
}

}  // namespace

Value sampleVariance(std::vector<double>& numbers) {
  return numbers.size() < 2 ? divisionByZero()
                            : Value::number(squaredDeviations(numbers) / (countOf(numbers) - 1.0));
}

Value populationVariance(std::vector<double>& numbers) {
  return numbers.empty() ? divisionByZero()
                         : Value::number(squaredDeviations(numbers) / countOf(numbers));
}

Value sampleDeviation(std::vector<double>& numbers) { return rootOf(sampleVariance(numbers)); }

Value populationDeviation(std::vector<double>& numbers) {
  return rootOf(populationVariance(numbers));
}

Value medianOf(NumbersInOrder& numbers) {
  if (numbers.size() == 0) {
    return notANumber();
  }
  std::size_t const middle = numbers.size() / 2;
  if (numbers.size() % 2 != 0) {
    return Value::number(numbers.at(middle));
  }
  auto const [lower, upper] = numbers.pairAt(middle - 1);
  return Value::number(lower + (upper - lower) / 2.0);
}

Value largestOf(NumbersInOrder& numbers, double rank) {
  auto const index = findIndexOfRank(numbers, rank);
  return index ? Value::number(numbers.at(numbers.size() - 1 - *index)) : notANumber();
}

Value smallestOf(NumbersInOrder& numbers, double rank) {
  auto const index = findIndexOfRank(numbers, rank);
  return index ? Value::number(numbers.at(*index)) : notANumber();
}

template <Ends ends>
Value percentileOf(NumbersInOrder& numbers, double share) {
  auto const count = static_cast<double>(numbers.size());
  if (numbers.size() == 0 || !(share >= 0.0 && share <= 1.0)) {
    return notANumber();
  }
  if (ends == Ends::Included) {
    return Value::number(interpolateAt(numbers, share * (count - 1.0)));
  }
  double const index = share * (count + 1.0) - 1.0;
  if (snapToWhole(index) < 0.0 || snapToWhole(index) > count - 1.0) {
    return notANumber();
  }
  return Value::number(interpolateAt(numbers, std::clamp(index, 0.0, count - 1.0)));
}

template <Ends ends>
Value quartileOf(NumbersInOrder& numbers, double quarter) {
  constexpr double quarters = 4.0;
  return percentileOf<ends>(numbers, std::trunc(quarter) / quarters);
}

template Value percentileOf<Ends::Included>(NumbersInOrder&, double);
template Value percentileOf<Ends::Excluded>(NumbersInOrder&, double);
template Value quartileOf<Ends::Included>(NumbersInOrder&, double);
template Value quartileOf<Ends::Excluded>(NumbersInOrder&, double);

std::vector<std::size_t> sortIndexes(StepMeter& steps, std::span<double const> numbers) {
  steps.spend(stepsOfSort(numbers.size()));
  std::vector<std::size_t> indexes(numbers.size());
  std::iota(indexes.begin(), indexes.end(), std::size_t{0});
  std::ranges::stable_sort(indexes, {}, [&](std::size_t index) { return numbers[index]; });
  return indexes;
}

std::vector<double> findModes(StepMeter& steps, std::span<double const> numbers) {
  std::vector<std::size_t> const indexes = sortIndexes(steps, numbers);
  std::vector<std::size_t> firstIndexes;
  std::ptrdiff_t most = 2;
  for (auto first = indexes.begin(); first != indexes.end();) {
    auto const next = std::find_if(
        first, indexes.end(), [&](std::size_t index) { return numbers[index] != numbers[*first]; });
    std::ptrdiff_t const count = next - first;
    if (count > most) {
      firstIndexes.clear();
    }
    if (count >= most) {
      most = count;
      firstIndexes.push_back(*first);
    }
    first = next;
  }
  std::ranges::sort(firstIndexes);
  std::vector<double> modes;
  std::ranges::transform(firstIndexes, std::back_inserter(modes),
                         [&](std::size_t index) { return numbers[index]; });
  return modes;
}

Value modeOf(StepMeter& steps, std::span<double const> numbers) {
  std::vector<double> const modes = findModes(steps, numbers);
  return modes.empty() ? notAvailable() : Value::number(modes.front());
}

}  // namespace Zorv::Formulas
