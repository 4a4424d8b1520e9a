#include "OfficeUtils/TimeZone.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include <unicode/basictz.h>
#include <unicode/strenum.h>
#include <unicode/stringoptions.h>
#include <unicode/tzrule.h>
#include <unicode/tztrans.h>
#include <unicode/ucal.h>
#include <unicode/unistr.h>

#include "Utils/Exceptions.h"

namespace Zorv::DOM {

using std::chrono::milliseconds;

/// Period with a fixed offset from coordinated universal time.
struct TimeZonePeriod {
  milliseconds start;  ///< since 1970
  milliseconds offset;
};

namespace {

constexpr milliseconds startOfYear(int year) noexcept {
  return std::chrono::sys_days(std::chrono::year(year) / 1 / 1).time_since_epoch();
}

// No zone has a transition before the first of these years. In the 400 years before the last one
// all zones follow yearly rules, and the calendar with its weekdays repeats every 400 years, so
// these years stand for all later ones.
constexpr milliseconds firstListed = startOfYear(1800);
constexpr milliseconds endOfList = startOfYear(2500);
constexpr milliseconds calendarCycle = endOfList - startOfYear(2100);

/// A moment with the same offset that lies before the end of the list.
milliseconds moveIntoList(milliseconds moment) noexcept {
  return moment < endOfList ? moment
                            : moment - calendarCycle * ((moment - endOfList) / calendarCycle + 1);
}

milliseconds findOffset(icu::BasicTimeZone const& zone, milliseconds moment) {
  std::int32_t rawOffset = 0;
  std::int32_t daylightSaving = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone.getOffset(static_cast<UDate>(moment.count()), 0, rawOffset, daylightSaving, status);
  if (U_FAILURE(status) != 0) {
    throw BaseRuntimeError(std::string("a time zone without data: ") + u_errorName(status));
  }
  return milliseconds(rawOffset + daylightSaving);
}

/// The periods of a zone, in order. They are about a thousand; a look-up is then a binary search.
std::vector<TimeZonePeriod> listPeriods(icu::BasicTimeZone const& zone) {
  std::vector<TimeZonePeriod> periods{
      {.start = milliseconds::min(), .offset = findOffset(zone, firstListed)},
  };
  auto time = static_cast<UDate>(firstListed.count());
  icu::TimeZoneTransition transition;
  while (zone.getNextTransition(time, 0, transition) != 0) {
    time = transition.getTime();
    if (time >= static_cast<UDate>(endOfList.count())) {
      break;
    }
    auto const* const rule = transition.getTo();
    periods.push_back({.start = milliseconds(static_cast<std::int64_t>(time)),
                       .offset = milliseconds(rule->getRawOffset() + rule->getDSTSavings())});
  }
  return periods;
}

/// The zone of a name in the spelling of the database; null for any other name.
std::unique_ptr<icu::TimeZone const> makeZone(icu::UnicodeString const& name) {
  std::unique_ptr<icu::TimeZone const> zone(icu::TimeZone::createTimeZone(name));
  icu::UnicodeString id;
  return zone != nullptr && zone->getID(id) != UCAL_UNKNOWN_ZONE_ID ? std::move(zone) : nullptr;
}

/// The spelling of a name in the database, whatever its letter case; nothing if it is not there.
std::optional<icu::UnicodeString> findSpelling(icu::UnicodeString const& name) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::StringEnumeration> const names(
      icu::TimeZone::createTimeZoneIDEnumeration(UCAL_ZONE_TYPE_ANY, nullptr, nullptr, status));
  while (U_SUCCESS(status) != 0) {
    auto const* const known = names->snext(status);
    if (known == nullptr) {
      break;
    }
    if (known->caseCompare(name, U_FOLD_CASE_DEFAULT) == 0) {
      return *known;
    }
  }
  return std::nullopt;
}

}  // namespace

struct TimeZone::Data {
  std::string name;
  std::vector<TimeZonePeriod> periods;  ///< the first one begins before any moment
};

TimeZone::TimeZone() {
  static auto const universal = std::make_shared<Data const>(
      Data{.name = "UTC", .periods = {{.start = milliseconds::min(), .offset = {}}}});
  _data = universal;
}

TimeZone::TimeZone(std::string const& name) {
  auto spelling = icu::UnicodeString::fromUTF8(name);
  auto zone = makeZone(spelling);
  if (zone == nullptr) {
    spelling = findSpelling(spelling).value_or(spelling);
    zone = makeZone(spelling);
  }
  auto const* const basicZone = dynamic_cast<icu::BasicTimeZone const*>(zone.get());
  if (basicZone == nullptr) {
    throw BaseRuntimeError("unknown time zone \"" + name + "\"");
  }
  Data data{.name = {}, .periods = listPeriods(*basicZone)};
  spelling.toUTF8String(data.name);
  _data = std::make_shared<Data const>(std::move(data));
}

std::string const& TimeZone::getName() const noexcept { return _data->name; }

std::chrono::local_time<milliseconds> TimeZone::toLocal(
    std::chrono::sys_time<std::chrono::microseconds> moment) const {
  auto const universal = std::chrono::floor<milliseconds>(moment.time_since_epoch());
  auto const next =
      std::ranges::upper_bound(_data->periods, moveIntoList(universal), {}, &TimeZonePeriod::start);
  return std::chrono::local_time<milliseconds>(universal + std::prev(next)->offset);
}

}  // namespace Zorv::DOM
