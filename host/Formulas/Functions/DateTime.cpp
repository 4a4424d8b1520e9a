// Dates, as serial day numbers.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <optional>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "OfficeUtils/DateTime.h"
#include "OfficeUtils/SerialDate.h"

namespace Zorv::Formulas {

namespace {

namespace SerialDate = OfficeUtils::SerialDate;
using SerialDate::CivilDate;

Value today(Call& call) { return Value::number(call.evaluator().now().calculateDays().get()); }
Value now(Call& call) { return Value::number(call.evaluator().now().getSerial().get()); }

/// A whole number that calendars can count with, or nothing.
std::optional<long long> toWhole(double number) noexcept {
  constexpr double largest = 1e7;
  double const whole = std::floor(number);
  return std::abs(whole) <= largest ? std::optional(static_cast<long long>(whole)) : std::nullopt;
}

Value fromSerial(std::optional<long> serial) {
  return serial ? Value::number(static_cast<double>(*serial)) : notANumber();
}

/// DATE(year, month, day): months and days may lie outside the calendar; a year below the first one
/// of the date system counts from 1900.
Value date(Call& call) {
  auto year = toWhole(call.number(0));
  auto const month = toWhole(call.number(1));
  auto const day = toWhole(call.number(2));
  if (!year || !month || !day || *year < 0) {
    return notANumber();
  }
  constexpr long long century = 1900;
  long long const fullYear = *year < century ? *year + century : *year;
  return fromSerial(SerialDate::toSerial(fullYear, *month, *day, call.locale().getDateSystem()));
}

/// A part of the date of a serial number.
template <class Part>
Value partOfDate(Call const& call, Part const& part) {
  auto const civil = SerialDate::toCivilDate(call.number(0), call.locale().getDateSystem());
  return civil ? Value::number(static_cast<double>(part(*civil))) : notANumber();
}

Value year(Call& call) {
  return partOfDate(call, [](CivilDate const& civil) { return civil.year; });
}
Value month(Call& call) {
  return partOfDate(call, [](CivilDate const& civil) { return civil.month; });
}
Value day(Call& call) {
  return partOfDate(call, [](CivilDate const& civil) { return civil.day; });
}

/// Which weekday has the number 1, and what number it really gets, by WEEKDAY's second argument.
struct WeekNumbering {
  unsigned firstDay = 0;  ///< counted from Sunday, which is 0
  unsigned firstNumber = 1;
};

std::optional<WeekNumbering> toWeekNumbering(double kind) noexcept {
  constexpr double firstOfLongKinds = 11.0;
  constexpr double lastOfLongKinds = 17.0;
  double const whole = std::floor(kind);
  if (whole == 1.0) {
    return WeekNumbering{0, 1};
  }
  if (whole == 2.0) {
    return WeekNumbering{1, 1};
  }
  if (whole == 3.0) {
    return WeekNumbering{1, 0};
  }
  if (whole < firstOfLongKinds || whole > lastOfLongKinds) {
    return std::nullopt;
  }
  // 11 begins on Monday, 17 on Sunday.
  return WeekNumbering{static_cast<unsigned>(whole - firstOfLongKinds + 1.0) % 7, 1};
}

/// WEEKDAY(date, kind)
Value weekday(Call& call) {
  OfficeUtils::DateSystem const system = call.locale().getDateSystem();
  auto const serial = SerialDate::toDay(call.number(0), system);
  auto const numbering = toWeekNumbering(call.number(1, 1.0));
  if (!serial || !numbering) {
    return notANumber();
  }
  unsigned const fromSunday = SerialDate::getWeekday(*serial, system).c_encoding();
  unsigned const number = (fromSunday + 7 - numbering->firstDay) % 7 + numbering->firstNumber;
  return Value::number(number);
}

/// The date some months from another, moved by `months`.
struct MovedMonth {
  long long year = 0;
  long long month = 0;
  unsigned day = 0;
  unsigned dayCount = 0;
};

std::optional<MovedMonth> moveMonths(Call const& call) {
  OfficeUtils::DateSystem const system = call.locale().getDateSystem();
  auto const civil = SerialDate::toCivilDate(call.number(0), system);
  auto const offset = toWhole(std::trunc(call.number(1)));
  if (!civil || !offset) {
    return std::nullopt;
  }
  long long const months =
      static_cast<long long>(civil->year) * SerialDate::monthsPerYear + civil->month - 1 + *offset;
  if (months < 0) {
    return std::nullopt;
  }
  MovedMonth moved{months / SerialDate::monthsPerYear, months % SerialDate::monthsPerYear + 1,
                   civil->day, 0};
  moved.dayCount = SerialDate::getDaysInMonth(static_cast<int>(moved.year),
                                              static_cast<unsigned>(moved.month), system);
  return moved;
}

/// EDATE(date, months): the same day of another month, or its last one.
Value sameDayOfMonth(Call& call) {
  auto const moved = moveMonths(call);
  if (!moved) {
    return notANumber();
  }
  return fromSerial(SerialDate::toSerial(moved->year, moved->month,
                                         std::min(moved->day, moved->dayCount),
                                         call.locale().getDateSystem()));
}

/// EOMONTH(date, months): the last day of another month.
Value lastDayOfMonth(Call& call) {
  auto const moved = moveMonths(call);
  if (!moved) {
    return notANumber();
  }
  return fromSerial(SerialDate::toSerial(moved->year, moved->month, moved->dayCount,
                                         call.locale().getDateSystem()));
}

}  // namespace

std::span<FunctionEntry const> dateTimeFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"DATE",
                    "year:n, month:n, day:n",
                    date,
                    "Date; months and days beyond their limits carry over.",
                    {.givesDate = true}},
      FunctionEntry{"DAY", "date:n", day, "Day of the month, from 1 to 31."},
      FunctionEntry{"EDATE",
                    "date:n, months:n",
                    sameDayOfMonth,
                    "Same day some months later or earlier.",
                    {.givesDate = true}},
      FunctionEntry{"EOMONTH",
                    "date:n, months:n",
                    lastDayOfMonth,
                    "Last day of the month some months later or earlier.",
                    {.givesDate = true}},
      FunctionEntry{"MONTH", "date:n", month, "Month, from 1 to 12."},
      FunctionEntry{
          "NOW", "", now, "Current date and time.", {.isVolatile = true, .givesDate = true}},
      FunctionEntry{"TODAY", "", today, "Current date.", {.isVolatile = true, .givesDate = true}},
      FunctionEntry{"WEEKDAY", "date:n, [kind:n]", weekday,
                    "Day of the week; the kind says which day is the first."},
      FunctionEntry{"YEAR", "date:n", year, "Year."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
