#include "OfficeUtils/NumberFormatDates.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "OfficeUtils/DateNames.h"
#include "OfficeUtils/SerialDate.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

namespace {

constexpr std::int64_t secondsPerMinute = 60;
constexpr std::int64_t secondsPerHour = 3600;
constexpr std::int64_t secondsPerDay = 86400;
constexpr std::size_t mostFractionDigits = 3;

bool isOfTime(Token const& token) noexcept { return token.kind >= TokenKind::Hour; }

/// The number of digits that a section shows of a second's fraction.
std::size_t countFractionDigits(Section const& section) noexcept {
  std::size_t count = 0;
  for (Token const& token : section.tokens) {
    if (token.kind == TokenKind::SecondFraction) {
      count = std::max(count, std::min(token.count, mostFractionDigits));
    }
  }
  return count;
}

/// Moment, rounded to the precision of a section.
struct Moment {
  SerialDate::CivilDate date;
  unsigned weekday = 0;             ///< 0 is Sunday
  std::int64_t elapsedSeconds = 0;  ///< since serial number 0
  std::int64_t fraction = 0;
  std::size_t fractionDigits = 0;

  [[nodiscard]] std::int64_t hour() const noexcept {
    return elapsedSeconds % secondsPerDay / secondsPerHour;
  }
  [[nodiscard]] std::int64_t minute() const noexcept {
    return elapsedSeconds % secondsPerHour / secondsPerMinute;
  }
  [[nodiscard]] std::int64_t second() const noexcept { return elapsedSeconds % secondsPerMinute; }
};

std::optional<Moment> toMoment(Section const& section, double serial, DateSystem system) {
  if (!SerialDate::toDay(serial, system)) {
    return std::nullopt;
  }
  Moment moment;
  moment.fractionDigits = countFractionDigits(section);
  auto const scale = static_cast<std::int64_t>(std::pow(10.0, moment.fractionDigits));
  // A format without a time does not round up to the next day.
  double const shown = std::ranges::any_of(section.tokens, isOfTime) ? serial : std::floor(serial);
  auto const units =
      static_cast<std::int64_t>(std::round(shown * static_cast<double>(secondsPerDay * scale)));
  moment.elapsedSeconds = units / scale;
  moment.fraction = units % scale;
  std::int64_t const day = moment.elapsedSeconds / secondsPerDay;
  auto const date = SerialDate::toCivilDate(static_cast<double>(day), system);
  if (!date) {
    return std::nullopt;
  }
  moment.date = *date;
  moment.weekday = SerialDate::getWeekday(static_cast<long>(day), system).c_encoding();
  return moment;
}

std::string pad(std::int64_t number, std::size_t width) {
  std::string text = std::to_string(number);
  return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

/// The first UTF-8 character of a name.
std::string takeInitial(std::string const& name) {
  constexpr unsigned continuationMask = 0xC0;
  constexpr unsigned continuation = 0x80;
  std::size_t length = std::min<std::size_t>(name.size(), 1);
  while (length < name.size() &&
         (static_cast<unsigned char>(name[length]) & continuationMask) == continuation) {
    ++length;
  }
  return name.substr(0, length);
}

/// DateWriter of one moment in the tokens of a section.
class DateWriter {
public:
  DateWriter(Section const& section, Moment const& moment, DateNames const& names) noexcept
      : _section(&section), _moment(&moment), _names(&names) {}

  [[nodiscard]] std::string write(LocaleContext const& locale) const {
    std::string text;
    for (Token const& token : _section->tokens) {
      text += token.kind == TokenKind::SecondFraction ? locale.getDecimalSeparator() : "";
      text += isOfTime(token) ? writeTime(token) : writeDate(token);
    }
    return text;
  }

private:
  [[nodiscard]] std::string writeDate(Token const& token) const {
    switch (token.kind) {
      case TokenKind::Year:
        return token.count <= 2 ? pad(_moment->date.year % 100, 2) : pad(_moment->date.year, 4);
      case TokenKind::Month:
        return writeMonth(token.count);
      case TokenKind::Day:
        return writeDay(token.count);
      default:
        return token.text;
    }
  }

  [[nodiscard]] std::string writeMonth(std::size_t count) const {
    constexpr std::size_t initial = 5;
    std::size_t const index = _moment->date.month - 1;
    if (count <= 2) {
      return pad(_moment->date.month, count);
    }
    if (count == initial) {
      return takeInitial(_names->months[index]);
    }
    return count == 3 ? _names->shortMonths[index] : _names->months[index];
  }

  [[nodiscard]] std::string writeDay(std::size_t count) const {
    if (count <= 2) {
      return pad(_moment->date.day, count);
    }
    return count == 3 ? _names->shortWeekdays[_moment->weekday]
                      : _names->weekdays[_moment->weekday];
  }

  [[nodiscard]] std::string writeTime(Token const& token) const {
    std::size_t const width = std::min<std::size_t>(token.count, 2);
    switch (token.kind) {
      case TokenKind::Hour:
        return pad(hourOfClock(), width);
      case TokenKind::Minute:
        return pad(_moment->minute(), width);
      case TokenKind::Second:
        return pad(_moment->second(), width);
      case TokenKind::SecondFraction:
        return writeFraction(token.count);
      case TokenKind::HalfOfDay:
        return writeHalf(token.text);
      case TokenKind::ElapsedHours:
        return pad(_moment->elapsedSeconds / secondsPerHour, token.count);
      case TokenKind::ElapsedMinutes:
        return pad(_moment->elapsedSeconds / secondsPerMinute, token.count);
      default:
        return pad(_moment->elapsedSeconds, token.count);
    }
  }

  /// The hour, from 1 to 12 if the section shows AM or PM, else from 0 to 23.
  [[nodiscard]] std::int64_t hourOfClock() const {
    constexpr std::int64_t half = 12;
    std::int64_t const hour = _moment->hour();
    bool const hasHalves = std::ranges::find(_section->tokens, TokenKind::HalfOfDay,
                                             &Token::kind) != _section->tokens.end();
    return hasHalves ? (hour + half - 1) % half + 1 : hour;
  }

  [[nodiscard]] std::string writeFraction(std::size_t count) const {
    std::string digits = pad(_moment->fraction, _moment->fractionDigits);
    digits.resize(count, '0');
    return digits;
  }

  /// `AM/PM` in the locale's words, `A/P` as written in the format.
  [[nodiscard]] std::string writeHalf(std::string_view written) const {
    constexpr std::int64_t noon = 12;
    bool const isAfternoon = _moment->hour() >= noon;
    if (written.size() == std::string_view("A/P").size()) {
      return std::string(written.substr(isAfternoon ? 2 : 0, 1));
    }
    return _names->halvesOfDay[isAfternoon ? 1 : 0];
  }

  Section const* _section;
  Moment const* _moment;
  DateNames const* _names;
};

}  // namespace

std::optional<std::string> writeDateTime(Section const& section, double serial,
                                         LocaleContext const& locale) {
  auto const moment = toMoment(section, serial, locale.getDateSystem());
  if (!moment) {
    return std::nullopt;
  }
  DateNames const& names =
      DateNames::of(section.locale.empty() ? locale.getName() : section.locale);
  return DateWriter(section, *moment, names).write(locale);
}

}  // namespace Zorv::OfficeUtils::NumberFormatCode
