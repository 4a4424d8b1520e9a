#include "words/CellText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include <fmt/format.h>
#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaValueAccess.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "OfficeUtils/SerialDate.h"

namespace Zorv::Words {

namespace {

using OfficeUtils::SerialDate::CivilDate;

constexpr bool isDigit(char character) noexcept { return '0' <= character && character <= '9'; }

/// True if the first three numbers of a text are the year of four digits, the month and the day.
bool beginsYearFirst(std::string_view text, CivilDate const& date) noexcept {
  constexpr std::size_t yearDigits = 4;
  std::array<long, 3> numbers{};
  std::size_t position = 0;
  for (auto& number : numbers) {
    while (position < text.size() && !isDigit(text[position])) {
      ++position;
    }
    auto const [rest, error] =
        std::from_chars(text.data() + position, text.data() + text.size(), number);
    auto const end = static_cast<std::size_t>(rest - text.data());
    if (error != std::errc() || (&number == numbers.data() && end - position != yearDigits)) {
      return false;
    }
    position = end;
  }
  return numbers == std::array<long, 3>{date.year, date.month, date.day};
}

/// A whole number in general format; nothing for other numbers, and for those with an exponent.
std::optional<std::int64_t> toWholeNumber(double number) noexcept {
  constexpr double longest = 1e11;
  if (!(std::abs(number) < longest) || number != std::floor(number)) {
    return std::nullopt;
  }
  return static_cast<std::int64_t>(number);
}

}  // namespace

std::string toRawText(FormulaModel::FormulaValue const& value) {
  switch (value.which()) {
    case FormulaModel::FormulaValueKind::Number:
      return fmt::format("{}", boost::get<FormulaModel::FormulaNumber>(value).value.get());
    case FormulaModel::FormulaValueKind::String:
      return boost::get<FormulaModel::FormulaString>(value).value;
    case FormulaModel::FormulaValueKind::Boolean:
      return boost::get<FormulaModel::FormulaBoolean>(value).value ? "TRUE" : "FALSE";
    case FormulaModel::FormulaValueKind::Error:
      return std::string(FormulaModel::toText(boost::get<FormulaModel::FormulaError>(value).code));
    default:
      return {};
  }
}

std::string_view CellFormatter::toText(DOM::Cell const& cell, DOM::CellFormat const* format) {
  if (format == nullptr && cell.style) {
    format = cell.style->get().getCellFormat().get();
  }
  auto const* const compiled = format != nullptr ? findFormat(format->code) : nullptr;
  auto const* const number = boost::get<FormulaModel::FormulaNumber>(&cell.value);
  auto const* const text = boost::get<FormulaModel::FormulaString>(&cell.value);
  if (text != nullptr) {
    if (compiled == nullptr) {
      return text->value;
    }
    _text = compiled->formatText(text->value);
  } else if (number != nullptr && compiled != nullptr) {
    _text = formatNumber(number->value.get(), *compiled);
  } else if (auto const whole = number != nullptr ? toWholeNumber(number->value.get())
                                                  : std::optional<std::int64_t>()) {
    std::array<char, 24> digits{};
    auto* const end = std::to_chars(digits.begin(), digits.end(), *whole).ptr;
    _text.assign(digits.begin(), end);
  } else {
    _text = OfficeUtils::FormulaValueCast::toString(cell.value, _locale, nullptr);
  }
  return _text;
}

bool CellFormatter::showsDate(double number, DOM::CellFormat const& format) {
  auto const* const compiled = findFormat(format.code);
  return compiled != nullptr && compiled->showsDate(number);
}

CellFormatter::NumberFormat const* CellFormatter::findFormat(std::string const& code) {
  if (code == "General") {
    return nullptr;
  }
  auto found = _formats.find(code);
  if (found == _formats.end()) {
    found = _formats.emplace(code, NumberFormat::compile(code)).first;
  }
  return found->second ? &*found->second : nullptr;
}

std::string CellFormatter::formatNumber(double number, NumberFormat const& format) const {
  auto text = format.formatNumber(number, _locale);
  if (!text) {
    return OfficeUtils::FormulaValueCast::toString(FormulaModel::FormulaNumber{FloatNumber(number)},
                                                   _locale, nullptr);
  }
  if (format.showsDate(number)) {
    auto const date = OfficeUtils::SerialDate::toCivilDate(number, _locale.getDateSystem());
    if (date && !beginsYearFirst(*text, *date)) {
      *text += fmt::format(" ({:04}-{:02}-{:02})", date->year, date->month, date->day);
    }
  }
  return *std::move(text);
}

}  // namespace Zorv::Words
