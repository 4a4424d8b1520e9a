#pragma once

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

}  // namespace Zorv::OfficeUtils::NumberFormatCode
