#include "ConditionalFormatters/Live/CndFrmt_Days.h"

#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

using namespace std::chrono;
using OfficeUtils::Clock;

TEST(Days, BeginAtMidnightOfTheZone) {
  struct Case {
    char const* zone;
    Clock::TimePoint moment;
    Clock::TimePoint nextDay;
  };
  sys_days const november21 = 2026y / November / 21;
  std::vector<Case> const cases = {
      {"UTC", november21 + hours(12), november21 + hours(24)},
      {"UTC", november21, november21 + hours(24)},
      {"UTC", november21 + hours(24) - microseconds(1), november21 + hours(24)},
      {"Europe/Berlin", november21 + hours(12), november21 + hours(23)},
      {"Asia/Kolkata", november21 + hours(12), november21 + hours(18) + minutes(30)},
      // A day of 25 hours, and one of 23.
      {"Europe/Berlin", sys_days(2026y / October / 24) + hours(22),
       sys_days(2026y / October / 25) + hours(23)},
      {"Europe/Berlin", sys_days(2026y / March / 28) + hours(23),
       sys_days(2026y / March / 29) + hours(22)},
      // The 30th of December was left out.
      {"Pacific/Apia", sys_days(2011y / December / 29) + hours(12),
       sys_days(2011y / December / 30) + hours(10)},
  };
  for (Case const& c : cases) {
    DOM::TimeZone const zone(c.zone);
    EXPECT_EQ(findNextDay(c.moment, zone), c.nextDay) << c.zone;
    EXPECT_TRUE(areOnOneDay(c.moment, c.nextDay - microseconds(1), zone)) << c.zone;
    EXPECT_FALSE(areOnOneDay(c.moment, c.nextDay, zone)) << c.zone;
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
