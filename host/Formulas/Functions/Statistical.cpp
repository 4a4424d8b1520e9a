// Counts, means and ranks.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Values/Coercion.h"

namespace Zorv::Formulas {

namespace {

Value fromCount(std::uint64_t count) { return Value::number(static_cast<double>(count)); }

/// COUNT: numbers; of single values also what reads as one. Errors do not count.
Value countNumbers(Call& call) {
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
  double total = 0.0;
  std::uint64_t count = 0;
  auto const error = visitNumbers(call, [&](double number, std::uint64_t times) {
    total += number * static_cast<double>(times);
    count += times;
  });
  if (error) {
    return *error;
  }
  return count == 0 ? Value::error(FormulaErrorCode::DivisionByZero)
                    : Value::number(total / static_cast<double>(count));
}

/// MIN and MAX; 0 where there is no number.
Value minimum(Call& call) {
  double least = std::numeric_limits<double>::infinity();
  auto const error = visitNumbers(
      call, [&](double number, std::uint64_t /*times*/) { least = std::min(least, number); });
  return error ? *error : Value::number(std::isinf(least) ? 0.0 : least);
}

Value maximum(Call& call) {
  double most = -std::numeric_limits<double>::infinity();
  auto const error = visitNumbers(
      call, [&](double number, std::uint64_t /*times*/) { most = std::max(most, number); });
  return error ? *error : Value::number(std::isinf(most) ? 0.0 : most);
}

Value median(Call& call) {
  NumberList list(call, 0, call.count());
  std::vector<double>& numbers = list.numbers();
  if (list.error() || numbers.empty()) {
    return list.error() ? *list.error() : Value::error(FormulaErrorCode::Number);
  }
  std::size_t const middle = numbers.size() / 2;
  double const upper = selectAt(numbers, middle);
  if (numbers.size() % 2 != 0) {
    return Value::number(upper);
  }
  auto const lowerEnd = numbers.begin() + static_cast<std::ptrdiff_t>(middle);
  double const lower = *std::max_element(numbers.begin(), lowerEnd);
  return Value::number(lower + (upper - lower) / 2.0);
}

/// The number of a rank, which counts from 1 and whose fraction rounds up.
Value selectByRank(Call const& call, bool fromLargest) {
  NumberList list(call, 0, 1);
  std::vector<double>& numbers = list.numbers();
  if (list.error()) {
    return *list.error();
  }
  double const rank = std::ceil(call.number(1));
  if (numbers.empty() || rank < 1.0 || rank > static_cast<double>(numbers.size())) {
    return Value::error(FormulaErrorCode::Number);
  }
  std::size_t const fromStart = static_cast<std::size_t>(rank) - 1;
  return Value::number(selectAt(numbers, fromLargest ? numbers.size() - 1 - fromStart : fromStart));
}

Value large(Call& call) { return selectByRank(call, true); }
Value small(Call& call) { return selectByRank(call, false); }

}  // namespace

std::span<FunctionEntry const> statisticalFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"AVERAGE", "number:a, (number:a)", average, "Mean of numbers."},
      FunctionEntry{"COUNT", "value:a, (value:a)", countNumbers, "How many numbers there are."},
      FunctionEntry{"COUNTA", "value:a, (value:a)", countValues,
                    "How many values there are that are not empty."},
      FunctionEntry{"COUNTBLANK", "range:r", countBlanks,
                    "How many cells of a range are empty or hold an empty text."},
      FunctionEntry{"LARGE", "numbers:a, rank:n", large, "Number at a rank from the largest."},
      FunctionEntry{"MAX", "number:a, (number:a)", maximum, "Largest number."},
      FunctionEntry{"MEDIAN", "number:a, (number:a)", median,
                    "Number in the middle of all, or the mean of two."},
      FunctionEntry{"MIN", "number:a, (number:a)", minimum, "Smallest number."},
      FunctionEntry{"SMALL", "numbers:a, rank:n", small, "Number at a rank from the smallest."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
