#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "OfficeUtils/NumberFormatCode.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

/// The one to four sections of a number format; nothing where the text is no number format.
[[nodiscard]] std::optional<std::vector<Section>> parseNumberFormat(std::string_view code);

}  // namespace Zorv::OfficeUtils::NumberFormatCode
