#include "OfficeUtils/TimeZone.h"

#include <utility>

#include <unicode/timezone.h>
#include <unicode/ucal.h>
#include <unicode/unistr.h>

#include "Utils/Exceptions.h"

namespace Zorv::DOM {

using std::chrono::milliseconds;

struct TimeZone::Data {
  std::string name;
  /// Null for coordinated universal time, which needs no look-up.
  std::unique_ptr<icu::TimeZone const> zone;
};

TimeZone::TimeZone() {
  static auto const universal = std::make_shared<Data const>(Data{.name = "UTC", .zone = nullptr});
  _data = universal;
}

TimeZone::TimeZone(std::string const& name) {
  std::unique_ptr<icu::TimeZone const> zone(
      icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
  icu::UnicodeString id;
  if (!zone || zone->getID(id) == icu::UnicodeString(UCAL_UNKNOWN_ZONE_ID)) {
    throw BaseRuntimeError("unknown time zone \"" + name + "\"");
  }
  _data = std::make_shared<Data const>(Data{.name = name, .zone = std::move(zone)});
}

std::string const& TimeZone::getName() const noexcept { return _data->name; }

std::chrono::local_time<milliseconds> TimeZone::toLocal(
    std::chrono::system_clock::time_point moment) const {
  auto const universal = std::chrono::floor<milliseconds>(moment.time_since_epoch());
  if (!_data->zone) {
    return std::chrono::local_time<milliseconds>(universal);
  }
  std::int32_t rawOffset = 0;
  std::int32_t daylightSaving = 0;
  UErrorCode status = U_ZERO_ERROR;
  _data->zone->getOffset(static_cast<UDate>(universal.count()), false, rawOffset, daylightSaving,
                         status);
  if (U_FAILURE(status)) {
    throw BaseRuntimeError("no offset of time zone \"" + _data->name +
                           "\": " + u_errorName(status));
  }
  return std::chrono::local_time<milliseconds>(universal +
                                               milliseconds(rawOffset + daylightSaving));
}

}  // namespace Zorv::DOM
