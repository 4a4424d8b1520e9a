#pragma once

#include <optional>
#include <string>

#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/NumberFormatCode.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

/// A serial number in a date or time section; nothing for a number outside the date system.
[[nodiscard]] std::optional<std::string> writeDateTime(Section const& section, double serial,
                                                       LocaleContext const& locale);

}  // namespace Zorv::OfficeUtils::NumberFormatCode
