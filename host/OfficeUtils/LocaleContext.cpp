#include "OfficeUtils/LocaleContext.h"

#include <algorithm>
#include <array>
#include <map>
#include <mutex>
#include <span>
#include <string_view>
#include <utility>

#include <unicode/calendar.h>
#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include "Utils/Exceptions.h"

namespace Zorv::OfficeUtils {

/// Customs of a locale.
struct LocaleCustoms {
  std::chrono::weekday firstDayOfWeek;
  std::string decimalSeparator;
  std::string groupingSeparator;
  std::string trueText;
  std::string falseText;
};

namespace {

struct TruthWords {
  std::string_view language;
  std::string_view trueText;
  std::string_view falseText;
};

// Words of spreadsheets for the two truth values. Other languages use the English words.
constexpr std::array truthWords{
    TruthWords{"cs", "PRAVDA", "NEPRAVDA"},  TruthWords{"da", "SAND", "FALSK"},
    TruthWords{"de", "WAHR", "FALSCH"},      TruthWords{"es", "VERDADERO", "FALSO"},
    TruthWords{"fi", "TOSI", "EPÄTOSI"},     TruthWords{"fr", "VRAI", "FAUX"},
    TruthWords{"hu", "IGAZ", "HAMIS"},       TruthWords{"it", "VERO", "FALSO"},
    TruthWords{"nb", "SANN", "USANN"},       TruthWords{"nl", "WAAR", "ONWAAR"},
    TruthWords{"no", "SANN", "USANN"},       TruthWords{"pl", "PRAWDA", "FAŁSZ"},
    TruthWords{"pt", "VERDADEIRO", "FALSO"}, TruthWords{"ru", "ИСТИНА", "ЛОЖЬ"},
    TruthWords{"sv", "SANT", "FALSKT"},      TruthWords{"tr", "DOĞRU", "YANLIŞ"},
};

TruthWords findTruthWords(std::string_view language) {
  auto const* const found = std::ranges::find(truthWords, language, &TruthWords::language);
  return found != truthWords.end() ? *found : TruthWords{language, "TRUE", "FALSE"};
}

bool isKnownLanguage(std::string_view language) {
  std::int32_t count = 0;
  auto const* const locales = icu::Locale::getAvailableLocales(count);
  return std::ranges::any_of(std::span(locales, static_cast<std::size_t>(count)),
                             [&](auto const& known) { return known.getLanguage() == language; });
}

icu::Locale findLocale(std::string const& name) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale locale = icu::Locale::forLanguageTag(name, status);
  if (U_FAILURE(status) != 0) {
    locale = icu::Locale::createCanonical(name.c_str());
  }
  if (locale.isBogus() != 0 || !isKnownLanguage(locale.getLanguage())) {
    throw BaseRuntimeError("unknown locale \"" + name + "\"");
  }
  return locale;
}

void throwOnFailure(UErrorCode status, std::string const& name) {
  if (U_FAILURE(status) != 0) {
    throw BaseRuntimeError("no data of locale \"" + name + "\": " + u_errorName(status));
  }
}

std::string getSymbol(icu::DecimalFormatSymbols const& symbols,
                      icu::DecimalFormatSymbols::ENumberFormatSymbol symbol) {
  std::string text;
  symbols.getConstSymbol(symbol).toUTF8String(text);
  return text;
}

std::chrono::weekday findFirstDayOfWeek(icu::Locale const& locale, std::string const& name) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Calendar> const calendar(icu::Calendar::createInstance(locale, status));
  throwOnFailure(status, name);
  auto const day = calendar->getFirstDayOfWeek(status);
  throwOnFailure(status, name);
  return std::chrono::weekday(static_cast<unsigned>(day - UCAL_SUNDAY));
}

LocaleCustoms readCustoms(std::string const& name) {
  icu::Locale const locale = findLocale(name);
  UErrorCode status = U_ZERO_ERROR;
  icu::DecimalFormatSymbols const symbols(locale, status);
  throwOnFailure(status, name);
  TruthWords const words = findTruthWords(locale.getLanguage());
  return {
      .firstDayOfWeek = findFirstDayOfWeek(locale, name),
      .decimalSeparator = getSymbol(symbols, icu::DecimalFormatSymbols::kDecimalSeparatorSymbol),
      .groupingSeparator = getSymbol(symbols, icu::DecimalFormatSymbols::kGroupingSeparatorSymbol),
      .trueText = std::string(words.trueText),
      .falseText = std::string(words.falseText)};
}

/// The customs of a locale, by name; valid for the life of the process. ICU takes longer to make
/// them than a small workbook takes to be read.
LocaleCustoms const& getOrReadCustoms(std::string const& name) {
  static std::mutex mutex;
  static std::map<std::string, LocaleCustoms> known;
  std::lock_guard const lock(mutex);
  auto const found = known.find(name);
  return found != known.end() ? found->second
                              : known.emplace(name, readCustoms(name)).first->second;
}

}  // namespace

struct LocaleContext::Data {
  std::string name;
  DateSystem dateSystem;
  LocaleCustoms const& customs;
};

LocaleContext::LocaleContext() {
  static LocaleContext const american("en-US");
  _data = american._data;
}

LocaleContext::LocaleContext(std::string const& name, DateSystem dateSystem)
    : _data(std::make_shared<Data const>(
          Data{.name = name, .dateSystem = dateSystem, .customs = getOrReadCustoms(name)})) {}

std::string const& LocaleContext::getName() const noexcept { return _data->name; }
DateSystem LocaleContext::getDateSystem() const noexcept { return _data->dateSystem; }
std::chrono::weekday LocaleContext::getFirstDayOfWeek() const noexcept {
  return _data->customs.firstDayOfWeek;
}
std::string const& LocaleContext::getDecimalSeparator() const noexcept {
  return _data->customs.decimalSeparator;
}
std::string const& LocaleContext::getGroupingSeparator() const noexcept {
  return _data->customs.groupingSeparator;
}
std::string const& LocaleContext::getTrueText() const noexcept { return _data->customs.trueText; }
std::string const& LocaleContext::getFalseText() const noexcept { return _data->customs.falseText; }

}  // namespace Zorv::OfficeUtils
