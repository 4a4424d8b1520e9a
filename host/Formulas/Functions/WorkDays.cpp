// Days that are neither weekend nor holiday.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Values/Coercion.h"
#include "Formulas/Values/Elements.h"
#include "Formulas/Values/Outcome.h"
#include "OfficeUtils/SerialDate.h"

namespace Zorv::Formulas {

namespace {

namespace SerialDate = OfficeUtils::SerialDate;
using OfficeUtils::DateSystem;

constexpr long daysPerWeek = 7;

/// Which days of the week are free, from Monday on.
using Weekend = std::array<bool, daysPerWeek>;

constexpr Weekend saturdayAndSunday = {false, false, false, false, false, true, true};

/// A calendar of work days.
class WorkCalendar {
public:
  WorkCalendar(Weekend const& weekend, DateSystem system) noexcept
      : _weekend(weekend), _system(system) {}

  /// Takes the days that are free besides the weekends, in any order.
  void setHolidays(std::vector<long> holidays) {
    std::erase_if(holidays, [&](long day) { return isWeekend(day); });
    std::ranges::sort(holidays);
    holidays.erase(std::unique(holidays.begin(), holidays.end()), holidays.end());
    _holidays = std::move(holidays);
  }

  /// How many work days there are from one day to another, both counted.
  [[nodiscard]] long count(long first, long last) const noexcept {
    if (last < first) {
      return 0;
    }
    long const length = last - first + 1;
    long days = length / daysPerWeek * std::ranges::count(_weekend, false);
    for (long day = last - length % daysPerWeek + 1; day <= last; ++day) {
      days += isWeekend(day) ? 0 : 1;
    }
    return days -
           (std::ranges::upper_bound(_holidays, last) - std::ranges::lower_bound(_holidays, first));
  }

  /// The day that lies a number of work days from another one; nothing where it lies outside the
  /// date system.
  [[nodiscard]] std::optional<long> move(long start, double distance) const noexcept {
    if (distance == 0.0) {
      return start;
    }
    auto const day = distance > 0.0 ? findAfter(start, distance) : findBefore(start, -distance);
    return day ? SerialDate::toDay(static_cast<double>(*day), _system) : std::nullopt;
  }

private:
  /// Later than any day of the date systems.
  static constexpr long endOfDays = 3'000'000;

  [[nodiscard]] bool isWeekend(long day) const noexcept {
    return _weekend[SerialDate::getWeekday(day, _system).iso_encoding() - 1];
  }

  /// The first day up to which there are enough work days; their number never falls with the day.
  [[nodiscard]] std::optional<long> findAfter(long start, double distance) const noexcept {
    long low = start;
    long high = endOfDays;
    while (low + 1 < high) {
      long const middle = low + (high - low) / 2;
      bool const isEnough = static_cast<double>(count(start + 1, middle)) >= distance;
      (isEnough ? high : low) = middle;
    }
    return high == endOfDays ? std::nullopt : std::optional(high);
  }

  [[nodiscard]] std::optional<long> findBefore(long start, double distance) const noexcept {
    long low = -1;
    long high = start;
    while (low + 1 < high) {
      long const middle = low + (high - low) / 2;
      bool const isEnough = static_cast<double>(count(middle, start - 1)) >= distance;
      (isEnough ? low : high) = middle;
    }
    return low < 0 ? std::nullopt : std::optional(low);
  }

