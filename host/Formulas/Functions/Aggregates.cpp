// SUBTOTAL and AGGREGATE: functions of numbers that are chosen by a number.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

#include "Formulas/Evaluation/ByElement.h"
#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Functions/Summaries.h"
#include "Formulas/Values/Coercion.h"
#include "Formulas/Values/Elements.h"

namespace Zorv::Formulas {

namespace {

/// The values of ranges.
struct Contents {
  std::vector<double> numbers;
  std::uint64_t valueCount = 0;  ///< of all that is not empty
  std::optional<Value> error;    ///< the first one, unless errors are left out
};

/// Adds what a range, an array or a single value holds.
void gather(StepMeter& steps, Contents& contents, Value const& range, bool ignoresErrors) {
  forEachElement(steps, range, [&](Value const& element, std::uint64_t times) {
    if (element.isError() && !ignoresErrors && !contents.error) {
      contents.error = element;
    }
    bool const isCounted = !element.isEmpty() && !(element.isError() && ignoresErrors);
    contents.valueCount += isCounted ? times : 0;
    if (element.isNumber()) {
      addNumber(steps, contents.numbers, element.asNumber(), times);
    }
    return true;
  });
}

using Numbers = std::vector<double>;

double totalOf(Numbers const& numbers) {
  return std::accumulate(numbers.begin(), numbers.end(), 0.0);
}

Value sum(Numbers& numbers) { return Value::number(totalOf(numbers)); }

Value average(Numbers& numbers) {
  return numbers.empty() ? divisionByZero() : Value::number(totalOf(numbers) / countOf(numbers));
}

Value maximum(Numbers& numbers) {
  return Value::number(numbers.empty() ? 0.0 : *std::ranges::max_element(numbers));
}

Value minimum(Numbers& numbers) {
  return Value::number(numbers.empty() ? 0.0 : *std::ranges::min_element(numbers));
}

Value product(Numbers& numbers) {
  return Value::number(
      numbers.empty() ? 0.0
                      : std::accumulate(numbers.begin(), numbers.end(), 1.0, std::multiplies<>()));
}

Value median(Numbers& numbers) {
  NumbersInOrder inOrder(std::move(numbers));
  return medianOf(inOrder);
}

// The functions by number. Those of COUNT, COUNTA and MODE, 2, 3 and 13, ask for more than the
// numbers.
constexpr std::size_t countFunction = 2;
constexpr std::size_t countAllFunction = 3;
constexpr std::size_t modeFunction = 13;
using Function = Value (*)(Numbers&);
constexpr std::array<Function, 14> functions = {
    nullptr, average,         nullptr,
    nullptr, maximum,         minimum,
    product, sampleDeviation, populationDeviation,
    sum,     sampleVariance,  populationVariance,
    median,  nullptr,
};

// Those that take a rank or a share besides, from the number 14 on.
constexpr std::array<Value (*)(NumbersInOrder&, double), 6> functionsOfRanks = {
    largestOf,
    smallestOf,
    percentileOf<Ends::Included>,
    quartileOf<Ends::Included>,
    percentileOf<Ends::Excluded>,
    quartileOf<Ends::Excluded>,
};

/// Functions of references only: `#VALUE!` for an argument of another kind.
Value aggregateReferences(Call const& call, std::size_t function, std::size_t firstArgument,
                          bool ignoresErrors) {
  Contents contents;
  for (Value const& range : call.arguments().subspan(firstArgument)) {
    if (!range.isReference() && !range.isReferences()) {
      return range.isError() ? range : Value::error(FormulaErrorCode::Value);
    }
    gather(call.steps(), contents, range, ignoresErrors);
  }
  if (function == countFunction) {
    return Value::number(countOf(contents.numbers));
  }
  if (function == countAllFunction) {
    return Value::number(static_cast<double>(contents.valueCount));
  }
  if (contents.error) {
    return *contents.error;
  }
  return function == modeFunction ? modeOf(call.steps(), contents.numbers)
                                  : functions[function](contents.numbers);
}

/// A whole number from 0 to below `end`, or `end` itself for one outside.
std::size_t toIndex(double number, std::size_t end) noexcept {
  double const whole = std::trunc(number);
  return 0.0 <= whole && whole < static_cast<double>(end) ? static_cast<std::size_t>(whole) : end;
}

/// SUBTOTAL(function, references). The numbers from 101 on leave out the rows that are hidden by
/// hand, and all of them those that a filter hides and cells with subtotals of their own. None of
/// this is known here, so every cell counts.
Value subtotal(Call& call) {
  constexpr double firstWithoutHidden = 101.0;
  constexpr std::size_t end = 12;
  double const number = call.number(0);
  std::size_t const function =
      toIndex(number < firstWithoutHidden ? number : number - (firstWithoutHidden - 1.0), end);
  if (function == 0 || function == end) {
    return Value::error(FormulaErrorCode::Value);
  }
  return aggregateReferences(call, function, 1, false);
}

/// AGGREGATE(function, options, array, rank)
Value aggregateByRank(Call const& call, std::size_t function, bool ignoresErrors) {
  constexpr std::size_t argumentCount = 4;
  if (call.count() != argumentCount) {
    return Value::error(FormulaErrorCode::Value);
  }
  Contents contents;
  gather(call.steps(), contents, call[2], ignoresErrors);
  auto const rank = toNumber(toElement(call.evaluator(), call[3]), call.locale());
  if (contents.error || rank.isError()) {
    return contents.error ? *contents.error : rank.error();
  }
  // To select a number takes as long as to sort them, at worst.
  call.steps().spend(stepsOfSort(contents.numbers.size()));
  NumbersInOrder numbers(std::move(contents.numbers));
  return functionsOfRanks[function - functions.size()](numbers, *rank);
}

/// AGGREGATE(function, options, references). Of the options only leaving out errors has an effect
/// here; see SUBTOTAL.
Value aggregate(Call& call) {
  constexpr std::size_t optionCount = 8;
  constexpr std::size_t ignoreErrors = 2;  // a bit
  constexpr std::size_t end = functions.size() + functionsOfRanks.size();
  std::size_t const function = toIndex(call.number(0), end);
  std::size_t const options = toIndex(call.number(1), optionCount);
  if (function == 0 || function == end || options == optionCount) {
    return Value::error(FormulaErrorCode::Value);
  }
  bool const ignoresErrors = (options & ignoreErrors) != 0;
  return function < functions.size() ? aggregateReferences(call, function, 2, ignoresErrors)
                                     : aggregateByRank(call, function, ignoresErrors);
}

}  // namespace

std::span<FunctionEntry const> aggregateFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"AGGREGATE", "function:n, options:n, values:a, (values:a)", aggregate,
                    "One of 19 summaries, by number, that may leave out errors."},
      FunctionEntry{"SUBTOTAL", "function:n, range:r, (range:r)", subtotal,
                    "One of 11 summaries of ranges, by number, such as 9 for a sum."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
