#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Values/Arrays.h"
#include "Formulas/Values/Coercion.h"
#include "Formulas/Values/Elements.h"

namespace Zorv::Formulas {

/// The values that count as numbers in ranges and arrays.
enum class ElementRule : std::uint8_t {
  NumbersOnly,  ///< nothing but numbers
  AllValues,    ///< truth values as 1 and 0 and texts as 0, too
};

/// The number that an element of a range or an array counts as, or nothing; not for errors.
[[nodiscard]] inline std::optional<double> numberOfElement(Value const& element,
                                                           ElementRule rule) noexcept {
  if (element.isNumber()) {
    return element.asNumber();
  }
  if (rule == ElementRule::NumbersOnly || element.isEmpty()) {
    return std::nullopt;
  }
  return element.isBoolean() && element.asBoolean() ? 1.0 : 0.0;
}

/// Passes the numbers among some arguments of a call to `take(number)`, or with their multiplicity
/// to `take(number, times)`; see forEachElement(). In ranges and arrays the rule decides what
/// counts as a number; an argument that is a single value is converted. The first error ends the
/// walk and is returned.
template <class Take>
[[nodiscard]] std::optional<Value> visitNumbers(Call const& call, std::size_t first,
                                                std::size_t end, Take&& take,
                                                ElementRule rule = ElementRule::NumbersOnly) {
  std::optional<Value> error;
  auto const takeTimes = [&](double number, std::uint64_t times) {
    if constexpr (std::is_invocable_v<Take&, double, std::uint64_t>) {
      take(number, times);
    } else {
      call.steps().spend(times);
      for (; times != 0; --times) {
        take(number);
      }
    }
  };
  auto const visit = [&](Value const& element, std::uint64_t times) {
    if (element.isError()) {
      error = element;
    } else if (auto const number = numberOfElement(element, rule)) {
      takeTimes(*number, times);
    }
    return !error;
  };
  for (std::size_t i = first; i < end && !error; ++i) {
    if (!call[i].isSingle()) {
      forEachElement(call.steps(), call[i], visit);
      continue;
    }
    auto const number = toNumber(call[i], call.locale());
    if (number.isError()) {
      return number.error();
    }
    takeTimes(*number, 1);
  }
  return error;
}

/// The numbers of all arguments from one on.
template <class Take>
[[nodiscard]] std::optional<Value> visitNumbers(Call const& call, Take&& take) {
  return visitNumbers(call, 0, call.count(), take);
}

/// The area that is the only argument among some, if somebody keeps an aspect of it up to date;
/// else null.
[[nodiscard]] inline FollowedArea const* findFollowed(Call const& call, std::size_t first,
                                                      std::size_t end, AreaAspect aspect) {
  LookupSession const* const lookups = call.evaluator().lookups();
  bool const isArea = end == first + 1 && call[first].isReference();
  return lookups != nullptr && isArea ? lookups->findFollowed(call[first].asArea(), aspect)
                                      : nullptr;
}

/// The numbers of all arguments in sum, or the first error among them.
struct Totals {
  double sum = 0.0;
  std::uint64_t count = 0;
  std::optional<Value> error;
};

[[nodiscard]] inline std::optional<Value> errorOf(AreaSummary const& summary) {
  return summary.firstError ? std::optional(Value::error(*summary.firstError)) : std::nullopt;
}

[[nodiscard]] inline Totals addUp(Call const& call) {
  if (auto const* const followed = findFollowed(call, 0, call.count(), AreaAspect::Summary)) {
    AreaSummary const& summary = followed->getSummary();
    return {summary.sum, summary.numberCount, errorOf(summary)};
  }
  Totals totals;
  totals.error = visitNumbers(call, [&](double number, std::uint64_t times) {
    totals.sum += number * static_cast<double>(times);
    totals.count += times;
  });
  return totals;
}

/// How many numbers one list may have, which takes up to 128 MiB.
inline constexpr std::uint64_t mostNumbers = std::uint64_t{1} << 24U;

/// Adds a number to a list some times. Throws EvaluationLimitError for a list of more than
/// `mostNumbers`.
inline void addNumber(StepMeter& steps, std::vector<double>& numbers, double number,
                      std::uint64_t times) {
  steps.spend(times);
  checkElementCount(numbers.size() + times, mostNumbers);
  numbers.insert(numbers.end(), times, number);
}

/// The numbers of some arguments, those of a range or an array row by row; only the numbers of an
/// array's equal rows are grouped. Throws EvaluationLimitError for more than `mostNumbers`.
class NumberList {
public:
  NumberList(Call const& call, std::size_t first, std::size_t end,
             ElementRule rule = ElementRule::NumbersOnly)
      : _error(visitNumbers(
            call, first, end,
            [&](double number, std::uint64_t times) {
              addNumber(call.steps(), _numbers, number, times);
            },
            rule)) {}

  /// Set where an argument holds an error.
  [[nodiscard]] std::optional<Value> const& error() const noexcept { return _error; }
  [[nodiscard]] std::vector<double>& numbers() noexcept { return _numbers; }

private:
  std::vector<double> _numbers;
  std::optional<Value> _error;
};

/// The number at an index of the sorted list. Reorders the numbers.
[[nodiscard]] inline double selectAt(std::vector<double>& numbers, std::size_t index) {
  auto const at = numbers.begin() + static_cast<std::ptrdiff_t>(index);
  std::ranges::nth_element(numbers, at);
  return *at;
}

/// Numbers in their order, by index. Those of a list are selected from it, those of an area that is
/// kept up to date are known.
class NumbersInOrder {
public:
  /// Those of some arguments of a call.
  NumbersInOrder(Call const& call, std::size_t first, std::size_t end)
      : _followed(findFollowed(call, first, end, AreaAspect::Order)) {
    if (_followed == nullptr) {
      NumberList list(call, first, end);
      _numbers = std::move(list.numbers());
      _error = list.error();
    }
  }
  explicit NumbersInOrder(std::vector<double> numbers) noexcept : _numbers(std::move(numbers)) {}

  /// Set where an argument holds an error.
  [[nodiscard]] std::optional<Value> error() const {
    return _followed != nullptr ? errorOf(_followed->getSummary()) : _error;
  }
  [[nodiscard]] std::size_t size() const noexcept {
    return _followed != nullptr ? static_cast<std::size_t>(_followed->getSummary().numberCount)
                                : _numbers.size();
  }
  /// Requires an index below size(), as the next one does.
  [[nodiscard]] double at(std::size_t index) {
    return _followed != nullptr ? _followed->numberAt(index) : selectAt(_numbers, index);
  }
  /// The number at an index and the next one; requires that there is a next one.
  [[nodiscard]] std::pair<double, double> pairAt(std::size_t index) {
    double const lower = at(index);
    if (_followed != nullptr) {
      return {lower, at(index + 1)};
    }
    auto const rest = _numbers.begin() + static_cast<std::ptrdiff_t>(index) + 1;
    return {lower, *std::min_element(rest, _numbers.end())};
  }

private:
  FollowedArea const* _followed = nullptr;
  std::vector<double> _numbers;  ///< unless they are those of a followed area
  std::optional<Value> _error;
};

/// A function of the numbers of all arguments.
template <Value (*finish)(std::vector<double>& numbers),
          ElementRule rule = ElementRule::NumbersOnly>
Value reduceNumbers(Call& call) {
  NumberList list(call, 0, call.count(), rule);
  return list.error() ? *list.error() : finish(list.numbers());
}

}  // namespace Zorv::Formulas
