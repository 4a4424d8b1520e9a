#include "tool/Text/CellText.h"

#include <chrono>
#include <cmath>

#include <fmt/format.h>
#include <boost/variant/get.hpp>

#include "OfficeUtils/FormulaValueCast.h"
#include "OfficeUtils/SerialDate.h"

namespace Zorv::Tool {

namespace {

/// The date of a serial number, with the time of day unless it is midnight; empty if the number is
/// not a date.
std::string dateText(double serial, OfficeUtils::DateSystem system) {
  using std::chrono::hh_mm_ss;
  using std::chrono::seconds;
  constexpr double secondsOfDay = 86'400;
  auto const date = OfficeUtils::SerialDate::toCivilDate(serial, system);
  if (!date) {
    return {};
  }
  auto text = fmt::format("{:04}-{:02}-{:02}", date->year, date->month, date->day);
  auto const time = std::lround((serial - std::floor(serial)) * secondsOfDay);
  if (0 < time && time < std::lround(secondsOfDay)) {
    hh_mm_ss const clock{seconds(time)};
    text += fmt::format(" {:02}:{:02}:{:02}", clock.hours().count(), clock.minutes().count(),
                        clock.seconds().count());
  }
  return text;
}

/// End of the quoted or bracketed part that starts at `position`.
std::size_t endOfStretch(std::string_view code, std::size_t position, char closing) noexcept {
  auto const end = code.find(closing, position + 1);
  return end == std::string_view::npos ? code.size() : end;
}

}  // namespace

bool showsDates(std::string_view formatCode) noexcept {
  for (std::size_t i = 0; i < formatCode.size() && formatCode[i] != ';'; ++i) {
    switch (formatCode[i]) {
      case '"':
        i = endOfStretch(formatCode, i, '"');
        break;
      case '[':
        i = endOfStretch(formatCode, i, ']');
        break;
      case '\\':
      case '_':
      case '*':
        ++i;  // the next character is literal
        break;
      case 'y':
      case 'Y':
      case 'd':
      case 'D':
      case 'm':
      case 'M':
      case 'h':
      case 'H':
        return true;
      default:
        break;
    }
  }
  return false;
}

std::string toText(DOM::Cell const& cell, OfficeUtils::LocaleContext const& locale) {
  auto const* number = boost::get<FormulaModel::FormulaNumber>(&cell.value);
  auto const* format = cell.style ? cell.style->get().getCellFormat().get() : nullptr;
  if (number && format && showsDates(format->code)) {
    auto date = dateText(number->value.get(), locale.getDateSystem());
    if (!date.empty()) {
      return date;
    }
  }
  return OfficeUtils::FormulaValueCast::toString(cell.value, locale, nullptr);
}

}  // namespace Zorv::Tool
