#pragma once

#include <optional>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/DateTime.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Fixed moment, with its civil time in a time zone.
///
/// Caches the civil time for the last zone and locale, since the offset needs a look-up and the
/// calendar a computation. Threads: one thread at a time.
class ZORV_HOST_EXPORT Moment {
public:
  /// A moment in universal time.
  explicit Moment(Clock::TimePoint timePoint) noexcept : _timePoint(timePoint) {}

  /// The moment in universal time.
  [[nodiscard]] Clock::TimePoint getTimePoint() const noexcept { return _timePoint; }

  /// The civil time of the zone. The reference is valid until the next call.
  [[nodiscard]] DateTime const& toDateTime(DOM::TimeZone const& timeZone,
                                           LocaleContext const& locale);

private:
  struct LastAnswer {
    DOM::TimeZone timeZone;
    LocaleContext locale;
    DateTime dateTime;
  };

  Clock::TimePoint _timePoint;
  std::optional<LastAnswer> _last;
};

/// The current date and time in a time zone: those of `moment`, or if that is null those of the
/// clock, see DateTime::getNow().
[[nodiscard]] inline DateTime readNow(Moment* moment, DOM::TimeZone const& timeZone,
                                      LocaleContext const& locale) {
  return moment != nullptr ? moment->toDateTime(timeZone, locale)
                           : DateTime::getNow(timeZone, locale);
}

}  // namespace Zorv::OfficeUtils
