// Ranks, quantiles and frequencies of numbers.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Functions/Rounding.h"
#include "Formulas/Functions/Summaries.h"

namespace Zorv::Formulas {

namespace {

using Numbers = std::vector<double>;

RankCounts countAround(Numbers const& numbers, double number) noexcept {
  RankCounts counts;
  for (double const other : numbers) {
    ++(other < number ? counts.below : other > number ? counts.above : counts.equal);
  }
  return counts;
}

/// The same by the index of a range; nothing where a walk has to be done.
std::optional<RankCounts> lookUpCounts(Call const& call, Value const& numbers, double number) {
  LookupSession* const lookups = call.evaluator().lookups();
  return lookups != nullptr && numbers.isReference()
             ? lookups->countAround(numbers.asArea(), number)
             : std::nullopt;
}

/// RANK(number, numbers, ascending): from 1 on; equal numbers have the first of their ranks, or the
/// mean of them.
template <bool isMeanOfEquals>
Value rank(Call& call) {
  double const number = call.number(0);
  auto counts = lookUpCounts(call, call[1], number);
  if (!counts) {
    NumberList list(call, 1, 2);
    if (list.error()) {
      return *list.error();
    }
    counts = countAround(list.numbers(), number);
  }
  if (counts->equal == 0) {
    return notAvailable();
  }
  auto const before = call.number(2, 0.0) == 0.0 ? counts->above : counts->below;
  auto const equal = static_cast<double>(counts->equal);
  return Value::number(static_cast<double>(before) + 1.0 +
                       (isMeanOfEquals ? (equal - 1.0) / 2.0 : 0.0));
}

/// PERCENTILE(numbers, share)
template <Ends ends>
Value percentile(Call& call) {
  NumbersInOrder numbers(call, 0, 1);
  return numbers.error() ? *numbers.error() : percentileOf<ends>(numbers, call.number(1));
}

/// QUARTILE(numbers, quarter)
template <Ends ends>
Value quartile(Call& call) {
  NumbersInOrder numbers(call, 0, 1);
  return numbers.error() ? *numbers.error() : quartileOf<ends>(numbers, call.number(1));
}

/// The share of the numbers below one of them, or below a number between two of them; nothing for a
/// number outside of them.
std::optional<double> findShare(Numbers const& numbers, double number, Ends ends) {
  RankCounts const counts = countAround(numbers, number);
  if (counts.equal == 0 && (counts.below == 0 || counts.above == 0)) {
    return std::nullopt;
  }
  auto index = static_cast<double>(counts.below);
  if (counts.equal == 0) {
    double below = -std::numeric_limits<double>::infinity();
    double above = std::numeric_limits<double>::infinity();
    for (double const other : numbers) {
      (other < number ? below : above) =
          other < number ? std::max(below, other) : std::min(above, other);
    }
    index += (number - below) / (above - below) - 1.0;
  }
  if (ends == Ends::Excluded) {
    return (index + 1.0) / (countOf(numbers) + 1.0);
  }
  return numbers.size() == 1 ? 1.0 : index / (countOf(numbers) - 1.0);
}

/// PERCENTRANK(numbers, number, digits): cut off after so many digits.
template <Ends ends>
Value percentRank(Call& call) {
  NumberList list(call, 0, 1);
  if (list.error()) {
    return *list.error();
  }
  double const digits = std::trunc(call.number(2, 3.0));
  if (list.numbers().empty() || digits < 1.0) {
    return notANumber();
  }
  auto const share = findShare(list.numbers(), call.number(1), ends);
  return share ? Value::number(roundToDigits(*share, digits, roundTowardsZero)) : notAvailable();
}

/// MODE: the most frequent number; of several the one that occurs first.
Value mode(Call& call) {
  NumberList list(call, 0, call.count());
  return list.error() ? *list.error() : modeOf(call.steps(), list.numbers());
}

/// A column of numbers.
Value makeColumn(Evaluator& evaluator, Numbers const& numbers) {
  std::span<Value> const values = evaluator.arena().makeArray<Value>(numbers.size());
  std::ranges::transform(numbers, values.begin(), Value::number);
  auto const rows = static_cast<std::uint32_t>(numbers.size());
  return Value::array(evaluator.arena().make(Array{rows, 1, rows, values.data()}));
}

/// MODE.MULT: all the most frequent numbers.
Value modes(Call& call) {
  NumberList list(call, 0, call.count());
  if (list.error()) {
    return *list.error();
  }
  Numbers const found = findModes(call.steps(), list.numbers());
  return found.empty() ? notAvailable() : makeColumn(call.evaluator(), found);
}

/// FREQUENCY(numbers, bounds): how many numbers lie above the next smaller bound and not above each
/// one, and last how many lie above all. Of equal bounds the first one counts.
Value frequency(Call& call) {
  NumberList list(call, 0, 1);
  NumberList boundList(call, 1, 2);
  if (list.error() || boundList.error()) {
    return list.error() ? *list.error() : *boundList.error();
  }
  Numbers const& bounds = boundList.numbers();
  std::vector<std::size_t> const indexes = sortIndexes(call.steps(), bounds);
  call.steps().spend(list.numbers().size() * std::bit_width(bounds.size()));
  Numbers counts(bounds.size() + 1);
  for (double const number : list.numbers()) {
    auto const bound = std::ranges::lower_bound(indexes, number, {},
                                                [&](std::size_t index) { return bounds[index]; });
    counts[bound == indexes.end() ? bounds.size() : *bound] += 1.0;
  }
  return makeColumn(call.evaluator(), counts);
}

}  // namespace

std::span<FunctionEntry const> rankFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"FREQUENCY", "numbers:a, limits:a", frequency,
                    "Column of how many numbers lie between each limit and the one below."},
      FunctionEntry{"MODE", "number:a, (number:a)", mode,
                    "Most frequent number, the first of several."},
      FunctionEntry{"MODE.MULT", "number:a, (number:a)", modes,
                    "Column of all most frequent numbers."},
      FunctionEntry{"MODE.SNGL", "number:a, (number:a)", mode,
                    "Most frequent number, the first of several."},
      FunctionEntry{"PERCENTILE", "numbers:a, share:n", percentile<Ends::Included>,
                    "Number below which a share of the numbers lies; 0 and 1 give the smallest and "
                    "the largest."},
      FunctionEntry{"PERCENTILE.EXC", "numbers:a, share:n", percentile<Ends::Excluded>,
                    "Number below which a share of the numbers lies, with both ends left out."},
      FunctionEntry{"PERCENTILE.INC", "numbers:a, share:n", percentile<Ends::Included>,
                    "Number below which a share of the numbers lies; 0 and 1 give the smallest and "
                    "the largest."},
      FunctionEntry{"PERCENTRANK", "numbers:a, number:n, [digits:n]", percentRank<Ends::Included>,
                    "Share of the numbers that lie below a number, from 0 to 1."},
      FunctionEntry{"PERCENTRANK.EXC", "numbers:a, number:n, [digits:n]",
                    percentRank<Ends::Excluded>,
                    "Share of the numbers that lie below a number, with both ends left out."},
      FunctionEntry{"PERCENTRANK.INC", "numbers:a, number:n, [digits:n]",
                    percentRank<Ends::Included>,
                    "Share of the numbers that lie below a number, from 0 to 1."},
      FunctionEntry{
          "QUARTILE", "numbers:a, quarter:n", quartile<Ends::Included>,
          "Number below which some quarters of the numbers lie; 0 and 4 give the smallest "
          "and the largest."},
      FunctionEntry{
          "QUARTILE.EXC", "numbers:a, quarter:n", quartile<Ends::Excluded>,
          "Number below which some quarters of the numbers lie, with both ends left out."},
      FunctionEntry{
          "QUARTILE.INC", "numbers:a, quarter:n", quartile<Ends::Included>,
          "Number below which some quarters of the numbers lie; 0 and 4 give the smallest "
          "and the largest."},
      FunctionEntry{
          "RANK", "number:n, numbers:a, [isAscending:n]", rank<false>,
          "Rank of a number among others, from 1; equal numbers have the best of their ranks."},
      FunctionEntry{
          "RANK.AVG", "number:n, numbers:a, [isAscending:n]", rank<true>,
          "Rank of a number among others, from 1; equal numbers have the mean of their ranks."},
      FunctionEntry{
          "RANK.EQ", "number:n, numbers:a, [isAscending:n]", rank<false>,
          "Rank of a number among others, from 1; equal numbers have the best of their ranks."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
