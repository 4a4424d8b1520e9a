#pragma once

#include <string>

#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/NumberFormatCode.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

/// A number that is not negative in a section of numbers.
[[nodiscard]] std::string writeNumber(Section const& section, double number,
                                      LocaleContext const& locale);

/// A number that is not negative in general format, as a cell of ordinary width shows it: at most
/// eleven characters, in scientific notation where that takes fewer.
[[nodiscard]] std::string writeGeneral(double number, LocaleContext const& locale);

}  // namespace Zorv::OfficeUtils::NumberFormatCode
