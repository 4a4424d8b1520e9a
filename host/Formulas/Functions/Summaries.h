#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Numbers.h"

/// Summaries of a list of numbers, for the functions that are named after them and for SUBTOTAL and
/// AGGREGATE, which choose one by its number.
namespace Zorv::Formulas {

[[nodiscard]] inline double countOf(std::span<double const> numbers) noexcept {
  return static_cast<double>(numbers.size());
}

// Variances, and deviations as their roots: `#DIV/0!` for too few numbers.

[[nodiscard]] Value sampleVariance(std::vector<double>& numbers);
[[nodiscard]] Value populationVariance(std::vector<double>& numbers);
[[nodiscard]] Value sampleDeviation(std::vector<double>& numbers);
[[nodiscard]] Value populationDeviation(std::vector<double>& numbers);

// Numbers by their order: `#NUM!` where there is none.

/// Of an even count, the mean of the two in the middle.
[[nodiscard]] Value medianOf(NumbersInOrder& numbers);

/// The number of a rank, which counts from 1 and whose fraction rounds up.
[[nodiscard]] Value largestOf(NumbersInOrder& numbers, double rank);
[[nodiscard]] Value smallestOf(NumbersInOrder& numbers, double rank);

enum class Ends : std::uint8_t {
  Included,  ///< the smallest number is the quantile of 0, the largest that of 1
  Excluded,  ///< both lie inside, as far from 0 and 1 as numbers are from each other
};

/// The number below which a share of the numbers lies, or one between two numbers.
template <Ends ends>
[[nodiscard]] Value percentileOf(NumbersInOrder& numbers, double share);
/// The same for a number of quarters, whose fraction is cut off.
template <Ends ends>
[[nodiscard]] Value quartileOf(NumbersInOrder& numbers, double quarter);

/// The indexes of numbers, sorted by number; equal numbers keep their order.
[[nodiscard]] std::vector<std::size_t> sortIndexes(StepMeter& steps,
                                                   std::span<double const> numbers);

/// The most frequent numbers in the order of their first occurrence; none where each number occurs
/// once.
[[nodiscard]] std::vector<double> findModes(StepMeter& steps, std::span<double const> numbers);
/// The first of them, or `#N/A`.
[[nodiscard]] Value modeOf(StepMeter& steps, std::span<double const> numbers);

}  // namespace Zorv::Formulas
