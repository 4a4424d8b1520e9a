#pragma once

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/TimeZone.h"

// The days of a time zone.
namespace Zorv::ConditionalFormatters {

/// True if two moments lie on one day.
[[nodiscard]] bool areOnOneDay(OfficeUtils::Clock::TimePoint a, OfficeUtils::Clock::TimePoint b,
                               DOM::TimeZone const& timeZone);

/// The first moment after another one that lies on another day: midnight, or where the clocks are
/// put forward over midnight the first moment after it. Costs some hundred look-ups.
[[nodiscard]] OfficeUtils::Clock::TimePoint findNextDay(OfficeUtils::Clock::TimePoint moment,
                                                        DOM::TimeZone const& timeZone);

}  // namespace Zorv::ConditionalFormatters
