#include "words/Moment.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>

namespace Zorv::Words {

namespace {

using std::chrono::seconds;
using TimePoint = OfficeUtils::Clock::TimePoint;

/// True if a text matches a pattern, in which `#` is any digit, and `?` a `T` or a space.
bool matches(std::string_view text, std::string_view pattern) noexcept {
  if (text.size() != pattern.size()) {
    return false;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    bool const isDigit = '0' <= text[i] && text[i] <= '9';
    bool const fits = pattern[i] == '#'   ? isDigit
                      : pattern[i] == '?' ? text[i] == 'T' || text[i] == 't' || text[i] == ' '
                                          : text[i] == pattern[i];
    if (!fits) {
      return false;
    }
  }
  return true;
}

unsigned numberAt(std::string_view text, std::size_t position, std::size_t length) noexcept {
  unsigned number = 0;
  for (char const digit : text.substr(position, length)) {
    number = number * 10 + static_cast<unsigned>(digit - '0');
  }
  return number;
}

/// The position after date and time of day: that of `Z` or of the sign of an offset, or the end.
std::size_t findOffset(std::string_view text) noexcept {
  constexpr std::size_t dateLength = 10;
  return std::min(text.find_first_of("Zz+-", dateLength), text.size());
}

/// `Z`, `+01:00` or `+0100`.
std::optional<seconds> parseOffset(std::string_view text) noexcept {
  if (text == "Z" || text == "z") {
    return seconds(0);
  }
  bool const hasColon = matches(text.substr(1), "##:##");
  if (!hasColon && !matches(text.substr(1), "####")) {
    return std::nullopt;
  }
  auto const hour = numberAt(text, 1, 2);
  auto const minute = numberAt(text, hasColon ? 4 : 3, 2);
  if (hour > 23 || minute > 59) {
    return std::nullopt;
  }
  seconds const offset = std::chrono::hours(hour) + std::chrono::minutes(minute);
  return text.front() == '-' ? -offset : offset;
}

/// Date, and time of day after a `T` or a space.
std::optional<LocalSeconds> parseLocalTime(std::string_view text) noexcept {
  bool const hasSeconds = matches(text, "####-##-##?##:##:##");
  bool const hasMinutes = hasSeconds || matches(text, "####-##-##?##:##");
  if (!hasMinutes && !matches(text, "####-##-##")) {
    return std::nullopt;
  }
  std::chrono::year_month_day const date{std::chrono::year(static_cast<int>(numberAt(text, 0, 4))),
                                         std::chrono::month(numberAt(text, 5, 2)),
                                         std::chrono::day(numberAt(text, 8, 2))};
  auto const hour = hasMinutes ? numberAt(text, 11, 2) : 0;
  auto const minute = hasMinutes ? numberAt(text, 14, 2) : 0;
  auto const second = hasSeconds ? numberAt(text, 17, 2) : 0;
  if (!date.ok() || hour > 23 || minute > 59 || second > 59) {
    return std::nullopt;
  }
  return LocalSeconds(std::chrono::local_days(date).time_since_epoch() + std::chrono::hours(hour) +
                      std::chrono::minutes(minute) + seconds(second));
}

seconds offsetAt(TimePoint moment, DOM::TimeZone const& timeZone) {
  auto const local = std::chrono::floor<seconds>(timeZone.toLocal(moment));
  return local.time_since_epoch() - std::chrono::floor<seconds>(moment).time_since_epoch();
}

}  // namespace

std::optional<CivilTime> parseCivilTime(std::string_view text) noexcept {
  auto const end = findOffset(text);
  auto const offset = end < text.size() ? parseOffset(text.substr(end)) : std::nullopt;
  auto const local = parseLocalTime(text.substr(0, end));
  if (!local || (end < text.size() && !offset)) {
    return std::nullopt;
  }
  return CivilTime{.local = *local, .offset = offset};
}

std::string toText(LocalSeconds local) {
  auto const day = std::chrono::floor<std::chrono::days>(local);
  std::chrono::year_month_day const date{day};
  std::chrono::hh_mm_ss const time{local - day};
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                     time.hours().count(), time.minutes().count(), time.seconds().count());
}

std::optional<TimePoint> toMoment(LocalSeconds local, DOM::TimeZone const& timeZone) {
  TimePoint const asIfUniversal(local.time_since_epoch());
  // A zone's offset changes at most once within a day in either direction, so it is one of two.
  for (auto const nearby : {std::chrono::days(-1), std::chrono::days(1)}) {
    auto const moment = asIfUniversal - offsetAt(asIfUniversal + nearby, timeZone);
    if (moment + offsetAt(moment, timeZone) == asIfUniversal) {
      return moment;
    }
  }
  return std::nullopt;
}

std::optional<TimePoint> toMoment(CivilTime const& time, DOM::TimeZone const& timeZone) {
  return time.offset ? TimePoint(time.local.time_since_epoch() - *time.offset)
                     : toMoment(time.local, timeZone);
}

}  // namespace Zorv::Words
