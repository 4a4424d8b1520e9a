#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "OfficeUtils/NumberFormatCode.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

/// The sections of a number format's text, from one to four; nothing where the text is no format.
[[nodiscard]] std::optional<std::vector<Section>> parseNumberFormat(std::string_view code);

}  // namespace Zorv::OfficeUtils::NumberFormatCode
