#pragma once

#include <optional>
#include <string_view>

#include "OfficeUtils/LocaleContext.h"

/// Simple types of workbook files.
namespace Zorv::Workbook {

/// Parses a finite number, with spaces around it; nothing for any other text.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text) noexcept;
/// Parses a whole number, with spaces around it; nothing for any other text.
[[nodiscard]] std::optional<long> parseInteger(std::string_view text) noexcept;
/// Parses `1`, `true`, `on`, and their opposites.
[[nodiscard]] std::optional<bool> parseBoolean(std::string_view text) noexcept;

/// Parses a date, a time, or both by ISO 8601 (`2020-05-17T12:30:00`) into a serial number; nothing
/// for any other text. A time alone is a fraction of a day. An offset from universal time is
/// ignored: cells hold civil time.
[[nodiscard]] std::optional<double> parseIsoDate(std::string_view text,
                                                 OfficeUtils::DateSystem dateSystem) noexcept;

}  // namespace Zorv::Workbook
