#include "Formulas/Text/DateText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "Formulas/Text/Characters.h"
#include "Formulas/Text/TextCursor.h"
#include "Formulas/Text/Texts.h"
#include "OfficeUtils/DateNames.h"
#include "OfficeUtils/SerialDate.h"

namespace Zorv::Formulas {

namespace {

using OfficeUtils::DateNames;
using OfficeUtils::DateOrder;

/// The number of the name that a word is, from 0, or nothing.
template <std::size_t size>
std::optional<std::size_t> findName(std::array<std::string, size> const& names,
                                    std::string_view word) {
  auto const* const found =
      std::ranges::find_if(names, [&](std::string const& name) { return equalTexts(name, word); });
  return found == names.end() ? std::nullopt
                              : std::optional(static_cast<std::size_t>(found - names.begin()));
}

/// The month or weekday that a word names in the locale's language or in English.
template <auto names, auto shortNames>
std::optional<std::size_t> findAnyName(DateNames const& local, std::string_view word) {
  static DateNames const& english = DateNames::of("en-US");
  for (DateNames const* const known : {&local, &english}) {
    if (!known->mayName(word)) {
      continue;
    }
    for (auto const member : {names, shortNames}) {
      if (auto const found = findName(known->*member, word)) {
        return found;
      }
    }
  }
  return std::nullopt;
}

/// The parts of a date, before they are put together.
struct DateParts {
  int year = 0;
  int month = 0;
  int day = 1;
};

class DateReader {
public:
  DateReader(std::string_view text, OfficeUtils::LocaleContext const& locale,
             std::optional<int> currentYear)
      : _cursor(text),
        _locale(&locale),
        _names(&DateNames::of(locale.getName())),
        _currentYear(currentYear) {}

  [[nodiscard]] std::optional<MomentText> read() {
    MomentText moment;
    _cursor.skipSpaces();
    moment.time = tryReading(&DateReader::readTime);
    if (!moment.time) {
      auto const date = tryReading(&DateReader::readDate);
      moment.day = date ? toSerial(*date) : std::nullopt;
      if (!moment.day) {
        return std::nullopt;
      }
      skipBetween();
      moment.time = tryReading(&DateReader::readTime);
    }
    _cursor.skipSpaces();
    return _cursor.isAtEnd() ? std::optional(moment) : std::nullopt;
  }

private:
  /// Reads a part, or stays where it is.
  template <class Part>
  std::optional<Part> tryReading(std::optional<Part> (DateReader::*readPart)()) {
    TextCursor const before = _cursor;
    auto const part = (this->*readPart)();
    if (!part) {
      _cursor = before;
    }
    return part;
  }

  /// The separator of a date and a time: spaces, or the letter T of the standard ISO 8601.
  void skipBetween() noexcept {
    TextCursor const before = _cursor;
    if (!((_cursor.take('T') || _cursor.take('t')) && _cursor.isAtDigit())) {
      _cursor = before;
    }
    _cursor.skipSpaces();
  }

  // Dates.

  std::optional<DateParts> readDate() {
    skipWeekday();
    if (_cursor.isAtDigit()) {
      return readDateOfFigures();
    }
    return readDateFromMonth();
  }

  void skipWeekday() {
    TextCursor const before = _cursor;
    std::string_view const word = _cursor.takeWord();
    if (!word.empty() &&
        findAnyName<&DateNames::weekdays, &DateNames::shortWeekdays>(*_names, word)) {
      _cursor.take('.');
      _cursor.take(',');
      _cursor.skipSpaces();
    } else {
      _cursor = before;
    }
  }

  std::optional<int> takeMonth() {
    std::string_view const word = _cursor.takeWord();
    auto const found =
        word.empty() ? std::nullopt
                     : findAnyName<&DateNames::months, &DateNames::shortMonths>(*_names, word);
    if (!found) {
      return std::nullopt;
    }
    _cursor.take('.');
    return static_cast<int>(*found) + 1;
  }

  /// Between a month's name and a number: a dash, a slash, a comma, spaces.
  void skipSeparators() noexcept {
    _cursor.skipSpaces();
    bool isTaken = false;
    for (char const separator : {'-', '/', ',', '.'}) {
      isTaken = isTaken || _cursor.take(separator);
    }
    _cursor.skipSpaces();
  }

