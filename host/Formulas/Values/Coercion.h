#pragma once

#include <cstdint>
#include <string_view>

#include "Formulas/Values/Outcome.h"
#include "Formulas/Values/Value.h"
#include "OfficeUtils/LocaleContext.h"

/// Conversions of single values to another kind, as operators and functions do them.
namespace Zorv::Formulas {

/// Numbers as they are, truth values as 1 and 0, empties as 0, texts that read as a number as that
/// one, other texts as `#VALUE!`.
[[nodiscard]] Outcome<double> toNumber(Value const& value,
                                       OfficeUtils::LocaleContext const& locale);

/// The steps of reading a number, a date or a time from a text.
[[nodiscard]] constexpr std::uint64_t stepsOfReading(std::string_view text) noexcept {
  constexpr std::uint64_t least = 32;
  return least + text.size();
}

/// Truth values as they are, numbers by whether they are not 0, empties as false, the words TRUE
/// and FALSE as what they say, other texts as `#VALUE!`.
[[nodiscard]] Outcome<bool> toTruth(Value const& value);

}  // namespace Zorv::Formulas
