// Counts, means and ranks.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Functions/Summaries.h"
#include "Formulas/Values/Coercion.h"

namespace Zorv::Formulas {

namespace {

Value fromCount(std::uint64_t count) { return Value::number(static_cast<double>(count)); }

/// COUNT: numbers; of single values also what reads as one. Errors do not count.
Value countNumbers(Call& call) {
  if (auto const* const followed = findFollowed(call, 0, call.count(), AreaAspect::Summary)) {
    return fromCount(followed->getSummary().numberCount);
  }
  std::uint64_t count = 0;
  for (Value const& argument : call.arguments()) {
    if (argument.isSingle()) {
      count += toNumber(argument, call.locale()).isError() ? 0 : 1;
    } else {
      forEachElement(call.steps(), argument, [&](Value const& element, std::uint64_t times) {
        count += element.isNumber() ? times : 0;
        return true;
      });
    }
  }
  return fromCount(count);
}

/// COUNTA: all that is not empty.
Value countValues(Call& call) {
  if (auto const* const followed = findFollowed(call, 0, call.count(), AreaAspect::Summary)) {
    return fromCount(followed->getSummary().valueCount);
  }
  std::uint64_t count = 0;
  for (Value const& argument : call.arguments()) {
    forEachElement(call.steps(), argument, [&](Value const& element, std::uint64_t times) {
      count += element.kind() == Value::Kind::Empty ? 0 : times;
      return true;
    });
  }
  return fromCount(count);
}

/// COUNTBLANK: positions without a cell, empty cells and empty texts.
Value countBlanks(Call& call) {
  Value const& range = call[0];
  if (range.isError() || range.isSingle()) {
    return range.isError() ? range : Value::error(FormulaErrorCode::Value);
  }
  std::uint64_t filled = 0;
  forEachElement(call.steps(), range, [&](Value const& element, std::uint64_t times) {
    bool const isBlank = element.isEmpty() || (element.isText() && element.asText().empty());
    filled += isBlank ? 0 : times;
    return true;
  });
  return fromCount(countPositions(range) - filled);
}

Value average(Call& call) {
  Totals const totals = addUp(call);
  if (totals.error) {
    return *totals.error;
  }
  return totals.count == 0 ? Value::error(FormulaErrorCode::DivisionByZero)
                           : Value::number(totals.sum / static_cast<double>(totals.count));
}

/// The first or the last number in the order of all; nothing unless the order is known.
std::optional<double> findKnownExtreme(Call const& call, bool isLast) {
  FollowedArea const* const followed = findFollowed(call, 0, call.count(), AreaAspect::Order);
  if (followed == nullptr || followed->getSummary().firstError ||
      followed->getSummary().numberCount == 0) {
    return std::nullopt;
  }
  return followed->numberAt(isLast ? followed->getSummary().numberCount - 1 : 0);
}

/// Result of MIN and MAX; 0 where there is no number.
Value fromExtreme(double extreme) { return Value::number(std::isinf(extreme) ? 0.0 : extreme); }

Value minimum(Call& call) {
  if (auto const known = findKnownExtreme(call, false)) {
    return fromExtreme(*known);
  }
  double least = std::numeric_limits<double>::infinity();
  auto const error = visitNumbers(
      call, [&](double number, std::uint64_t /*times*/) { least = std::min(least, number); });
  return error ? *error : fromExtreme(least);
}

Value maximum(Call& call) {
  if (auto const known = findKnownExtreme(call, true)) {
    return fromExtreme(*known);
  }
  double most = -std::numeric_limits<double>::infinity();
  auto const error = visitNumbers(
      call, [&](double number, std::uint64_t /*times*/) { most = std::max(most, number); });
  return error ? *error : fromExtreme(most);
}

Value median(Call& call) {
  NumbersInOrder numbers(call, 0, call.count());
  return numbers.error() ? *numbers.error() : medianOf(numbers);
}

/// LARGE and SMALL, of numbers and a rank.
template <Value (*select)(NumbersInOrder&, double)>
Value selectByRank(Call& call) {
  NumbersInOrder numbers(call, 0, 1);
  return numbers.error() ? *numbers.error() : select(numbers, call.number(1));
}

}  // namespace

std::span<FunctionEntry const> statisticalFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"AVERAGE", "number:a, (number:a)", average, "Mean of numbers."},
      FunctionEntry{"COUNT", "value:a, (value:a)", countNumbers, "How many numbers there are."},
      FunctionEntry{"COUNTA", "value:a, (value:a)", countValues,
                    "How many values there are that are not empty."},
      FunctionEntry{"COUNTBLANK", "range:r", countBlanks,
                    "How many cells of a range are empty or hold an empty text."},
      FunctionEntry{"LARGE", "numbers:a, rank:n", selectByRank<largestOf>,
                    "Number at a rank from the largest."},
      FunctionEntry{"MAX", "number:a, (number:a)", maximum, "Largest number."},
      FunctionEntry{"MEDIAN", "number:a, (number:a)", median,
                    "Number in the middle of all, or the mean of two."},
      FunctionEntry{"MIN", "number:a, (number:a)", minimum, "Smallest number."},
      FunctionEntry{"SMALL", "numbers:a, rank:n", selectByRank<smallestOf>,
                    "Number at a rank from the smallest."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
