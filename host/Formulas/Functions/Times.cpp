// Times of day, the fractions of serial day numbers.

#include <array>
#include <cmath>
#include <optional>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "OfficeUtils/SerialDate.h"

namespace Zorv::Formulas {

namespace {

constexpr long secondsPerMinute = 60;
constexpr long secondsPerHour = 3600;
constexpr long secondsPerDay = 86400;
constexpr long hoursPerDay = 24;

/// The nearest second within the day of a serial number; nothing for a number that is no day.
std::optional<long> toSecondOfDay(Call const& call) {
  double const serial = call.number(0);
  auto const day = OfficeUtils::SerialDate::toDay(serial, call.locale().getDateSystem());
  if (!day) {
    return std::nullopt;
  }
  double const seconds = std::round((serial - std::floor(serial)) * secondsPerDay);
  return static_cast<long>(seconds) % secondsPerDay;
}

/// A part of the time of day: how often `unit` fits into it, beyond whole multiples of `count`.
Value partOfTime(Call const& call, long unit, long count) {
  auto const second = toSecondOfDay(call);
  return second ? Value::number(static_cast<double>(*second / unit % count))
                : Value::error(FormulaErrorCode::Number);
}

Value hour(Call& call) { return partOfTime(call, secondsPerHour, hoursPerDay); }
Value minute(Call& call) { return partOfTime(call, secondsPerMinute, secondsPerMinute); }
Value second(Call& call) { return partOfTime(call, 1, secondsPerMinute); }

/// TIME(hour, minute, second): each may lie outside the clock; days beyond the first are left out.
Value time(Call& call) {
  constexpr double largest = 32767.0;
  double const hours = std::trunc(call.number(0));
  double const minutes = std::trunc(call.number(1));
  double const seconds = std::trunc(call.number(2));
  double const total = hours * secondsPerHour + minutes * secondsPerMinute + seconds;
  if (hours > largest || minutes > largest || seconds > largest || total < 0.0) {
    return Value::error(FormulaErrorCode::Number);
  }
  return Value::number(std::fmod(total, secondsPerDay) / secondsPerDay);
}

}  // namespace

std::span<FunctionEntry const> timeFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"HOUR", "time:n", hour, "Hour, from 0 to 23."},
      FunctionEntry{"MINUTE", "time:n", minute, "Minute, from 0 to 59."},
      FunctionEntry{"SECOND", "time:n", second, "Second, from 0 to 59."},
      FunctionEntry{"TIME", "hour:n, minute:n, second:n", time,
                    "Time of day as a fraction of a day."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
