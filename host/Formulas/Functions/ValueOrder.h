#pragma once

#include <compare>

#include "Formulas/Limits/StepMeter.h"
#include "Formulas/Values/Comparison.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// Orders single values of any kind, as sorting does: numbers, texts without regard to letter case,
/// truth values, errors, empties.
[[nodiscard]] inline std::weak_ordering orderValues(Value const& left,
                                                    Value const& right) noexcept {
  if (left.isEmpty() || right.isEmpty()) {
    return std::compare_three_way()(left.isEmpty(), right.isEmpty());
  }
  if (left.isError() && right.isError()) {
    return left.asError() <=> right.asError();
  }
  if (left.isError() || right.isError()) {
    return std::compare_three_way()(left.isError(), right.isError());
  }
  return compareValues(left, right);
}

/// The same, and counts the steps of the comparison.
[[nodiscard]] inline std::weak_ordering orderValues(StepMeter& steps, Value const& left,
                                                    Value const& right) {
  steps.spend(1 + stepsOfComparison(left, right));
  return orderValues(left, right);
}

}  // namespace Zorv::Formulas
