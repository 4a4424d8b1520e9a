#pragma once

#include <optional>
#include <string>

#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/NumberFormatCode.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

/// A number in a number section. Requires `number >= 0`.
[[nodiscard]] std::string writeNumber(Section const& section, double number,
                                      LocaleContext const& locale);

/// A number in general format, as a cell of ordinary width shows it: at most eleven characters, in
/// scientific notation where that is shorter. Requires `number >= 0`.
[[nodiscard]] std::string writeGeneral(double number, LocaleContext const& locale);

/// The same in at most so many characters: with fewer decimals, or else in scientific notation.
/// Nothing where the number does not fit. From eleven characters on it is the ordinary form.
[[nodiscard]] std::optional<std::string> writeGeneral(double number, LocaleContext const& locale,
                                                      unsigned mostCharacters);

}  // namespace Zorv::OfficeUtils::NumberFormatCode
