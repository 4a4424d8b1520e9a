#pragma once

#include <optional>
#include <string_view>

#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// The number that a text reads as where a number is wanted: a number (see readNumber()), an amount
/// of money such as `$1,000.50` or `(5)`, or a date or time (see readMoment()). Nothing for other
/// texts.
[[nodiscard]] std::optional<double> readValue(std::string_view text,
                                              OfficeUtils::LocaleContext const& locale,
                                              std::optional<int> currentYear = std::nullopt);

}  // namespace Zorv::Formulas
