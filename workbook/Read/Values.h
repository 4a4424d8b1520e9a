#pragma once

#include <optional>
#include <string_view>

#include "OfficeUtils/LocaleContext.h"

/// The simple types of workbook files.
namespace Zorv::Workbook {

/// A finite number, spaces around it aside; nothing for any other text.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text) noexcept;
/// A whole number, spaces around it aside; nothing for any other text.
[[nodiscard]] std::optional<long> parseInteger(std::string_view text) noexcept;
/// `1`, `true`, `on`, and their opposites.
[[nodiscard]] std::optional<bool> parseBoolean(std::string_view text) noexcept;

/// The serial number of a date, a time, or both, by ISO 8601 (`2020-05-17T12:30:00`); nothing for
/// any other text. A time alone is a fraction of a day. A shift from universal time is not looked
/// at: cells hold what the clock shows.
[[nodiscard]] std::optional<double> parseIsoDate(std::string_view text,
                                                 OfficeUtils::DateSystem dateSystem) noexcept;

}  // namespace Zorv::Workbook
