// Numbers and dates written as texts and read from texts.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <unicode/locid.h>
#include <unicode/numfmt.h>
#include <unicode/unistr.h>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Rounding.h"
#include "Formulas/Text/Characters.h"
#include "Formulas/Text/DateText.h"
#include "Formulas/Text/NumberText.h"
#include "Formulas/Text/Texts.h"
#include "Formulas/Text/ValueText.h"
#include "Formulas/Values/Coercion.h"
#include "OfficeUtils/NumberFormat.h"

namespace Zorv::Formulas {

namespace {

using OfficeUtils::NumberFormat;

constexpr std::uint64_t stepsOfFormatting = 100;

/// A compiled format; the formats that a thread used last are kept. Nothing for what is no format.
std::optional<NumberFormat> findFormat(std::string_view code) {
  constexpr std::size_t mostFormats = 64;
  thread_local std::unordered_map<std::string, std::optional<NumberFormat>> formats;
  std::string key(code);
  auto const found = formats.find(key);
  if (found != formats.end()) {
    return found->second;
  }
  if (formats.size() == mostFormats) {
    formats.clear();
  }
  return formats.emplace(std::move(key), NumberFormat::compile(code)).first->second;
}

/// TEXT(value, format): texts that read as numbers are formatted like these.
Value formatValue(Call& call) {
  constexpr std::size_t longestFormat = 255;
  std::string_view const code = call.text(1);
  call.steps().spend(stepsOfFormatting + code.size());
  auto const format = code.size() <= longestFormat ? findFormat(code) : std::nullopt;
  if (!format) {
    return wrongValue();
  }
  auto const number = call[0].isBoolean() ? Outcome<double>(FormulaErrorCode::Value)
                                          : toNumber(call[0], call.locale());
  if (number.isError()) {
    return call.makeText(format->formatText(*call.evaluator().toText(call[0])));
  }
  auto const text = format->formatNumber(*number, call.locale());
  return text ? call.makeText(*text) : wrongValue();
}

/// The format of numbers with a count of digits behind the decimal point.
std::string makeDecimalFormat(std::size_t digits, bool hasGroups) {
  std::string format = hasGroups ? "#,##0" : "0";
  return digits == 0 ? format : format + "." + std::string(digits, '0');
}

/// How many digits FIXED and DOLLAR show; negative ones lie left of the decimal point.
std::optional<double> readDigits(Call const& call) noexcept {
  constexpr double mostDigits = 127.0;
  double const digits = std::trunc(call.number(1, 2.0));
  return digits <= mostDigits ? std::optional(digits) : std::nullopt;
}

/// FIXED(number, digits, without groups)
Value formatFixed(Call& call) {
  auto const digits = readDigits(call);
  if (!digits) {
    return wrongValue();
  }
  call.steps().spend(stepsOfFormatting);
  double const number = roundToDigits(call.number(0), *digits, roundHalfAwayFromZero);
  auto const shown = static_cast<std::size_t>(std::max(*digits, 0.0));
  auto const format = NumberFormat::compile(makeDecimalFormat(shown, !call.truth(2, false)));
  auto const text = format->formatNumber(number, call.locale());
  return text ? call.makeText(*text) : wrongValue();
}

/// The format of amounts of a locale's money, with a count of digits behind the decimal point; null
/// without data of ICU. Valid until the thread asks again: ICU takes ten times longer to make a
/// format than to use it, and most cells ask for the same one.
icu::NumberFormat const* findMoneyFormat(std::string const& localeName, std::int32_t digits) {
  struct Kept {
    std::string localeName;
    std::int32_t digits = -1;
    std::unique_ptr<icu::NumberFormat> format;
  };
  thread_local Kept kept;
  if (!kept.format || kept.localeName != localeName) {
    UErrorCode status = U_ZERO_ERROR;
    auto const locale = icu::Locale::createCanonical(localeName.c_str());
    std::unique_ptr<icu::NumberFormat> format(
        icu::NumberFormat::createInstance(locale, UNUM_CURRENCY_ACCOUNTING, status));
    if (U_FAILURE(status) != 0) {
      return nullptr;
    }
    kept = {.localeName = localeName, .format = std::move(format)};
  }
  if (kept.digits != digits) {
    kept.format->setMinimumFractionDigits(digits);
    kept.format->setMaximumFractionDigits(digits);
    kept.digits = digits;
  }
  return kept.format.get();
}

/// DOLLAR(number, digits): an amount of the locale's money, in parentheses where it is negative.
Value formatMoney(Call& call) {
  auto const digits = readDigits(call);
  if (!digits) {
    return wrongValue();
  }
  constexpr std::uint64_t stepsOfMaking = 10'000;
  call.steps().spend(stepsOfMaking);
  auto const shown = static_cast<std::int32_t>(std::max(*digits, 0.0));
  icu::NumberFormat const* const format = findMoneyFormat(call.locale().getName(), shown);
  if (format == nullptr) {
    return wrongValue();
  }
  icu::UnicodeString unicode;
  format->format(roundToDigits(call.number(0), *digits, roundHalfAwayFromZero), unicode);
  std::string text;
  return call.makeText(unicode.toUTF8String(text));
}

/// The year in which the document is read.
int readYear(Call const& call) {
  auto const local =
      call.evaluator().provider().getTimeZone().toLocal(call.evaluator().readMoment());
  auto const day = std::chrono::floor<std::chrono::days>(local);
  return static_cast<int>(std::chrono::year_month_day(day).year());
}

/// VALUE(text)
Value readPlainValue(Call& call) {
  if (call[0].isNumber() || call[0].isEmpty()) {
    return Value::number(call[0].isNumber() ? call[0].asNumber() : 0.0);
  }
  call.steps().spend(stepsOfReading(call[0].isText() ? call[0].asText() : std::string_view()));
  auto const number =
      call[0].isText() ? readValue(call[0].asText(), call.locale(), readYear(call)) : std::nullopt;
  return number ? Value::number(*number) : wrongValue();
}

/// DATEVALUE(text): the day that a text spells.
Value readDate(Call& call) {
  call.steps().spend(stepsOfReading(call.text(0)));
  auto const moment = readMoment(call.text(0), call.locale(), readYear(call));
  return moment && moment->day ? Value::number(static_cast<double>(*moment->day)) : wrongValue();
}

/// TIMEVALUE(text): the time of day; 0 for a date alone.
Value readTime(Call& call) {
  call.steps().spend(stepsOfReading(call.text(0)));
  auto const moment = readMoment(call.text(0), call.locale(), readYear(call));
  double const time = moment ? moment->time.value_or(0.0) : 0.0;
  return moment ? Value::number(time - std::floor(time)) : wrongValue();
}

/// The first character of a separator that NUMBERVALUE is given, or the locale's.
std::string_view readSeparator(Call const& call, std::size_t index, std::string_view usual) {
  std::string_view const text = call.text(index, usual);
  return text.substr(0, bytesOfCharacters(text, 1));
}

/// The text of a number in plain form: without spaces and groups, and with a point. Nothing for
/// misplaced separators.
std::optional<std::string> toPlainNumber(std::string_view text, std::string_view decimal,
                                         std::string_view group) {
  std::string plain;
  bool isBehindPoint = false;
  while (!text.empty()) {
    if (!decimal.empty() && text.starts_with(decimal)) {
      if (isBehindPoint) {
        return std::nullopt;
      }
      isBehindPoint = true;
      plain += '.';
      text.remove_prefix(decimal.size());
    } else if (!group.empty() && text.starts_with(group)) {
      if (isBehindPoint) {
        return std::nullopt;
      }
      text.remove_prefix(group.size());
    } else {
      plain += isSpace(text.front()) ? "" : std::string(1, text.front());
      text.remove_prefix(1);
    }
  }
  return plain;
}

/// NUMBERVALUE(text, decimal separator, group separator): spaces do not matter, and each percent
/// sign at the end divides by 100.
Value readNumberWithSeparators(Call& call) {
  std::string_view const decimal = readSeparator(call, 1, call.locale().getDecimalSeparator());
  std::string_view const group = readSeparator(call, 2, call.locale().getGroupingSeparator());
  if (call.has(1) && call.text(1).empty()) {
    return wrongValue();
  }
  call.steps().spend(stepsOfReading(call.text(0)));
  auto plain = toPlainNumber(call.text(0), decimal, group);
  if (!plain) {
    return wrongValue();
  }
  double factor = 1.0;
  for (; plain->ends_with('%'); plain->pop_back()) {
    factor *= 100.0;
  }
  if (plain->empty()) {
    return factor == 1.0 ? Value::number(0.0) : wrongValue();
  }
  static OfficeUtils::LocaleContext const american;
  auto const number = readNumber(*plain, american);
  return number && plain->find(',') == std::string::npos ? Value::number(*number / factor)
                                                         : wrongValue();
}

}  // namespace

std::span<FunctionEntry const> textFormatFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{
          "DATEVALUE", "text:t", readDate, "Date that a text spells.", {.givesDate = true}},
      FunctionEntry{"DOLLAR", "number:n, [digits:n]", formatMoney, "Number as an amount of money."},
      FunctionEntry{"FIXED", "number:n, [digits:n, isPlain:b]", formatFixed,
                    "Number with a fixed number of digits, with or without grouping."},
      FunctionEntry{"NUMBERVALUE", "text:t, [decimalSeparator:t, groupSeparator:t]",
                    readNumberWithSeparators, "Number that a text spells with given separators."},
      FunctionEntry{"TEXT", "value:v, format:t", formatValue, "Value as a number format shows it."},
      FunctionEntry{"TIMEVALUE", "text:t", readTime,
                    "Time of day that a text spells, as a fraction of a day."},
      FunctionEntry{"VALUE", "text:v", readPlainValue, "Number, date or time that a text spells."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
