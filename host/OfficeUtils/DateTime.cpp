#include "OfficeUtils/DateTime.h"

#include "OfficeUtils/PinnedMoment.h"
#include "OfficeUtils/SerialDate.h"

namespace Zorv::OfficeUtils {

namespace {

// Conditions compare with the week or month before or after the current one. Both start at 1, so 0
// would match as the one before the first.
constexpr int noDate = -1;

}  // namespace

DateTime::DateTime(FloatNumber serial, LocaleContext const& locale)
    : _serial(serial),
      _dateSystem(locale.getDateSystem()),
      _firstDayOfWeek(locale.getFirstDayOfWeek()) {}

DateTime DateTime::getNow(DOM::TimeZone const& timeZone, LocaleContext const& locale) {
  auto* const pinned = PinnedMoment::getCurrent();
  return pinned != nullptr ? pinned->get().toDateTime(timeZone, locale)
                           : fromMoment(Clock::readCurrent(), timeZone, locale);
}

DateTime DateTime::fromMoment(Clock::TimePoint moment, DOM::TimeZone const& timeZone,
                              LocaleContext const& locale) {
  auto const local = timeZone.toLocal(moment);
  auto const day = std::chrono::floor<std::chrono::days>(local);
  long const days =
      SerialDate::toSerial(std::chrono::sys_days(day.time_since_epoch()), locale.getDateSystem());
  std::chrono::duration<double, std::chrono::days::period> const timeOfDay = local - day;
  return {FloatNumber(static_cast<double>(days) + timeOfDay.count()), locale};
}

FloatNumber DateTime::calculateDays() const noexcept { return floor(_serial); }

FloatNumber DateTime::getSerial() const noexcept { return _serial; }

int DateTime::getYearWeek() const noexcept {
  if (_yearWeek != notRead) {
    return _yearWeek;
  }
  auto const day = SerialDate::toDay(_serial.get(), _dateSystem);
  return day ? SerialDate::getYearWeek(*day, _dateSystem, _firstDayOfWeek) : noDate;
}

int DateTime::getMonth() const noexcept {
  if (_month != notRead) {
    return _month;
  }
  auto const date = SerialDate::toCivilDate(_serial.get(), _dateSystem);
  return date ? static_cast<int>(date->month) : noDate;
}

DateTime DateTime::withCalendarRead() const noexcept {
  DateTime read = *this;
  read._yearWeek = static_cast<std::int8_t>(getYearWeek());
  read._month = static_cast<std::int8_t>(getMonth());
  return read;
}

}  // namespace Zorv::OfficeUtils
