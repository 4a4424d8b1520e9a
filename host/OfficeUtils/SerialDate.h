#pragma once

#include <chrono>
#include <optional>

#include "OfficeUtils/LocaleContext.h"
#include "Utils/Export.h"

/// Serial day numbers and the civil calendar.
///
/// A date system spans the days from serial number 0 to 31 December 9999. In the 1900 system,
/// serial 60 is 29 February 1900, which never existed, and serial 0 is 0 January 1900. Serials have
/// no gaps and weekdays follow each other, so weekdays before 1 March 1900 differ from the real
/// ones by one. Threads: may be called concurrently.
namespace Zorv::OfficeUtils::SerialDate {

inline constexpr int monthsPerYear = 12;  ///< of the civil calendar

/// Day as the date system names it; month and day from 1.
struct CivilDate {
  int year = 0;        ///< such as 2026
  unsigned month = 0;  ///< from 1
  unsigned day = 0;    ///< of the month, from 1

  friend constexpr bool operator==(CivilDate const&, CivilDate const&) noexcept = default;
};

/// The integer part of a serial number; nothing for a number outside the date system.
[[nodiscard]] ZORV_HOST_EXPORT std::optional<long> toDay(double serial, DateSystem system) noexcept;

/// The date of a serial number; its fraction is ignored. Nothing for a number outside the date
/// system (negative, after the year 9999, NaN).
[[nodiscard]] ZORV_HOST_EXPORT std::optional<CivilDate> toCivilDate(double serial,
                                                                    DateSystem system) noexcept;

/// The serial number of a date. Month and day may overflow: month 13 is January of the next year,
/// day 0 the last day of the month before. Nothing for a result outside the date system.
[[nodiscard]] ZORV_HOST_EXPORT std::optional<long> toSerial(long long year, long long month,
                                                            long long day,
                                                            DateSystem system) noexcept;

/// The serial number of a day of the civil calendar; negative before the date system begins.
[[nodiscard]] ZORV_HOST_EXPORT long toSerial(std::chrono::sys_days day, DateSystem system) noexcept;

/// The number of days of a month in the date system. Requires a month from 1 to 12.
[[nodiscard]] ZORV_HOST_EXPORT unsigned getDaysInMonth(int year, unsigned month,
                                                       DateSystem system) noexcept;

/// The weekday of a day that toDay() returned.
[[nodiscard]] ZORV_HOST_EXPORT std::chrono::weekday getWeekday(long day,
                                                               DateSystem system) noexcept;

/// The week of the year of a day that toDay() returned: week 1 contains 1 January, and weeks begin
/// on `firstDayOfWeek`. 0 January 1900 lies in week 1.
[[nodiscard]] ZORV_HOST_EXPORT int getYearWeek(long day, DateSystem system,
                                               std::chrono::weekday firstDayOfWeek) noexcept;

}  // namespace Zorv::OfficeUtils::SerialDate