  /// `Jan 30, 2024`, `Jan 30`, `Jan 2024`
  std::optional<DateParts> readDateFromMonth() {
    auto const month = takeMonth();
    skipSeparators();
    auto const number = month ? _cursor.takeFigures() : std::nullopt;
    if (!number) {
      return std::nullopt;
    }
    if (number->isYear()) {
      return DateParts{.year = number->value, .month = *month, .day = 1};
    }
    return completeYear({.year = 0, .month = *month, .day = number->value});
  }

  /// Reads the year behind a month and a day; without one it is the current year.
  std::optional<DateParts> completeYear(DateParts date) {
    TextCursor const before = _cursor;
    skipSeparators();
    auto const figures = _cursor.takeFigures();
    bool const isTime = figures && (_cursor.rest().starts_with(':') || startsHalfOfDay());
    auto const year = figures && !isTime ? toYear(*figures) : std::nullopt;
    if (!year) {
      _cursor = before;
      return complete(date, _currentYear);
    }
    return complete(date, year);
  }

  static std::optional<DateParts> complete(DateParts date, std::optional<int> year) noexcept {
    date.year = year.value_or(0);
    return year ? std::optional(date) : std::nullopt;
  }

  static std::optional<int> toYear(Figures const& figures) noexcept {
    constexpr int firstOfLastCentury = 30;
    if (figures.length <= 2) {
      return figures.value < firstOfLastCentury ? figures.value + 2000 : figures.value + 1900;
    }
    return figures.isYear() ? std::optional(figures.value) : std::nullopt;
  }

  /// `30 Jan 2024`, `30-Jan`, and what consists of numbers only.
  std::optional<DateParts> readDateOfFigures() {
    auto const first = _cursor.takeFigures();
    if (!first) {
      return std::nullopt;
    }
    TextCursor const before = _cursor;
    _cursor.take('.');
    skipSeparators();
    if (auto const month = takeMonth()) {
      return completeYear({.year = 0, .month = *month, .day = first->value});
    }
    _cursor = before;
    return readNumericDate(*first);
  }

  std::optional<DateParts> readNumericDate(Figures const& first) {
    char const separator = _cursor.isAtEnd() ? '\0' : _cursor.rest().front();
    bool const isSeparator =
        separator == '/' || separator == '-' || (separator == '.' && _names->hasDots);
    auto const second =
        isSeparator && _cursor.take(separator) ? _cursor.takeFigures() : std::nullopt;
    if (!second) {
      return std::nullopt;
    }
    bool const hasThird = _cursor.take(separator);
    if (!hasThird || (separator == '.' && !_cursor.isAtDigit())) {
      return fromTwoFigures(first, *second);
    }
    auto const third = _cursor.takeFigures();
    return third ? fromThreeFigures(first, *second, *third) : std::nullopt;
  }

  [[nodiscard]] std::optional<DateParts> fromTwoFigures(Figures const& first,
                                                        Figures const& second) const noexcept {
    if (first.isYear() || second.isYear()) {
      Figures const& year = first.isYear() ? first : second;
      Figures const& month = first.isYear() ? second : first;
      return DateParts{.year = year.value, .month = month.value, .day = 1};
    }
    bool const dayFirst = _names->order == DateOrder::DayMonthYear;
    Figures const& month = dayFirst ? second : first;
    Figures const& day = dayFirst ? first : second;
    return complete({.year = 0, .month = month.value, .day = day.value}, _currentYear);
  }

  [[nodiscard]] std::optional<DateParts> fromThreeFigures(Figures const& first,
                                                          Figures const& second,
                                                          Figures const& third) const noexcept {
    if (first.isYear() || _names->order == DateOrder::YearMonthDay) {
      return complete({.year = 0, .month = second.value, .day = third.value}, toYear(first));
    }
    bool const dayFirst = _names->order == DateOrder::DayMonthYear;
    return complete({.year = 0,
                     .month = (dayFirst ? second : first).value,
                     .day = (dayFirst ? first : second).value},
                    toYear(third));
  }

