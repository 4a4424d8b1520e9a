// Ranks, quantiles and how often numbers stand.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <vector>

#include "Formulas/Functions/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Functions/Rounding.h"

namespace Zorv::Formulas {

namespace {

using Numbers = std::vector<double>;

Value notANumber() { return Value::error(FormulaErrorCode::Number); }
Value notAvailable() { return Value::error(FormulaErrorCode::NotAvailable); }

double countOf(Numbers const& numbers) noexcept { return static_cast<double>(numbers.size()); }

Standing findStanding(Numbers const& numbers, double number) noexcept {
  Standing standing;
  for (double const other : numbers) {
    ++(other < number ? standing.below : other > number ? standing.above : standing.equal);
  }
  return standing;
}

/// The same by what is remembered of a range; nothing where it must be walked.
std::optional<Standing> recallStanding(Call const& call, Value const& numbers, double number) {
  LookupSession* const lookups = call.evaluator().lookups();
  return lookups != nullptr && numbers.isReference()
             ? lookups->findStanding(numbers.asArea(), number)
             : std::nullopt;
}

/// RANK(number, numbers, ascending): from 1 on; equal numbers have the first of their ranks, or the
/// mean of them.
template <bool isMeanOfEquals>
Value rank(Call& call) {
  double const number = call.number(0);
  auto standing = recallStanding(call, call[1], number);
  if (!standing) {
    NumberList list(call, 1, 2);
    if (list.error()) {
      return *list.error();
    }
    standing = findStanding(list.numbers(), number);
  }
  if (standing->equal == 0) {
    return notAvailable();
  }
  auto const before = call.number(2, 0.0) == 0.0 ? standing->above : standing->below;
  auto const equal = static_cast<double>(standing->equal);
  return Value::number(static_cast<double>(before) + 1.0 +
                       (isMeanOfEquals ? (equal - 1.0) / 2.0 : 0.0));
}

/// The number at a place, from 0 to the last one, of the sorted numbers; between two places one
/// between both numbers. Moves the numbers.
double interpolateAt(Numbers& numbers, double place) {
  double const whole = roundDown(place);
  auto const lowerPlace = static_cast<std::size_t>(whole);
  double const lower = selectAt(numbers, lowerPlace);
  double const fraction = std::max(place - whole, 0.0);
  if (fraction == 0.0 || lowerPlace + 1 >= numbers.size()) {
    return lower;
  }
  auto const rest = numbers.begin() + static_cast<std::ptrdiff_t>(lowerPlace) + 1;
  double const upper = *std::min_element(rest, numbers.end());
  return lower + (upper - lower) * fraction;
}

enum class Ends : std::uint8_t {
  Included,  ///< the smallest number is the quantile of 0, the largest that of 1
  Excluded,  ///< both lie inside, as far from 0 and 1 as numbers are from each other
};

template <Ends ends>
Value quantile(Numbers& numbers, double share) {
  double const count = countOf(numbers);
  if (numbers.empty() || !(share >= 0.0 && share <= 1.0)) {
    return notANumber();
  }
  if (ends == Ends::Included) {
    return Value::number(interpolateAt(numbers, share * (count - 1.0)));
  }
  double const place = share * (count + 1.0) - 1.0;
  if (snapToWhole(place) < 0.0 || snapToWhole(place) > count - 1.0) {
    return notANumber();
  }
  return Value::number(interpolateAt(numbers, std::clamp(place, 0.0, count - 1.0)));
}

/// PERCENTILE(numbers, share)
template <Ends ends>
Value percentile(Call& call) {
  NumberList list(call, 0, 1);
  return list.error() ? *list.error() : quantile<ends>(list.numbers(), call.number(1));
}

/// QUARTILE(numbers, quarter)
template <Ends ends>
Value quartile(Call& call) {
  constexpr double quarters = 4.0;
  NumberList list(call, 0, 1);
  return list.error() ? *list.error()
                      : quantile<ends>(list.numbers(), std::trunc(call.number(1)) / quarters);
}

/// Which share of the numbers lies below one of them, or below one between two of them; nothing
/// where it lies outside.
std::optional<double> findShare(Numbers const& numbers, double number, Ends ends) {
  Standing const standing = findStanding(numbers, number);
  if (standing.equal == 0 && (standing.below == 0 || standing.above == 0)) {
    return std::nullopt;
  }
  auto place = static_cast<double>(standing.below);
  if (standing.equal == 0) {
    double below = -std::numeric_limits<double>::infinity();
    double above = std::numeric_limits<double>::infinity();
    for (double const other : numbers) {
      (other < number ? below : above) =
          other < number ? std::max(below, other) : std::min(above, other);
    }
    place += (number - below) / (above - below) - 1.0;
  }
  if (ends == Ends::Excluded) {
    return (place + 1.0) / (countOf(numbers) + 1.0);
  }
  return numbers.size() == 1 ? 1.0 : place / (countOf(numbers) - 1.0);
}

/// PERCENTRANK(numbers, number, digits): what is more than so many digits is cut off.
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

/// The places of numbers in the order of the numbers, equal ones in the order in which they stand.
std::vector<std::size_t> orderPlaces(Numbers const& numbers) {
  std::vector<std::size_t> places(numbers.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  std::ranges::stable_sort(places, {}, [&](std::size_t place) { return numbers[place]; });
  return places;
}

/// The places at which the most frequent numbers stand first, in order; none where each number
/// stands once.
std::vector<std::size_t> findModes(Numbers const& numbers) {
  std::vector<std::size_t> const places = orderPlaces(numbers);
  std::vector<std::size_t> modes;
  std::ptrdiff_t most = 2;
  for (auto first = places.begin(); first != places.end();) {
    auto const next = std::find_if(
        first, places.end(), [&](std::size_t place) { return numbers[place] != numbers[*first]; });
    std::ptrdiff_t const count = next - first;
    if (count > most) {
      modes.clear();
    }
    if (count >= most) {
      most = count;
      modes.push_back(*first);
    }
    first = next;
  }
  std::ranges::sort(modes);
  return modes;
}

/// MODE: the most frequent number; of several the one that stands first.
Value mode(Numbers& numbers) {
  std::vector<std::size_t> const modes = findModes(numbers);
  return modes.empty() ? notAvailable() : Value::number(numbers[modes.front()]);
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
  Numbers found;
  for (std::size_t const place : findModes(list.numbers())) {
    found.push_back(list.numbers()[place]);
  }
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
  std::vector<std::size_t> const places = orderPlaces(bounds);
  Numbers counts(bounds.size() + 1);
  for (double const number : list.numbers()) {
    auto const bound = std::ranges::lower_bound(places, number, {},
                                                [&](std::size_t place) { return bounds[place]; });
    counts[bound == places.end() ? bounds.size() : *bound] += 1.0;
  }
  return makeColumn(call.evaluator(), counts);
}

constexpr std::array entries = {
    FunctionEntry{"FREQUENCY", "aa", frequency},
    FunctionEntry{"MODE", "a(a)", reduceNumbers<mode>},
    FunctionEntry{"MODE.MULT", "a(a)", modes},
    FunctionEntry{"MODE.SNGL", "a(a)", reduceNumbers<mode>},
    FunctionEntry{"PERCENTILE", "an", percentile<Ends::Included>},
    FunctionEntry{"PERCENTILE.EXC", "an", percentile<Ends::Excluded>},
    FunctionEntry{"PERCENTILE.INC", "an", percentile<Ends::Included>},
    FunctionEntry{"PERCENTRANK", "an[n]", percentRank<Ends::Included>},
    FunctionEntry{"PERCENTRANK.EXC", "an[n]", percentRank<Ends::Excluded>},
    FunctionEntry{"PERCENTRANK.INC", "an[n]", percentRank<Ends::Included>},
    FunctionEntry{"QUARTILE", "an", quartile<Ends::Included>},
    FunctionEntry{"QUARTILE.EXC", "an", quartile<Ends::Excluded>},
    FunctionEntry{"QUARTILE.INC", "an", quartile<Ends::Included>},
    FunctionEntry{"RANK", "na[n]", rank<false>},
    FunctionEntry{"RANK.AVG", "na[n]", rank<true>},
    FunctionEntry{"RANK.EQ", "na[n]", rank<false>},
};

}  // namespace

std::span<FunctionEntry const> rankFunctions() noexcept { return entries; }

}  // namespace Zorv::Formulas