  Weekend _weekend;
  DateSystem _system;
  std::vector<long> _holidays;  ///< in order, each once, none on a weekend
};

/// A text such as `0000011`: a 1 for each free day, from Monday on.
Outcome<Weekend> readWeekendText(std::string_view text) noexcept {
  Weekend weekend{};
  if (text.size() != weekend.size() || text.find_first_not_of("01") != std::string_view::npos) {
    return FormulaErrorCode::Value;
  }
  std::ranges::transform(text, weekend.begin(), [](char digit) { return digit == '1'; });
  return weekend;
}

/// A number from 1, Saturday and Sunday, to 7, Friday and Saturday, or from 11, Sunday, to 17.
Outcome<Weekend> readWeekendNumber(double number) noexcept {
  constexpr double firstOfPairs = 1.0;
  constexpr double lastOfPairs = 7.0;
  constexpr double firstOfSingles = 11.0;
  constexpr double lastOfSingles = 17.0;
  constexpr std::size_t saturday = 5;
  constexpr std::size_t sunday = 6;
  double const kind = std::trunc(number);
  Weekend weekend{};
  if (firstOfPairs <= kind && kind <= lastOfPairs) {
    std::size_t const first = saturday + static_cast<std::size_t>(kind - firstOfPairs);
    weekend[first % weekend.size()] = true;
    weekend[(first + 1) % weekend.size()] = true;
    return weekend;
  }
  if (firstOfSingles <= kind && kind <= lastOfSingles) {
    std::size_t const day = sunday + static_cast<std::size_t>(kind - firstOfSingles);
    weekend[day % weekend.size()] = true;
    return weekend;
  }
  return FormulaErrorCode::Number;
}

Outcome<Weekend> readWeekend(Call const& call, std::size_t index) {
  if (!call.isGiven(index)) {
    return saturdayAndSunday;
  }
  if (call[index].isText()) {
    return readWeekendText(call[index].asText());
  }
  auto const number = toNumber(call[index], call.locale());
  return number.isError() ? Outcome<Weekend>(FormulaErrorCode::Value) : readWeekendNumber(*number);
}

/// Adds the holidays that an argument holds to a calendar; the error where one is no date.
std::optional<Value> readHolidays(Call const& call, std::size_t index, WorkCalendar& calendar) {
  if (!call.isGiven(index)) {
    return std::nullopt;
  }
  std::vector<long> holidays;
  std::optional<Value> error;
  forEachElement(call.steps(), call[index], [&](Value const& element) {
    if (element.isEmpty()) {
      return true;
    }
    auto const number = element.isBoolean() ? Outcome<double>(FormulaErrorCode::Value)
                                            : toNumber(element, call.locale());
    auto const day = SerialDate::toDay(*number, call.locale().getDateSystem());
    if (number.isError() || !day) {
      error = number.isError() ? number.error() : Value::error(FormulaErrorCode::Number);
      return false;
    }
    holidays.push_back(*day);
    return true;
  });
  call.steps().spend(stepsOfSort(holidays.size()));
  calendar.setHolidays(std::move(holidays));
  return error;
}

Value countWorkDays(Call const& call, Weekend const& weekend, std::size_t holidaysIndex) {
  DateSystem const system = call.locale().getDateSystem();
  WorkCalendar calendar(weekend, system);
  if (auto const error = readHolidays(call, holidaysIndex, calendar)) {
    return *error;
  }
  auto const start = SerialDate::toDay(call.number(0), system);
  auto const end = SerialDate::toDay(call.number(1), system);
  if (!start || !end) {
    return Value::error(FormulaErrorCode::Number);
  }
  long const days = *start <= *end ? calendar.count(*start, *end) : -calendar.count(*end, *start);
  return Value::number(static_cast<double>(days));
}

Value moveByWorkDays(Call const& call, Weekend const& weekend, std::size_t holidaysIndex) {
  DateSystem const system = call.locale().getDateSystem();
  WorkCalendar calendar(weekend, system);
  if (auto const error = readHolidays(call, holidaysIndex, calendar)) {
    return *error;
  }
  auto const start = SerialDate::toDay(call.number(0), system);
  auto const day = start ? calendar.move(*start, std::trunc(call.number(1))) : std::nullopt;
  return day ? Value::number(static_cast<double>(*day)) : Value::error(FormulaErrorCode::Number);
}

/// NETWORKDAYS(start, end, holidays): both days count; below zero where the end comes first.
Value workDaysBetween(Call& call) { return countWorkDays(call, saturdayAndSunday, 2); }

/// NETWORKDAYS.INTL(start, end, weekend, holidays)
Value workDaysBetweenWithWeekend(Call& call) {
  auto const weekend = readWeekend(call, 2);
  return weekend.isError() ? weekend.error() : countWorkDays(call, *weekend, 3);
}

/// WORKDAY(start, days, holidays)
Value workDay(Call& call) { return moveByWorkDays(call, saturdayAndSunday, 2); }

/// WORKDAY.INTL(start, days, weekend, holidays): there must be a day that is not free.
Value workDayWithWeekend(Call& call) {
  auto const weekend = readWeekend(call, 2);
  if (weekend.isError()) {
    return weekend.error();
  }
  bool const isAlwaysFree = std::ranges::count(*weekend, true) == daysPerWeek;
  return isAlwaysFree ? Value::error(FormulaErrorCode::Value) : moveByWorkDays(call, *weekend, 3);
}

}  // namespace

std::span<FunctionEntry const> workDayFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"NETWORKDAYS", "start:n, end:n, [holidays:a]", workDaysBetween,
                    "Number of working days between two dates, both included."},
      FunctionEntry{"NETWORKDAYS.INTL", "start:n, end:n, [weekend:v, holidays:a]",
                    workDaysBetweenWithWeekend,
                    "Number of working days between two dates, with a choice of the weekend."},
      FunctionEntry{"WORKDAY",
                    "start:n, days:n, [holidays:a]",
                    workDay,
                    "Date some working days later or earlier.",
                    {.givesDate = true}},
      FunctionEntry{"WORKDAY.INTL",
                    "start:n, days:n, [weekend:v, holidays:a]",
                    workDayWithWeekend,
                    "Date some working days later or earlier, with a choice of the weekend.",
                    {.givesDate = true}},
  };
  return entries;
}

}  // namespace Zorv::Formulas
