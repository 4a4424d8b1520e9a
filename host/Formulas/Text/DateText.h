#pragma once

#include <optional>
#include <string_view>

#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// A moment as a text gives it: a day, a time of day, or both.
struct MomentText {
  std::optional<long> day;     ///< a serial number
  std::optional<double> time;  ///< in days; may be more than one

  [[nodiscard]] double serial() const noexcept {
    return static_cast<double>(day.value_or(0)) + time.value_or(0.0);
  }
};

/// Reads a date, a time, or a date and a time behind it, in the forms that people type:
/// `2024-01-30`, `1/30/2024` in the locale's order, `30 Jan 2024`, `January 30, 2024`, `Jan 2024`;
/// `18:45`, `6:45:30 PM`, `6 pm`. Years of two digits lie between 1930 and 2029. A date without a
/// year needs the current one. Nothing for other texts and for days that do not exist.
[[nodiscard]] std::optional<MomentText> readMoment(std::string_view text,
                                                   OfficeUtils::LocaleContext const& locale,
                                                   std::optional<int> currentYear);

}  // namespace Zorv::Formulas
