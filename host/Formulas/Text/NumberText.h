#pragma once

#include <optional>
#include <string_view>

#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// The number that a text reads as under a locale: digits with the locale's separators, a sign, an
/// exponent, a percent sign; spaces around it do not matter. Nothing for other texts.
[[nodiscard]] std::optional<double> readNumber(std::string_view text,
                                               OfficeUtils::LocaleContext const& locale);

}  // namespace Zorv::Formulas
