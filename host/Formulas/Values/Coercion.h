#pragma once

#include "Formulas/Values/Outcome.h"
#include "Formulas/Values/Value.h"
#include "OfficeUtils/LocaleContext.h"

/// Conversions of single values to another kind, as operators and functions do them.
namespace Zorv::Formulas {

/// Numbers as they are, truth values as 1 and 0, empties as 0, texts that read as a number as that
/// one, other texts as `#VALUE!`.
[[nodiscard]] Outcome<double> toNumber(Value const& value,
                                       OfficeUtils::LocaleContext const& locale);

/// Truth values as they are, numbers by whether they are not 0, empties as false, the words TRUE
/// and FALSE as what they say, other texts as `#VALUE!`.
[[nodiscard]] Outcome<bool> toTruth(Value const& value);

}  // namespace Zorv::Formulas
