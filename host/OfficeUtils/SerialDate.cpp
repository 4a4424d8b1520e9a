#include "OfficeUtils/SerialDate.h"

#include <algorithm>
#include <cmath>

namespace Zorv::OfficeUtils::SerialDate {

namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

// The 1900 system counts from the day before 1 January 1900. Its serial 60 is no real day, so later
// serials are one higher than the days since then.
constexpr sys_days before1900 = 1899y / 12 / 31;
constexpr long phantomDay = 60;
constexpr CivilDate phantomDate{.year = 1900, .month = 2, .day = 29};
constexpr sys_days start1904 = 1904y / 1 / 1;

constexpr sys_days lastDate = 9999y / 12 / 31;
constexpr long lastDay1900 = (lastDate - before1900).count() + 1;
constexpr long lastDay1904 = (lastDate - start1904).count();

constexpr long getLastDay(DateSystem system) noexcept {
  return system == DateSystem::Since1904 ? lastDay1904 : lastDay1900;
}

CivilDate fromCalendar(sys_days day) noexcept {
  std::chrono::year_month_day const date(day);
  return {.year = static_cast<int>(date.year()),
          .month = static_cast<unsigned>(date.month()),
          .day = static_cast<unsigned>(date.day())};
}

CivilDate fromDay1900(long day) noexcept {
  if (day == 0) {
    return {.year = 1900, .month = 1, .day = 0};
  }
  if (day == phantomDay) {
    return phantomDate;
  }
  return fromCalendar(before1900 + std::chrono::days(day < phantomDay ? day : day - 1));
}

CivilDate fromDay(long day, DateSystem system) noexcept {
  return system == DateSystem::Since1904 ? fromCalendar(start1904 + std::chrono::days(day))
                                         : fromDay1900(day);
}

}  // namespace

std::optional<long> toDay(double serial, DateSystem system) noexcept {
  double const day = std::floor(serial);
  // False for a NaN.
  bool const isDay = day >= 0.0 && day <= static_cast<double>(getLastDay(system));
  return isDay ? std::optional(static_cast<long>(day)) : std::nullopt;
}

std::optional<CivilDate> toCivilDate(double serial, DateSystem system) noexcept {
  auto const day = toDay(serial, system);
  return day ? std::optional(fromDay(*day, system)) : std::nullopt;
}

long toSerial(sys_days day, DateSystem system) noexcept {
  if (system == DateSystem::Since1904) {
    return (day - start1904).count();
  }
  long const serial = (day - before1900).count();
  return serial < phantomDay ? serial : serial + 1;
}

std::optional<long> toSerial(long long year, long long month, long long day,
                             DateSystem system) noexcept {
  // Far outside any date, and small enough that the sums below cannot overflow.
  constexpr long long limit = 1'000'000'000;
  auto const isSmall = [](long long number) { return -limit < number && number < limit; };
  if (!isSmall(year) || !isSmall(month) || !isSmall(day)) {
    return std::nullopt;
  }
  long long const months = year * 12 + month - 1;
  long long const monthOfYear = (months % 12 + 12) % 12;
  long long const normalYear = (months - monthOfYear) / 12;
  if (normalYear < 0 || normalYear > static_cast<int>(std::chrono::year::max())) {
    return std::nullopt;
  }
  sys_days const firstOfMonth = std::chrono::year(static_cast<int>(normalYear)) /
                                std::chrono::month(static_cast<unsigned>(monthOfYear + 1)) / 1;
  long long const serial = toSerial(firstOfMonth, system) + day - 1;
  bool const isDay = 0 <= serial && serial <= getLastDay(system);
  return isDay ? std::optional(static_cast<long>(serial)) : std::nullopt;
}

unsigned getDaysInMonth(int year, unsigned month, DateSystem system) noexcept {
  if (system == DateSystem::Since1900 && year == phantomDate.year && month == phantomDate.month) {
    return phantomDate.day;
  }
  auto const lastDayOfMonth =
      std::chrono::year(year) / std::chrono::month(month) / std::chrono::last;
  return static_cast<unsigned>(lastDayOfMonth.day());
}

std::chrono::weekday getWeekday(long day, DateSystem system) noexcept {
  // Serial 0 is a Saturday in the 1900 system, and a Friday in the 1904 system.
  long const weekdayOfZero = system == DateSystem::Since1904 ? 5 : 6;
  return std::chrono::weekday(static_cast<unsigned>((day + weekdayOfZero) % 7));
}

int getYearWeek(long day, DateSystem system, std::chrono::weekday firstDayOfWeek) noexcept {
  int const year = fromDay(day, system).year;
  long const newYear = toSerial(sys_days(std::chrono::year(year) / 1 / 1), system);
  long const daysBefore = (getWeekday(newYear, system) - firstDayOfWeek).count();
  return static_cast<int>((std::max(day - newYear, 0L) + daysBefore) / 7) + 1;
}

}  // namespace Zorv::OfficeUtils::SerialDate
