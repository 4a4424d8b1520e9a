// Weeks of dates and what lies between two dates.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Text/Texts.h"
#include "OfficeUtils/SerialDate.h"

namespace Zorv::Formulas {

namespace {

namespace SerialDate = OfficeUtils::SerialDate;
using OfficeUtils::DateSystem;
using SerialDate::CivilDate;

constexpr long daysPerWeek = 7;
/// The serial number of a 1 January, which may lie outside the date system.
long toNewYear(int year, DateSystem system) noexcept {
  return SerialDate::toSerial(std::chrono::sys_days(std::chrono::year(year) / 1 / 1), system);
}

/// The week of the standard ISO 8601: it begins on Monday and belongs to the year of its Thursday.
long toIsoWeek(long day, DateSystem system) noexcept {
  constexpr long thursday = 4;
  auto const civil = SerialDate::toCivilDate(static_cast<double>(day), system);
  int year = civil ? civil->year : 0;
  long const middle =
      day + thursday - static_cast<long>(SerialDate::getWeekday(day, system).iso_encoding());
  if (middle < toNewYear(year, system)) {
    --year;
  } else if (middle >= toNewYear(year + 1, system)) {
    ++year;
  }
  return (middle - toNewYear(year, system)) / daysPerWeek + 1;
}

/// The day on which weeks begin, by WEEKNUM's second argument.
std::optional<std::chrono::weekday> toFirstDay(double kind) noexcept {
  constexpr double firstOfLongKinds = 11.0;
  constexpr double lastOfLongKinds = 17.0;
  double const whole = std::trunc(kind);
  if (whole == 1.0) {
    return std::chrono::Sunday;
  }
  if (whole == 2.0) {
    return std::chrono::Monday;
  }
  if (whole < firstOfLongKinds || whole > lastOfLongKinds) {
    return std::nullopt;
  }
  return std::chrono::Monday + std::chrono::days(static_cast<int>(whole - firstOfLongKinds));
}

/// WEEKNUM(date, kind)
Value weekNumber(Call& call) {
  constexpr double isoKind = 21.0;
  DateSystem const system = call.locale().getDateSystem();
  auto const day = SerialDate::toDay(call.number(0), system);
  double const kind = call.number(1, 1.0);
  if (day && std::trunc(kind) == isoKind) {
    return Value::number(static_cast<double>(toIsoWeek(*day, system)));
  }
  auto const firstDay = toFirstDay(kind);
  return day && firstDay ? Value::number(SerialDate::getYearWeek(*day, system, *firstDay))
                         : notANumber();
}

Value isoWeekNumber(Call& call) {
  DateSystem const system = call.locale().getDateSystem();
  auto const day = SerialDate::toDay(call.number(0), system);
  return day ? Value::number(static_cast<double>(toIsoWeek(*day, system))) : notANumber();
}

/// Two dates, both by the calendar and as serial numbers.
struct Span {
  CivilDate start;
  CivilDate end;
  long startDay = 0;
  long endDay = 0;
  DateSystem system = DateSystem::Since1900;

