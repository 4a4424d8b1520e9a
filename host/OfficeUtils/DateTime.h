#pragma once

#include <chrono>
#include <cstdint>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/Export.h"
#include "Utils/FloatNumber.h"

namespace Zorv::OfficeUtils {

/// Calendar date and time of a serial number in a locale's date system.
///
/// The serial number counts days; its fraction is the time of day. A small value. Cost: all
/// operations but getNow() take tens of nanoseconds at most and allocate nothing.
class ZORV_HOST_EXPORT DateTime {
public:
  /// Accepts any double. A number outside the date system (negative, after the year 9999, NaN; see
  /// SerialDate) has week -1 and month -1, which are not adjacent to those of any date.
  DateTime(FloatNumber serial, LocaleContext const& locale);

  /// The current moment in a time zone: the one that this thread has pinned, else that of the clock
  /// in force; see PinnedMoment and Clock.
  [[nodiscard]] static DateTime getNow(DOM::TimeZone const& timeZone, LocaleContext const& locale);

  /// The civil time of a time zone at a moment.
  [[nodiscard]] static DateTime fromMoment(Clock::TimePoint moment, DOM::TimeZone const& timeZone,
                                           LocaleContext const& locale);

  /// The serial number without its fraction.
  [[nodiscard]] FloatNumber calculateDays() const noexcept;

  /// The serial number with its fraction.
  [[nodiscard]] FloatNumber getSerial() const noexcept;

  /// The week of the year, from 1: week 1 contains 1 January, and weeks begin on the locale's first
  /// day of the week.
  [[nodiscard]] int getYearWeek() const noexcept;

  /// The month, from 1 to 12.
  [[nodiscard]] int getMonth() const noexcept;

  /// A copy with week and month computed in advance, for callers that ask for them often.
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
