#include "OfficeUtils/TimeZone.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include "Utils/Exceptions.h"

namespace Zorv::DOM {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using std::chrono::sys_days;

TEST(TimeZone, IsUniversalTimeByDefault) {
  TimeZone const zone;
  EXPECT_EQ(zone.getName(), "UTC");
  EXPECT_EQ(zone.toLocal(sys_days(2024y / 7 / 1) + 5h), local_days(2024y / 7 / 1) + 5h);
}

struct ZoneCase {
  char const* name;
  std::chrono::sys_time<std::chrono::minutes> moment;
  std::chrono::local_time<std::chrono::minutes> local;
};

TEST(TimeZone, ShowsTheCivilTimeOfTheMoment) {
  for (ZoneCase const& row : std::vector<ZoneCase>{
           // The clocks of Berlin go forward on 31 March 2024 at 1:00 and back on 27 October.
           {"Europe/Berlin", sys_days(2024y / 3 / 31) + 59min, local_days(2024y / 3 / 31) + 119min},
           {"Europe/Berlin", sys_days(2024y / 3 / 31) + 1h, local_days(2024y / 3 / 31) + 3h},
           {"Europe/Berlin", sys_days(2024y / 10 / 27) + 59min,
            local_days(2024y / 10 / 27) + 179min},
           {"Europe/Berlin", sys_days(2024y / 10 / 27) + 1h, local_days(2024y / 10 / 27) + 2h},
           // Half an hour of daylight saving, in the southern summer.
           {"Australia/Lord_Howe", sys_days(2024y / 1 / 1), local_days(2024y / 1 / 1) + 11h},
           {"Australia/Lord_Howe", sys_days(2024y / 7 / 1),
            local_days(2024y / 7 / 1) + 10h + 30min},
           {"America/New_York", sys_days(2024y / 1 / 1) + 4h, local_days(2023y / 12 / 31) + 23h},
           {"Asia/Kathmandu", sys_days(2024y / 1 / 1), local_days(2024y / 1 / 1) + 5h + 45min},
           {"UTC", sys_days(2024y / 1 / 1), local_days(2024y / 1 / 1)},
           {"Europe/Berlin", sys_days(1950y / 1 / 1), local_days(1950y / 1 / 1) + 1h},
           {"Europe/Berlin", sys_days(2090y / 7 / 1), local_days(2090y / 7 / 1) + 2h},
           {"Europe/Berlin", sys_days(2499y / 12 / 31), local_days(2499y / 12 / 31) + 1h},
           {"Europe/Berlin", sys_days(2500y / 1 / 1), local_days(2500y / 1 / 1) + 1h},
           {"Europe/Berlin", sys_days(9999y / 7 / 1), local_days(9999y / 7 / 1) + 2h},
       }) {
    EXPECT_EQ(TimeZone(row.name).toLocal(row.moment), row.local) << row.name;
  }
}

TEST(TimeZone, KeepsMillisecondsAndDropsSmallerUnits) {
  EXPECT_EQ(TimeZone("Europe/Berlin").toLocal(sys_days(2024y / 1 / 1) + 1ms + 900us),
            local_days(2024y / 1 / 1) + 1h + 1ms);
  EXPECT_EQ(TimeZone().toLocal(sys_days(1960y / 1 / 1) + 900us), local_days(1960y / 1 / 1));
}

/// The offset, read directly from the zone database.
std::chrono::milliseconds offsetByDatabase(icu::TimeZone const& zone,
                                           std::chrono::milliseconds moment) {
  std::int32_t raw = 0;
  std::int32_t daylightSaving = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone.getOffset(static_cast<UDate>(moment.count()), false, raw, daylightSaving, status);
  EXPECT_TRUE(U_SUCCESS(status));
  return std::chrono::milliseconds(raw + daylightSaving);
}

TEST(TimeZone, AgreesWithTheDatabaseInEveryYear) {
  using Moment = std::chrono::sys_time<std::chrono::microseconds>;
  std::mt19937_64 generator(11);
  std::uniform_int_distribution<Moment::rep> anyTime(
      Moment(sys_days(1600y / 1 / 1)).time_since_epoch().count(),
      Moment(sys_days(10'100y / 1 / 1)).time_since_epoch().count());
  for (char const* name : {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe",
                           "Africa/Casablanca", "Asia/Kathmandu", "Pacific/Apia", "GMT+2"}) {
    TimeZone const zone(name);
    std::unique_ptr<icu::TimeZone const> const database(icu::TimeZone::createTimeZone(name));
    for (int i = 0; i < 2000; ++i) {
      Moment const moment{Moment::duration(anyTime(generator))};
      auto const universal = std::chrono::floor<std::chrono::milliseconds>(moment);
      ASSERT_EQ(zone.toLocal(moment).time_since_epoch() - universal.time_since_epoch(),
                offsetByDatabase(*database, universal.time_since_epoch()))
          << name << ' ' << universal.time_since_epoch().count();
    }
  }
}

TEST(TimeZone, LetterCaseOfANameDoesNotMatter) {
  EXPECT_EQ(TimeZone("utc").getName(), "UTC");
  TimeZone const zone("europe/BERLIN");
  EXPECT_EQ(zone.getName(), "Europe/Berlin");
  EXPECT_EQ(zone.toLocal(sys_days(2024y / 7 / 1)), local_days(2024y / 7 / 1) + 2h);
}

TEST(TimeZone, CopiesShareTheirData) {
  TimeZone const zone("Europe/Berlin");
  TimeZone const copy = zone;
  EXPECT_EQ(&copy.getName(), &zone.getName());
}

TEST(TimeZone, RefusesUnknownZones) {
  for (char const* unknown : {"", "Nowhere/Land", "Etc/Unknown", "Berlin"}) {
    EXPECT_THROW(TimeZone{unknown}, BaseRuntimeError) << unknown;
  }
}

}  // namespace
}  // namespace Zorv::DOM
