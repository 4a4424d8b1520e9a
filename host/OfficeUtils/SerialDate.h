#pragma once

#include <chrono>
#include <optional>

#include "OfficeUtils/LocaleContext.h"
#include "Utils/Export.h"

/// Serial day numbers and the civil calendar.
///
/// A date system knows the days from its first serial number, 0, to 31 December 9999. Since 1900,
/// serial 60 is 29 February 1900, a day that never was, and serial 0 is told as 0 January 1900; the
/// serials of both systems run without gaps, and so do their weekdays (which is why those before
/// 1 March 1900 are one off the real ones). Safe to call from several threads.
namespace Zorv::OfficeUtils::SerialDate {

/// A day as the date system names it; month and day count from 1.
struct CivilDate {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;

  friend constexpr bool operator==(CivilDate const&, CivilDate const&) noexcept = default;
};

/// The whole part of a serial number when it is a day of the date system, otherwise nothing.
[[nodiscard]] ZORV_HOST_EXPORT std::optional<long> toDay(double serial, DateSystem system) noexcept;

/// The date of a serial number, whose time of day does not matter. Nothing for a number that is no
/// day of the date system (negative, past the year 9999, NaN).
[[nodiscard]] ZORV_HOST_EXPORT std::optional<CivilDate> toCivilDate(double serial,
                                                                    DateSystem system) noexcept;

/// The serial number of a date whose month and day may lie outside the calendar: month 13 is
/// January of the next year, day 0 the last day of the month before. Nothing when the result is no
/// day of the date system.
[[nodiscard]] ZORV_HOST_EXPORT std::optional<long> toSerial(long long year, long long month,
                                                            long long day,
                                                            DateSystem system) noexcept;

/// The serial number of a day of the real calendar; negative before the date system begins.
[[nodiscard]] ZORV_HOST_EXPORT long toSerial(std::chrono::sys_days day, DateSystem system) noexcept;

/// How many days a month has in the date system. Requires a month from 1 to 12.
[[nodiscard]] ZORV_HOST_EXPORT unsigned getDaysInMonth(int year, unsigned month,
                                                       DateSystem system) noexcept;

/// The weekday of a day of the date system, as toDay() gives it.
[[nodiscard]] ZORV_HOST_EXPORT std::chrono::weekday getWeekday(long day,
                                                               DateSystem system) noexcept;

/// The week within the year of a day of the date system, as toDay() gives it: week 1 holds
/// 1 January, and a new one begins on each `firstDayOfWeek`. 0 January 1900 lies in week 1.
[[nodiscard]] ZORV_HOST_EXPORT int getYearWeek(long day, DateSystem system,
                                               std::chrono::weekday firstDayOfWeek) noexcept;

}  // namespace Zorv::OfficeUtils::SerialDate
