#include "workbook/Read/Values.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstddef>

#include "OfficeUtils/SerialDate.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

template <class Number>
std::optional<Number> parseWhole(std::string_view text) noexcept {
  text = trimXmlSpaces(text);
  text.remove_prefix(text.starts_with('+') ? 1 : 0);
  Number number{};
  auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
  bool const valid = result.ec == std::errc() && result.ptr == text.data() + text.size();
  return valid ? std::optional(number) : std::nullopt;
}

/// Removes digits and, unless `after` is NUL, that character from the front of a text.
std::optional<unsigned> takeField(std::string_view& text, std::size_t digits, char after) noexcept {
  std::size_t const size = digits + (after == '\0' ? 0 : 1);
  unsigned number = 0;
  bool const valid =
      text.size() >= size && (after == '\0' || text[digits] == after) &&
      std::from_chars(text.data(), text.data() + digits, number).ptr == text.data() + digits;
  text.remove_prefix(valid ? size : 0);
  return valid ? std::optional(number) : std::nullopt;
}

std::optional<double> takeDate(std::string_view& text,
                               OfficeUtils::DateSystem dateSystem) noexcept {
  auto const year = takeField(text, 4, '-');
  auto const month = takeField(text, 2, '-');
  auto const day = takeField(text, 2, '\0');
  if (!year || !month || !day) {
    return std::nullopt;
  }
  std::chrono::year_month_day const date(std::chrono::year(static_cast<int>(*year)),
                                         std::chrono::month(*month), std::chrono::day(*day));
  if (!date.ok()) {
    return std::nullopt;
  }
  return static_cast<double>(
      OfficeUtils::SerialDate::toSerial(std::chrono::sys_days(date), dateSystem));
}

std::optional<double> takeTime(std::string_view& text) noexcept {
  auto const hour = takeField(text, 2, ':');
  auto const minute = takeField(text, 2, '\0');
  if (!hour || !minute || *hour > 24 || *minute > 59) {
    return std::nullopt;
  }
  double seconds = 0;
  if (text.starts_with(':')) {
    text.remove_prefix(1);
    auto const result =
        std::from_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed);
    if (result.ec != std::errc() || !(seconds >= 0 && seconds < 61)) {
      return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
  }
  constexpr double secondsPerDay = 86'400;
  return (*hour * 3'600.0 + *minute * 60.0 + seconds) / secondsPerDay;
}

/// True if a text is empty or an offset from universal time.
bool isZone(std::string_view text) noexcept {
  return text.empty() || text == "Z" || text.starts_with('+') || text.starts_with('-');
}

}  // namespace

std::optional<double> parseNumber(std::string_view text) noexcept {
  auto const number = parseWhole<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<long> parseInteger(std::string_view text) noexcept { return parseWhole<long>(text); }

std::optional<bool> parseBoolean(std::string_view text) noexcept {
  text = trimXmlSpaces(text);
  if (text == "1" || text == "true" || text == "on" || text == "TRUE" || text == "True") {
    return true;
  }
  if (text == "0" || text == "false" || text == "off" || text == "FALSE" || text == "False") {
    return false;
  }
  return std::nullopt;
}

std::optional<double> parseIsoDate(std::string_view text,
                                   OfficeUtils::DateSystem dateSystem) noexcept {
  text = trimXmlSpaces(text);
  bool const hasDate = text.size() > 4 && text[4] == '-';
  std::optional<double> const date = hasDate ? takeDate(text, dateSystem) : 0.0;
  if (!date || (hasDate && text.empty())) {
    return date;
  }
  text.remove_prefix(text.starts_with('T') || text.starts_with(' ') ? 1 : 0);
  auto const time = takeTime(text);
  return time && isZone(text) ? std::optional(*date + *time) : std::nullopt;
}

}  // namespace Zorv::Workbook
