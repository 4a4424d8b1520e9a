#pragma once

#include <string>
#include <string_view>

#include "DOM/Cell.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Tool {

/// Whether a number format shows dates or times: it has a date or time code outside quoted text and
/// bracketed colours and conditions (ISO/IEC 29500-1, 18.8.31).
[[nodiscard]] bool showsDates(std::string_view formatCode) noexcept;

/// A cell's value as one text. Numbers are in general format, or like `2026-11-21` and
/// `2026-11-21 13:30:00` if the cell's number format shows dates.
[[nodiscard]] std::string toText(DOM::Cell const& cell, OfficeUtils::LocaleContext const& locale);

}  // namespace Zorv::Tool
