#include "ConditionalFormatters/Live/CndFrmt_Days.h"

#include <chrono>

namespace Zorv::ConditionalFormatters {

namespace {

using OfficeUtils::Clock;

std::chrono::local_days dayOf(Clock::TimePoint moment, DOM::TimeZone const& timeZone) {
  return std::chrono::floor<std::chrono::days>(timeZone.toLocal(moment));
}

}  // namespace

bool areOnOneDay(Clock::TimePoint a, Clock::TimePoint b, DOM::TimeZone const& timeZone) {
  return dayOf(a, timeZone) == dayOf(b, timeZone);
}

Clock::TimePoint findNextDay(Clock::TimePoint moment, DOM::TimeZone const& timeZone) {
  // Zones change their offset in the middle of days, so that midnight is not a number of hours
  // away.
  Clock::TimePoint before = moment;
  Clock::TimePoint after = moment + std::chrono::hours(1);
  while (areOnOneDay(moment, after, timeZone)) {
    before = after;
    after += std::chrono::hours(1);
  }
  while (after - before > Clock::TimePoint::duration(1)) {
    Clock::TimePoint const middle = before + (after - before) / 2;
    (areOnOneDay(moment, middle, timeZone) ? before : after) = middle;
  }
  return after;
}

}  // namespace Zorv::ConditionalFormatters
