#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace Zorv::OfficeUtils {

/// The order in which dates of figures are written.
enum class DateOrder : std::uint8_t { MonthDayYear, DayMonthYear, YearMonthDay };

/// The words of a locale's dates, in UTF-8, and the order of their parts.
struct DateNames {
  std::array<std::string, 12> months;
  std::array<std::string, 12> shortMonths;
  std::array<std::string, 7> weekdays;  ///< from Sunday on
  std::array<std::string, 7> shortWeekdays;
  std::array<std::string, 2> halvesOfDay;  ///< before and after noon
  DateOrder order = DateOrder::MonthDayYear;
  bool hasDots = false;  ///< dots stand between the parts of dates of figures

  /// Those of a locale by its BCP 47 tag or ICU name; English ones for an unknown name. Made at the
  /// first use and kept as long as the process lives. Safe to call from several threads.
  [[nodiscard]] static DateNames const& of(std::string const& localeName);
};

}  // namespace Zorv::OfficeUtils
