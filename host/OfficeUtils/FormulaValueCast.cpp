#include "OfficeUtils/FormulaValueCast.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include "FormulaModel/FormulaException.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Utils/CaseFolding.h"

namespace Zorv::OfficeUtils {

GeneralNumberFormatter::~GeneralNumberFormatter() = default;

}  // namespace Zorv::OfficeUtils

namespace Zorv::OfficeUtils::FormulaValueCast {

namespace {

using FormulaModel::FormulaBoolean;
using FormulaModel::FormulaEmpty;
using FormulaModel::FormulaError;
using FormulaModel::FormulaErrorCode;
using FormulaModel::FormulaException;
using FormulaModel::FormulaNumber;
using FormulaModel::FormulaString;

bool isAscii(std::string_view text) noexcept {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// `word` is in upper case.
bool isWordInAsciiCase(std::string_view text, std::string_view word) noexcept {
  return std::ranges::equal(text, word, {}, [](char c) { return toAsciiUpper(c); });
}

bool isWordInAnyCase(std::string const& text, std::string const& word, CaseFolding folding) {
  return foldCase(text, folding) == foldCase(word, folding);
}

/// In Turkic languages the lower case of I has no dot.
CaseFolding getFolding(LocaleContext const& locale) noexcept {
  std::string_view const language = std::string_view(locale.getName()).substr(0, 2);
  return language == "tr" || language == "az" ? CaseFolding::Turkic : CaseFolding::Default;
}

bool namesLocalWord(std::string const& text, std::string const& word, LocaleContext const& locale) {
  return isAscii(text) && isAscii(word) ? isWordInAsciiCase(text, word)
                                        : isWordInAnyCase(text, word, getFolding(locale));
}

boost::optional<bool> readTruthWord(std::string const& text, LocaleContext const& locale) {
  if (isWordInAsciiCase(text, "TRUE")) {
    return true;
  }
  if (isWordInAsciiCase(text, "FALSE")) {
    return false;
  }
  if (namesLocalWord(text, locale.getTrueText(), locale)) {
    return true;
  }
  if (namesLocalWord(text, locale.getFalseText(), locale)) {
    return false;
  }
  return boost::none;
}

struct ToBool : boost::static_visitor<boost::optional<bool>> {
  ToBool(LocaleContext const& itsLocale, bool itsStrict) noexcept
      : locale(itsLocale), strict(itsStrict) {}

  result_type operator()(FormulaEmpty const& /*empty*/) const noexcept { return false; }
  result_type operator()(FormulaNumber const& number) const noexcept {
    return number.value.get() != 0.0;
  }
  result_type operator()(FormulaString const& text) const {
    return strict ? boost::none : readTruthWord(text.value, locale);
  }
  result_type operator()(FormulaBoolean const& boolean) const noexcept { return boolean.value; }
  result_type operator()(FormulaError const& /*error*/) const noexcept { return boost::none; }

  LocaleContext const& locale;
  bool strict;
};

constexpr int significantDigits = 15;

/// Finite number in decimal: sign, significant digits without trailing zeros, and the power of ten
/// of the first digit.
struct Decimal {
  bool isNegative = false;
  std::string digits;
  int exponent = 0;
};

Decimal toDecimal(double number) {
  std::array<char, 32> buffer{};
  auto const written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(number),
                                     std::chars_format::scientific, significantDigits - 1);
  std::string_view const text(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
  // d.dddde[+-]dd
  std::size_t const exponentMark = text.find('e');
  std::size_t const exponentDigits = exponentMark + (text[exponentMark + 1] == '+' ? 2U : 1U);
  Decimal decimal;
  std::from_chars(text.data() + exponentDigits, text.data() + text.size(), decimal.exponent);
  decimal.digits.append(text.substr(0, 1)).append(text.substr(2, exponentMark - 2));
  decimal.digits.resize(std::max<std::size_t>(decimal.digits.find_last_not_of('0') + 1, 1));
  decimal.isNegative = number < 0.0;
  return decimal;
}

std::string writeScientific(Decimal const& decimal, std::string const& separator) {
  std::string text = decimal.digits.substr(0, 1);
  if (decimal.digits.size() > 1) {
    text.append(separator).append(decimal.digits, 1);
  }
  text.append(decimal.exponent < 0 ? "E-" : "E+");
  std::string const exponent = std::to_string(std::abs(decimal.exponent));
  return text.append(exponent.size() < 2 ? "0" : "").append(exponent);
}

std::string writePositional(Decimal const& decimal, std::string const& separator) {
  if (decimal.exponent < 0) {
    auto const zeros = static_cast<std::size_t>(-decimal.exponent - 1);
    return std::string("0").append(separator).append(zeros, '0').append(decimal.digits);
  }
  auto const wholeDigits = static_cast<std::size_t>(decimal.exponent) + 1;
  if (decimal.digits.size() <= wholeDigits) {
    return decimal.digits + std::string(wholeDigits - decimal.digits.size(), '0');
  }
  return decimal.digits.substr(0, wholeDigits) + separator + decimal.digits.substr(wholeDigits);
}

std::string writeGeneral(FloatNumber number, LocaleContext const& locale) {
  constexpr double exactWholeNumbers = 1e15;
  constexpr int smallestPositional = -10;
  constexpr int largestPositional = 20;
  double const value = number.get();
  if (!std::isfinite(value)) {
    return std::string(FormulaModel::toText(FormulaErrorCode::Number));
  }
  if (std::abs(value) < exactWholeNumbers && std::trunc(value) == value) {
    return std::to_string(static_cast<std::int64_t>(value));
  }
  Decimal const decimal = toDecimal(value);
  bool const isPositional =
      smallestPositional <= decimal.exponent && decimal.exponent <= largestPositional;
  std::string text = decimal.isNegative ? "-" : "";
  text += (isPositional ? writePositional : writeScientific)(decimal, locale.getDecimalSeparator());
  return text;
}

struct ToString : boost::static_visitor<std::string> {
  ToString(LocaleContext const& itsLocale, GeneralNumberFormatter const* itsFormatter) noexcept
      : locale(itsLocale), formatter(itsFormatter) {}

  std::string operator()(FormulaEmpty const& /*empty*/) const { return {}; }
  std::string operator()(FormulaNumber const& number) const {
    return formatter != nullptr ? formatter->format(number.value, locale)
                                : writeGeneral(number.value, locale);
  }
  std::string operator()(FormulaString const& text) const { return text.value; }
  std::string operator()(FormulaBoolean const& boolean) const {
    return boolean.value ? "TRUE" : "FALSE";
  }
  std::string operator()(FormulaError const& error) const {
    return std::string(FormulaModel::toText(error.code));
  }

  LocaleContext const& locale;
  GeneralNumberFormatter const* formatter;
};

}  // namespace

boost::optional<bool> toBoolOpt(FormulaModel::FormulaValue const& value,
                                LocaleContext const& locale,
                                CastMode /*mode: there is one set of rules*/, bool strict) {
  return boost::apply_visitor(ToBool(locale, strict), value);
}

bool toBool(FormulaModel::FormulaValue const& value, LocaleContext const& locale, CastMode mode,
            bool strict) {
  auto const truth = toBoolOpt(value, locale, mode, strict);
  if (!truth) {
    throw FormulaException('"' + toString(value, locale, nullptr) + "\" is not a truth value");
  }
  return *truth;
}

std::string toString(FormulaModel::FormulaValue const& value, LocaleContext const& locale,
                     GeneralNumberFormatter const* formatter) {
  return boost::apply_visitor(ToString(locale, formatter), value);
}

}  // namespace Zorv::OfficeUtils::FormulaValueCast
