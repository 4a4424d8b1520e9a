#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

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

  /// By a letter, from a to z: the lengths of the names of months and weekdays that begin with it,
  /// one bit for each; of those in ASCII.
  std::array<std::uint32_t, 26> lengthsByInitial{};

  /// Whether a word may be the name of a month or of a weekday, without regard to letter case.
  /// Tells most other words without a look at the names.
  [[nodiscard]] bool mayName(std::string_view word) const noexcept;

  /// Those of a locale by its BCP 47 tag or ICU name; English ones for an unknown name. Made at the
  /// first use and kept as long as the process lives. Safe to call from several threads.
  [[nodiscard]] static DateNames const& of(std::string const& localeName);
};

}  // namespace Zorv::OfficeUtils
