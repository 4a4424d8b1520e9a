#pragma once

#include <chrono>
#include <cstdint>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/Export.h"
#include "Utils/FloatNumber.h"

namespace Zorv::OfficeUtils {

/// A calendar date and time, read from a serial date-time number under a locale's date system.
///
/// The serial number counts days; its fraction is the time of day. A plain value of a few words:
/// no operation but getNow() costs more than some tens of nanoseconds, or allocates.
class ZORV_HOST_EXPORT DateTime {
public:
  /// Any double is accepted. One that is no day of the date system (negative, past the year 9999,
  /// NaN; see SerialDate) has the week and the month -1, which are next to those of no real date.
  DateTime(FloatNumber serial, LocaleContext const& locale);

  /// The current moment in a time zone, by the clock in force, or as a scope pins
  /// it; see Clock and PinnedMoment.
  [[nodiscard]] static DateTime getNow(DOM::TimeZone const& timeZone, LocaleContext const& locale);

  /// What clocks in a time zone show at a moment.
  [[nodiscard]] static DateTime fromMoment(Clock::TimePoint moment, DOM::TimeZone const& timeZone,
                                           LocaleContext const& locale);

  /// The serial number of the date, without its time of day, on the scale of cell numbers.
  [[nodiscard]] FloatNumber calculateDays() const noexcept;

  /// The serial number with its time of day.
  [[nodiscard]] FloatNumber getSerial() const noexcept;

  /// The week within the year, from 1: week 1 holds 1 January, and a new week begins on the
  /// locale's first day of the week.
  [[nodiscard]] int getYearWeek() const noexcept;

  /// The month, from 1 to 12.
  [[nodiscard]] int getMonth() const noexcept;

  /// The same, with its week and its month read already: for one that is asked for them often.
  [[nodiscard]] DateTime withCalendarRead() const noexcept;

private:
  static constexpr std::int8_t notRead = 0;

  FloatNumber _serial;
  DateSystem _dateSystem;
  std::chrono::weekday _firstDayOfWeek;
  std::int8_t _yearWeek = notRead;
  std::int8_t _month = notRead;
};

}  // namespace Zorv::OfficeUtils