  [[nodiscard]] Span reversed() const noexcept { return {end, start, endDay, startDay, system}; }
};

/// The dates of two serial numbers; nothing where one is no day of the date system.
std::optional<Span> toSpan(double start, double end, DateSystem system) noexcept {
  auto const startDay = SerialDate::toDay(start, system);
  auto const endDay = SerialDate::toDay(end, system);
  if (!startDay || !endDay) {
    return std::nullopt;
  }
  return Span{*SerialDate::toCivilDate(start, system), *SerialDate::toCivilDate(end, system),
              *startDay, *endDay, system};
}

/// The complete months. Requires dates in order.
long countMonths(Span const& span) noexcept {
  long const months = (span.end.year - span.start.year) * SerialDate::monthsPerYear +
                      static_cast<long>(span.end.month) - static_cast<long>(span.start.month);
  return span.end.day < span.start.day ? months - 1 : months;
}

/// The days left beside complete months. The month before the end lends its days; where it is
/// shorter than the start's day of the month, the result may be below zero.
long countDaysBesideMonths(Span const& span) noexcept {
  long const days = static_cast<long>(span.end.day) - static_cast<long>(span.start.day);
  if (days >= 0) {
    return days;
  }
  bool const isJanuary = span.end.month == 1;
  int const year = isJanuary ? span.end.year - 1 : span.end.year;
  unsigned const month = isJanuary ? SerialDate::monthsPerYear : span.end.month - 1;
  return days + static_cast<long>(SerialDate::getDaysInMonth(year, month, span.system));
}

/// The days as if both dates lay less than a year apart.
long countDaysBesideYears(Span const& span) noexcept {
  for (int const year : {span.start.year, span.start.year + 1}) {
    auto const end = SerialDate::toSerial(year, span.end.month, span.end.day, span.system);
    if (end && *end >= span.startDay) {
      return *end - span.startDay;
    }
  }
  return span.endDay - span.startDay;
}

/// The difference of two dates in a unit, by its name; nothing for an unknown unit.
std::optional<long> countUnits(Span const& span, std::string_view unit) noexcept {
  if (equalTexts(unit, "D")) {
    return span.endDay - span.startDay;
  }
  if (equalTexts(unit, "M")) {
    return countMonths(span);
  }
  if (equalTexts(unit, "Y")) {
    return countMonths(span) / SerialDate::monthsPerYear;
  }
  if (equalTexts(unit, "YM")) {
    return countMonths(span) % SerialDate::monthsPerYear;
  }
  if (equalTexts(unit, "MD")) {
    return countDaysBesideMonths(span);
  }
  return equalTexts(unit, "YD") ? std::optional(countDaysBesideYears(span)) : std::nullopt;
}

/// DATEDIF(start, end, unit)
Value difference(Call& call) {
  auto const span = toSpan(call.number(0), call.number(1), call.locale().getDateSystem());
  if (!span || span->startDay > span->endDay) {
    return notANumber();
  }
  auto const units = countUnits(*span, call.text(2));
  return units ? Value::number(static_cast<double>(*units)) : notANumber();
}

/// DAYS(end, start)
Value daysBetween(Call& call) {
  auto const span = toSpan(call.number(1), call.number(0), call.locale().getDateSystem());
  return span ? Value::number(static_cast<double>(span->endDay - span->startDay)) : notANumber();
}

constexpr unsigned daysPerEvenMonth = 30;
constexpr long daysPerEvenYear = 360;

bool isEndOfFebruary(CivilDate const& date, DateSystem system) noexcept {
  return date.month == 2 && date.day == SerialDate::getDaysInMonth(date.year, 2, system);
}

/// The days between dates of years of twelve months with 30 days each.
long countEvenDays(CivilDate const& start, CivilDate const& end) noexcept {
  return (end.year - start.year) * daysPerEvenYear +
         (static_cast<long>(end.month) - static_cast<long>(start.month)) * daysPerEvenMonth +
         static_cast<long>(end.day) - static_cast<long>(start.day);
}

/// By the European rule: a 31st counts as the 30th.
long countEuropeanDays(Span span) noexcept {
  span.start.day = std::min(span.start.day, daysPerEvenMonth);
  span.end.day = std::min(span.end.day, daysPerEvenMonth);
  return countEvenDays(span.start, span.end);
}

/// By the American rule: a start at the end of a month counts as the 30th, and then so does an end
/// on a 31st. Some count two ends of February as whole months apart.
long countAmericanDays(Span span, bool joinsEndsOfFebruary) noexcept {
  if (isEndOfFebruary(span.start, span.system)) {
    bool const areJoined = joinsEndsOfFebruary && isEndOfFebruary(span.end, span.system);
    span.end.day = areJoined ? daysPerEvenMonth : span.end.day;
    span.start.day = daysPerEvenMonth;
  }
  span.start.day = std::min(span.start.day, daysPerEvenMonth);
  if (span.start.day == daysPerEvenMonth) {
    span.end.day = std::min(span.end.day, daysPerEvenMonth);
  }
  return countEvenDays(span.start, span.end);
}

/// DAYS360(start, end, european)
Value daysOfEvenYear(Call& call) {
  auto const span = toSpan(call.number(0), call.number(1), call.locale().getDateSystem());
  if (!span) {
    return notANumber();
  }
  long const days =
      call.truth(2, false) ? countEuropeanDays(*span) : countAmericanDays(*span, false);
  return Value::number(static_cast<double>(days));
}

/// True where a 29 February lies between the dates or is one of them. Requires dates that are at
/// most a year apart.
bool holdsLeapDay(Span const& span) noexcept {
  for (int const year : {span.start.year, span.end.year}) {
    auto const leapDay = SerialDate::toSerial(year, 2, 29, span.system);
    if (SerialDate::getDaysInMonth(year, 2, span.system) == 29 && leapDay &&
        span.startDay <= *leapDay && *leapDay <= span.endDay) {
      return true;
    }
  }
  return false;
}

/// The days of the year by which actual days are divided: of the one year that holds both dates,
/// or the mean of all years that they touch.
double findYearLength(Span const& span) noexcept {
  constexpr double commonYear = 365.0;
  constexpr double leapYear = 366.0;
  auto const toDayOfYear = [](CivilDate const& date) { return std::pair(date.month, date.day); };
  bool const isWithinYear =
      span.end.year == span.start.year ||
      (span.end.year == span.start.year + 1 && toDayOfYear(span.end) <= toDayOfYear(span.start));
  if (isWithinYear && span.end.year != span.start.year) {
    return holdsLeapDay(span) ? leapYear : commonYear;
  }
  long const days =
      toNewYear(span.end.year + 1, span.system) - toNewYear(span.start.year, span.system);
  return static_cast<double>(days) / (span.end.year - span.start.year + 1);
}

/// YEARFRAC(start, end, basis): 0 even years by the American rule, 1 actual days of actual years,
/// 2 and 3 actual days of years of 360 and 365, 4 even years by the European rule.
std::optional<double> findYearFraction(Span const& span, double basis) noexcept {
  constexpr double evenYear = daysPerEvenYear;
  constexpr double commonYear = 365.0;
  auto const days = static_cast<double>(span.endDay - span.startDay);
  if (basis == 0.0) {
    return static_cast<double>(countAmericanDays(span, true)) / evenYear;
  }
  if (basis == 1.0) {
    return days / findYearLength(span);
  }
  if (basis == 2.0) {
    return days / evenYear;
  }
  if (basis == 3.0) {
    return days / commonYear;
  }
  return basis == 4.0 ? std::optional(static_cast<double>(countEuropeanDays(span)) / evenYear)
                      : std::nullopt;
}

Value yearFraction(Call& call) {
  auto const span = toSpan(call.number(0), call.number(1), call.locale().getDateSystem());
  if (!span) {
    return notANumber();
  }
  auto const fraction = findYearFraction(span->startDay <= span->endDay ? *span : span->reversed(),
                                         std::trunc(call.number(2, 0.0)));
  return fraction ? Value::number(*fraction) : notANumber();
}

}  // namespace

std::span<FunctionEntry const> dateSpanFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{
          "DATEDIF", "start:n, end:n, unit:t", difference,
          "Whole years (\"Y\"), months (\"M\") or days (\"D\") between two dates; \"MD\", "
          "\"YM\" and \"YD\" leave out the larger units."},
      FunctionEntry{"DAYS", "end:n, start:n", daysBetween, "Number of days between two dates."},
      FunctionEntry{"DAYS360", "start:n, end:n, [isEuropean:b]", daysOfEvenYear,
                    "Number of days between two dates in a year of twelve months with 30 days."},
      FunctionEntry{"ISOWEEKNUM", "date:n", isoWeekNumber,
                    "Number of the ISO 8601 week of a date."},
      FunctionEntry{
          "WEEKNUM", "date:n, [kind:n]", weekNumber,
          "Number of the week of a date in its year; the kind says on which day weeks begin."},
      FunctionEntry{"YEARFRAC", "start:n, end:n, [basis:n]", yearFraction,
                    "Fraction of a year between two dates, by one of five ways to count days."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
