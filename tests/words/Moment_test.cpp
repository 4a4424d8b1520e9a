#include "words/Moment.h"

#include <chrono>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Words {
namespace {

using namespace std::chrono_literals;

OfficeUtils::Clock::TimePoint utc(std::chrono::sys_days day, std::chrono::seconds time) {
  return OfficeUtils::Clock::TimePoint(day + time);
}

std::optional<OfficeUtils::Clock::TimePoint> inBerlin(char const* text) {
  return toMoment(*parseCivilTime(text), DOM::TimeZone("Europe/Berlin"));
}

TEST(Moment, ReadsThreeForms) {
  for (std::string const text : {"2026-11-21T00:00:00", "2026-11-21T00:00", "2026-11-21"}) {
    auto const time = parseCivilTime(text);
    ASSERT_TRUE(time) << text;
    EXPECT_EQ(toText(time->local), "2026-11-21T00:00:00") << text;
    EXPECT_FALSE(time->offset) << text;
  }
  EXPECT_EQ(toText(parseCivilTime("2026-11-21T23:59:58")->local), "2026-11-21T23:59:58");
  EXPECT_EQ(toText(parseCivilTime("2026-11-21 23:59")->local), "2026-11-21T23:59:00");
}

TEST(Moment, RefusesWhatIsNoDateOrTime) {
  for (auto const* text : {"",
                           "today",
                           "2026-11-21_12:00:00",
                           "2026-11-31",
                           "2026-13-01",
                           "2026-02-29",
                           "2026-11-21T24:00",
                           "2026-11-21T12:60",
                           "2026-11-21T12:00:60",
                           "21.11.2026",
                           "2026-1-1",
                           "2026-11-21T12",
                           "20261121",
                           "2026-11-21T12:00:00+",
                           "2026-11-21T12:00:00+1:00",
                           "2026-11-21T12:00:00+24:00",
                           "2026-11-21T12:00:00+01:60",
                           "2026-11-21T12:00:00Zulu",
                           "2026-11-21T12:00:00 Z",
                           "2026-11-21?12:00:00"}) {
    EXPECT_FALSE(parseCivilTime(text)) << text;
  }
}

TEST(Moment, ATimeWithAnOffsetNeedsNoZone) {
  using namespace std::chrono;
  auto const noon = utc(2026y / November / 21, 12h);
  for (auto const* text : {"2026-11-21T12:00:00Z", "2026-11-21T13:00:00+01:00",
                           "2026-11-21 06:30-0530", "2026-11-21T13:00+0100"}) {
    EXPECT_EQ(inBerlin(text), noon) << text;
  }
}

TEST(Moment, ReachesFrom1900To9999) {
  using namespace std::chrono;
  EXPECT_EQ(inBerlin("9999-12-31T12:00"), utc(9999y / December / 31, 11h));
  EXPECT_EQ(inBerlin("1900-01-01T12:00"), utc(1900y / January / 1, 11h));
  EXPECT_EQ(inBerlin("2500-07-01T12:00"), utc(2500y / July / 1, 10h));
}

TEST(Moment, IsWhenClocksOfTheZoneShowTheTime) {
  using namespace std::chrono;
  EXPECT_EQ(toMoment(*parseCivilTime("2026-11-21T12:00"), DOM::TimeZone()),
            utc(2026y / November / 21, 12h));
  EXPECT_EQ(inBerlin("2026-11-21T12:00"), utc(2026y / November / 21, 11h));
  EXPECT_EQ(inBerlin("2026-07-01T00:30"), utc(2026y / June / 30, 22h + 30min));
}

TEST(Moment, OfTwoIsTheEarlier) {
  using namespace std::chrono;
  // Clocks went back from three to two o'clock.
  EXPECT_EQ(inBerlin("2026-10-25T02:30"), utc(2026y / October / 25, 0h + 30min));
  EXPECT_EQ(inBerlin("2026-10-25T03:30"), utc(2026y / October / 25, 2h + 30min));
}

TEST(Moment, SkippedByTheClocksIsNone) {
  EXPECT_FALSE(inBerlin("2026-03-29T02:30"));
  EXPECT_TRUE(inBerlin("2026-03-29T03:00"));
}

}  // namespace
}  // namespace Zorv::Words
