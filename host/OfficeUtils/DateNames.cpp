#include "OfficeUtils/DateNames.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <utility>

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

/// Copies names from index `first` on: ICU's weekdays start at 1.
template <std::size_t size>
void copyNames(std::array<std::string, size>& names, icu::UnicodeString const* source,
               std::int32_t count, std::size_t first) {
  for (std::size_t i = 0; i < size && first + i < static_cast<std::size_t>(count); ++i) {
    source[first + i].toUTF8String(names[i]);
  }
}

/// Abbreviations are the stand-alone ones, which have no dots. Full names are those for dates: some
/// languages inflect a month's name next to a day.
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

/// The number format of a pattern of ICU; the year has four digits.
std::string toFormatCode(icu::UnicodeString const& pattern) {
  std::string text;
  pattern.toUTF8String(text);
  std::string code;
  for (char const c : text) {
    if (c == 'y') {
      code += code.ends_with('y') ? "" : "yyyy";
    } else {
      code += c == 'M' ? 'm' : c == '\'' ? '"' : c;
    }
  }
  return code;
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
  names.shortDateCode = toFormatCode(pattern);
  names.hasDots = pattern.indexOf(u'.') >= 0;
  if (year < month && year < day) {
    names.order = DateOrder::YearMonthDay;
  } else {
    names.order = day < month ? DateOrder::DayMonthYear : DateOrder::MonthDayYear;
  }
}

constexpr std::size_t letterCount = 26;

bool isAscii(std::string_view text) noexcept {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Index of an ASCII letter in the alphabet; at least `letterCount` for any other character.
std::size_t toLetter(char c) noexcept {
  constexpr unsigned lowerCase = 0x20;
  return (static_cast<unsigned char>(c) | lowerCase) - std::size_t{'a'};
}

/// Lengths above the highest bit share it.
std::uint32_t bitOfLength(std::size_t length) noexcept {
  constexpr std::size_t highest = 31;
  return std::uint32_t{1} << std::min(length, highest);
}

void readLengths(DateNames& names, std::string const& name) {
  // The long s and the kelvin sign are the only other characters that fold to ASCII letters.
  if (name.find("\u017F") != std::string::npos || name.find("\u212A") != std::string::npos) {
    names.lengthsByInitial.fill(~std::uint32_t{0});
  } else if (!name.empty() && isAscii(name) && toLetter(name.front()) < letterCount) {
    names.lengthsByInitial.at(toLetter(name.front())) |= bitOfLength(name.size());
  }
}

void readLengths(DateNames& names) {
  auto const readAll = [&](auto const& list) {
    std::ranges::for_each(list, [&](std::string const& name) { readLengths(names, name); });
  };
  readAll(names.months);
  readAll(names.shortMonths);
  readAll(names.weekdays);
  readAll(names.shortWeekdays);
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
  readLengths(names);
  return names;
}

using NamedNames = std::map<std::string, DateNames>::value_type;

/// The names of a locale, by name; valid for the life of the process.
NamedNames const& getOrCreate(std::string const& localeName) {
  static std::shared_mutex mutex;
  static std::map<std::string, DateNames> known;
  {
    std::shared_lock const lock(mutex);
    auto const found = known.find(localeName);
    if (found != known.end()) {
      return *found;
    }
  }
  DateNames names = makeNames(localeName);
  std::unique_lock const lock(mutex);
  return *known.try_emplace(localeName, std::move(names)).first;
}

}  // namespace

bool DateNames::mayName(std::string_view word) const noexcept {
  if (word.empty() || !isAscii(word)) {
    return !word.empty();
  }
  std::size_t const letter = toLetter(word.front());
  return letter >= letterCount || (lengthsByInitial[letter] & bitOfLength(word.size())) != 0;
}

DateNames const& DateNames::of(std::string const& localeName) {
  // A thread usually reads thousands of texts of one locale. Without this cache threads would
  // contend for the lock.
  thread_local NamedNames const* last = nullptr;
  if (last == nullptr || last->first != localeName) {
    last = &getOrCreate(localeName);
  }
  return last->second;
}

}  // namespace Zorv::OfficeUtils
