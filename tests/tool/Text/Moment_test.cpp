#include "tool/Text/Moment.h"

#include <chrono>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

using namespace std::chrono_literals;

OfficeUtils::Clock::TimePoint utc(std::chrono::sys_days day, std::chrono::seconds time) {
  return OfficeUtils::Clock::TimePoint(day + time);
}

std::optional<OfficeUtils::Clock::TimePoint> inBerlin(char const* text) {
  return toMoment(*parseLocalTime(text), DOM::TimeZone("Europe/Berlin"));
}

TEST(Moment, ReadsThreeForms) {
  for (std::string const text : {"2026-11-21T00:00:00", "2026-11-21T00:00", "2026-11-21"}) {
    auto const local = parseLocalTime(text);
    ASSERT_TRUE(local) << text;
    EXPECT_EQ(toText(*local), "2026-11-21T00:00:00") << text;
  }
  EXPECT_EQ(toText(*parseLocalTime("2026-11-21T23:59:58")), "2026-11-21T23:59:58");
}

TEST(Moment, RefusesWhatIsNoDateOrTime) {
  for (auto const* text :
       {"", "today", "2026-11-21 12:00:00", "2026-11-31", "2026-13-01", "2026-02-29",
        "2026-11-21T24:00", "2026-11-21T12:60", "2026-11-21T12:00:60", "2026-11-21T12:00:00Z",
        "21.11.2026", "2026-1-1", "2026-11-21T12", "20261121"}) {
    EXPECT_FALSE(parseLocalTime(text)) << text;
  }
}

TEST(Moment, IsWhenClocksOfTheZoneShowTheTime) {
  using namespace std::chrono;
  EXPECT_EQ(toMoment(*parseLocalTime("2026-11-21T12:00"), DOM::TimeZone()),
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
}  // namespace Zorv::Tool
