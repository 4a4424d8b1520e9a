#include "OfficeUtils/TimeZone.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>
#include <vector>

#include <unicode/basictz.h>
#include <unicode/tzrule.h>
#include <unicode/tztrans.h>
#include <unicode/ucal.h>
#include <unicode/unistr.h>

#include "Utils/Exceptions.h"

namespace Zorv::DOM {

using std::chrono::milliseconds;
using std::chrono::system_clock;

/// Period with a fixed offset from coordinated universal time.
struct TimeZonePeriod {
  milliseconds start;  ///< since the system clock's epoch
  milliseconds offset;
};

namespace {

milliseconds toMilliseconds(system_clock::time_point moment) noexcept {
  return std::chrono::floor<milliseconds>(moment.time_since_epoch());
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

/// The periods of a zone over the range of the system clock, in order. They are some hundreds; a
/// look-up is then a binary search.
std::vector<TimeZonePeriod> listPeriods(icu::BasicTimeZone const& zone) {
  milliseconds const first = toMilliseconds(system_clock::time_point::min());
  milliseconds const last = toMilliseconds(system_clock::time_point::max());
  std::vector<TimeZonePeriod> periods{
      {.start = milliseconds::min(), .offset = findOffset(zone, first)},
  };
  auto time = static_cast<UDate>(first.count());
  icu::TimeZoneTransition transition;
  while (zone.getNextTransition(time, 0, transition) != 0) {
    time = transition.getTime();
    if (time > static_cast<UDate>(last.count())) {
      break;
    }
    auto const* const rule = transition.getTo();
    periods.push_back({.start = milliseconds(static_cast<std::int64_t>(time)),
                       .offset = milliseconds(rule->getRawOffset() + rule->getDSTSavings())});
  }
  return periods;
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
  std::unique_ptr<icu::TimeZone const> const zone(
      icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
  auto const* const basicZone = dynamic_cast<icu::BasicTimeZone const*>(zone.get());
  icu::UnicodeString id;
  if (basicZone == nullptr || basicZone->getID(id) == UCAL_UNKNOWN_ZONE_ID) {
    throw BaseRuntimeError("unknown time zone \"" + name + "\"");
  }
  _data = std::make_shared<Data const>(Data{.name = name, .periods = listPeriods(*basicZone)});
}

std::string const& TimeZone::getName() const noexcept { return _data->name; }

std::chrono::local_time<milliseconds> TimeZone::toLocal(system_clock::time_point moment) const {
  milliseconds const universal = toMilliseconds(moment);
  auto const next = std::ranges::upper_bound(_data->periods, universal, {}, &TimeZonePeriod::start);
  return std::chrono::local_time<milliseconds>(universal + std::prev(next)->offset);
}

}  // namespace Zorv::DOM
