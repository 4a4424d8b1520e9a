#pragma once

#include <algorithm>
#include <compare>
#include <cstdint>

#include "Formulas/Limits/StepMeter.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// Orders single values that are no errors, as comparisons and sorting do: numbers before texts
/// before truth values; texts without regard to letter case; an empty value as the zero, the empty
/// text or the false with which it is compared.
[[nodiscard]] std::strong_ordering compareValues(Value const& left, Value const& right) noexcept;

/// The steps of comparing the texts among two values; 0 where not both are texts.
[[nodiscard]] constexpr std::uint64_t stepsOfComparison(Value const& left,
                                                        Value const& right) noexcept {
  return left.isText() && right.isText()
             ? stepsOfBytes(std::min(left.asText().size(), right.asText().size()))
             : 0;
}

}  // namespace Zorv::Formulas
