#include "OfficeUtils/DateNames.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>

#include <unicode/datefmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/unistr.h>

namespace Zorv::OfficeUtils {

namespace {

using Symbols = icu::DateFormatSymbols;

icu::Locale toIcuLocale(std::string const& name) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale const locale = icu::Locale::forLanguageTag(name, status);
  return U_SUCCESS(status) != 0 && locale.isBogus() == 0
             ? locale
             : icu::Locale::createCanonical(name.c_str());
}

/// Copies names, of which the library counts some from 1.
template <std::size_t size>
void copyNames(std::array<std::string, size>& names, icu::UnicodeString const* source,
               std::int32_t count, std::size_t first) {
  for (std::size_t i = 0; i < size && first + i < static_cast<std::size_t>(count); ++i) {
    source[first + i].toUTF8String(names[i]);
  }
}

/// Names of months that stand alone, so that abbreviations have no dots; in some languages a
/// month's full name has another form beside a day, which is the one for dates.
void readNames(DateNames& names, Symbols const& symbols) {
  std::int32_t count = 0;
  auto const* months = symbols.getMonths(count, Symbols::FORMAT, Symbols::WIDE);
  copyNames(names.months, months, count, 0);
  months = symbols.getMonths(count, Symbols::STANDALONE, Symbols::ABBREVIATED);
  copyNames(names.shortMonths, months, count, 0);
  auto const* weekdays = symbols.getWeekdays(count, Symbols::FORMAT, Symbols::WIDE);
  copyNames(names.weekdays, weekdays, count, 1);
  weekdays = symbols.getWeekdays(count, Symbols::STANDALONE, Symbols::ABBREVIATED);
  copyNames(names.shortWeekdays, weekdays, count, 1);
  auto const* const halves = symbols.getAmPmStrings(count);
  copyNames(names.halvesOfDay, halves, count, 0);
}

void readOrder(DateNames& names, icu::Locale const& locale) {
  std::unique_ptr<icu::DateFormat> const format(
      icu::DateFormat::createDateInstance(icu::DateFormat::kShort, locale));
  auto const* const simple = dynamic_cast<icu::SimpleDateFormat const*>(format.get());
  if (simple == nullptr) {
    return;
  }
  icu::UnicodeString pattern;
  simple->toPattern(pattern);
  auto const day = pattern.indexOf(u'd');
  auto const month = pattern.indexOf(u'M');
  auto const year = pattern.indexOf(u'y');
  names.hasDots = pattern.indexOf(u'.') >= 0;
  if (year < month && year < day) {
    names.order = DateOrder::YearMonthDay;
  } else {
    names.order = day < month ? DateOrder::DayMonthYear : DateOrder::MonthDayYear;
  }
}

DateNames makeNames(std::string const& localeName) {
  icu::Locale locale = toIcuLocale(localeName);
  UErrorCode status = U_ZERO_ERROR;
  auto symbols = std::make_unique<Symbols>(locale, status);
  if (U_FAILURE(status) != 0) {
    status = U_ZERO_ERROR;
    locale = icu::Locale::getUS();
    symbols = std::make_unique<Symbols>(locale, status);
  }
  DateNames names;
  readNames(names, *symbols);
  readOrder(names, locale);
  return names;
}

}  // namespace

DateNames const& DateNames::of(std::string const& localeName) {
  static std::shared_mutex mutex;
  static std::map<std::string, DateNames> known;
  {
    std::shared_lock const lock(mutex);
    auto const found = known.find(localeName);
    if (found != known.end()) {
      return found->second;
    }
  }
  DateNames names = makeNames(localeName);
  std::unique_lock const lock(mutex);
  return known.try_emplace(localeName, std::move(names)).first->second;
}

}  // namespace Zorv::OfficeUtils
