#pragma once

#include <optional>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/DateTime.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// A fixed moment, and the date and time that it is in a time zone.
///
/// Keeps the last date and time that it was asked for: a time zone looks its offset up in a table,
/// and the week and the month take a calendar. Threads: for one thread at a time.
class ZORV_HOST_EXPORT Moment {
public:
  explicit Moment(Clock::TimePoint timePoint) noexcept : _timePoint(timePoint) {}

  [[nodiscard]] Clock::TimePoint getTimePoint() const noexcept { return _timePoint; }

  /// The date and time that clocks in the zone show. The reference is valid until the next call.
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

}  // namespace Zorv::OfficeUtils