  [[nodiscard]] std::optional<long> toSerial(DateParts const& date) const noexcept {
    namespace SerialDate = OfficeUtils::SerialDate;
    OfficeUtils::DateSystem const system = _locale->getDateSystem();
    constexpr int months = 12;
    if (date.month < 1 || date.month > months || date.day < 1) {
      return std::nullopt;
    }
    auto const length =
        SerialDate::getDaysInMonth(date.year, static_cast<unsigned>(date.month), system);
    return date.day <= static_cast<int>(length)
               ? SerialDate::toSerial(date.year, date.month, date.day, system)
               : std::nullopt;
  }

  // Times.

  std::optional<double> readTime() {
    constexpr int endOfHours = 10000;
    constexpr double secondsPerDay = 86400.0;
    auto const hours = _cursor.takeFigures();
    if (!hours || hours->value >= endOfHours) {
      return std::nullopt;
    }
    bool const hasMinutes = _cursor.take(':');
    auto const minutes = hasMinutes ? takeSixtieth() : std::optional(0);
    auto const seconds = minutes && hasMinutes ? takeSeconds() : std::optional(0.0);
    if (!minutes || !seconds) {
      return std::nullopt;
    }
    auto const hour = applyHalfOfDay(hours->value, hasMinutes);
    return hour ? std::optional((*hour * 3600.0 + *minutes * 60.0 + *seconds) / secondsPerDay)
                : std::nullopt;
  }

  std::optional<int> takeSixtieth() noexcept {
    constexpr int end = 60;
    auto const figures = _cursor.takeFigures();
    return figures && figures->value < end ? std::optional(figures->value) : std::nullopt;
  }

  /// Seconds with their fraction; 0 where there are none.
  std::optional<double> takeSeconds() noexcept {
    if (!_cursor.take(':')) {
      return 0.0;
    }
    auto const seconds = takeSixtieth();
    if (!seconds) {
      return std::nullopt;
    }
    double result = *seconds;
    if (_cursor.take('.') || _cursor.take(_locale->getDecimalSeparator().front())) {
      double unit = 0.1;
      while (_cursor.isAtDigit()) {
        result += unit * (_cursor.takeCharacter() - '0');
        unit /= 10.0;
      }
    }
    return result;
  }

  [[nodiscard]] bool startsHalfOfDay() const {
    DateReader ahead = *this;
    ahead._cursor.skipSpaces();
    return ahead.takeHalfOfDay().has_value();
  }

  /// 0 before noon, 1 after it.
  std::optional<std::size_t> takeHalfOfDay() {
    std::string_view const word = _cursor.takeWord();
    for (auto const& halves :
         {std::array<std::string_view, 2>{"AM", "PM"}, std::array<std::string_view, 2>{"A", "P"},
          std::array<std::string_view, 2>{_names->halvesOfDay[0], _names->halvesOfDay[1]}}) {
      for (std::size_t i = 0; i < halves.size(); ++i) {
        if (!word.empty() && equalTexts(word, halves[i])) {
          return i;
        }
      }
    }
    return std::nullopt;
  }

  /// The hour of the day, by the half of the day behind it; required where there are no minutes.
  std::optional<int> applyHalfOfDay(int hour, bool hasMinutes) {
    constexpr int half = 12;
    TextCursor const before = _cursor;
    _cursor.skipSpaces();
    auto const found = takeHalfOfDay();
    if (!found) {
      _cursor = before;
      return hasMinutes ? std::optional(hour) : std::nullopt;
    }
    return hour <= half ? std::optional(hour % half + static_cast<int>(*found) * half)
                        : std::nullopt;
  }

  TextCursor _cursor;
  OfficeUtils::LocaleContext const* _locale;
  DateNames const* _names;
  std::optional<int> _currentYear;
};

}  // namespace

std::optional<MomentText> readMoment(std::string_view text,
                                     OfficeUtils::LocaleContext const& locale,
                                     std::optional<int> currentYear) {
  constexpr std::size_t longest = 64;
  // Most texts that are no dates end here.
  if (text.size() > longest || std::ranges::none_of(text, isAsciiDigit)) {
    return std::nullopt;
  }
  return DateReader(text, locale, currentYear).read();
}

}  // namespace Zorv::Formulas
