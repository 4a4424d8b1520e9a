#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "Formulas/Evaluation/Coercion.h"
#include "Formulas/Evaluation/Elements.h"
#include "Formulas/Functions/Call.h"

namespace Zorv::Formulas {

/// Hands the numbers among some arguments of a call to `take(double)`. In ranges and arrays only
/// numbers count; an argument that is a single value is converted. The first error ends the walk
/// and is returned.
template <class Take>
[[nodiscard]] std::optional<Value> visitNumbers(Call const& call, std::size_t first,
                                                std::size_t end, Take&& take) {
  std::optional<Value> error;
  auto const visit = [&](Value const& element) {
    if (element.isNumber()) {
      take(element.asNumber());
    } else if (element.isError()) {
      error = element;
    }
    return !error;
  };
  for (std::size_t i = first; i < end && !error; ++i) {
    if (!call[i].isSingle()) {
      forEachElement(call[i], visit);
      continue;
    }
    auto const number = toNumber(call[i], call.locale());
    if (number.isError()) {
      return number.error();
    }
    take(*number);
  }
  return error;
}

/// The numbers of all arguments from one on.
template <class Take>
[[nodiscard]] std::optional<Value> visitNumbers(Call const& call, Take&& take) {
  return visitNumbers(call, 0, call.count(), take);
}

/// The numbers of some arguments, in the order in which they stand.
class NumberList {
public:
  NumberList(Call const& call, std::size_t first, std::size_t end)
      : _error(visitNumbers(call, first, end,
                            [this](double number) { _numbers.push_back(number); })) {}

  /// Set where an argument holds an error.
  [[nodiscard]] std::optional<Value> const& error() const noexcept { return _error; }
  [[nodiscard]] std::vector<double>& numbers() noexcept { return _numbers; }

private:
  std::vector<double> _numbers;
  std::optional<Value> _error;
};

}  // namespace Zorv::Formulas
