#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace Zorv::OfficeUtils {

/// Order of the parts in a numeric date.
enum class DateOrder : std::uint8_t { MonthDayYear, DayMonthYear, YearMonthDay };

/// Month and weekday names of a locale, in UTF-8, and the form of its numeric dates.
struct DateNames {
  std::array<std::string, 12> months;
  std::array<std::string, 12> shortMonths;
  std::array<std::string, 7> weekdays;  ///< from Sunday
  std::array<std::string, 7> shortWeekdays;
  std::array<std::string, 2> halvesOfDay;  ///< before and after noon
  DateOrder order = DateOrder::MonthDayYear;
  bool hasDots = false;                    ///< numeric dates separate their parts by dots
  std::string shortDateCode = "m/d/yyyy";  ///< number format of numeric dates

  /// For each letter from a to z, a bit set of the lengths of the ASCII names that begin with it.
  std::array<std::uint32_t, 26> lengthsByInitial{};

  /// False only if the word is no name of a month or a weekday, ignoring case. Rejects most other
  /// words by their first letter and length.
  [[nodiscard]] bool mayName(std::string_view word) const noexcept;

  /// The names of a locale, by its BCP 47 tag or ICU name; English names for an unknown one.
  /// Created on first use and valid for the life of the process. Threads: may be called
  /// concurrently.
  [[nodiscard]] static DateNames const& of(std::string const& localeName);
};

}  // namespace Zorv::OfficeUtils
