#include "words/ValueText.h"

#include <cmath>
#include <optional>

#include <fmt/format.h>
#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaValueAccess.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "OfficeUtils/SerialDate.h"
#include "words/Printable.h"

namespace Zorv::Words {

namespace {

using FormulaModel::FormulaValueKind;

/// The date of a serial number, and the time of day to the second; nothing for a number that is no
/// date.
std::optional<std::string> describeDate(double serial, OfficeUtils::LocaleContext const& locale) {
  constexpr double secondsOfDay = 86'400;
  constexpr long minute = 60;
  constexpr long hour = 60 * minute;
  double const rounded = std::round(serial * secondsOfDay) / secondsOfDay;
  auto const date = OfficeUtils::SerialDate::toCivilDate(rounded, locale.getDateSystem());
  if (!date) {
    return std::nullopt;
  }
  auto text = fmt::format("{:04}-{:02}-{:02}", date->year, date->month, date->day);
  auto const rest = std::lround((rounded - std::floor(rounded)) * secondsOfDay);
  if (rest != 0) {
    text += fmt::format(" {:02}:{:02}", rest / hour, rest % hour / minute);
    text += rest % minute == 0 ? "" : fmt::format(":{:02}", rest % minute);
  }
  return text;
}

}  // namespace

std::string describeValue(FormulaModel::FormulaValue const& value, NumberMeaning meaning,
                          OfficeUtils::LocaleContext const& locale) {
  constexpr std::size_t widestText = 40;
  switch (value.which()) {
    case FormulaValueKind::Empty:
      return "empty";
    case FormulaValueKind::String:
      return '"' + shorten(boost::get<FormulaModel::FormulaString>(value).value, widestText) + '"';
    case FormulaValueKind::Number:
      if (meaning == NumberMeaning::Date) {
        auto const serial = boost::get<FormulaModel::FormulaNumber>(value).value.get();
        if (auto const date = describeDate(serial, locale)) {
          return *date;
        }
      }
      break;
    default:
      break;
  }
  return toPrintable(OfficeUtils::FormulaValueCast::toString(value, locale, nullptr));
}

std::string_view describeKind(FormulaModel::FormulaValue const& value) noexcept {
  switch (value.which()) {
    case FormulaValueKind::Number:
      return "a number";
    case FormulaValueKind::String:
      return "a text";
    case FormulaValueKind::Boolean:
      return "a truth value";
    case FormulaValueKind::Error:
      return "an error";
    default:
      return "the empty value";
  }
}

}  // namespace Zorv::Words
