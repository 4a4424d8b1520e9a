#include "OfficeUtils/PinnedMoment.h"

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

namespace Zorv::OfficeUtils {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

constexpr Clock::TimePoint inForce = sys_days(2024y / 2 / 29) + 12h;
constexpr Clock::TimePoint pinned = sys_days(2026y / 11 / 21) + 23h + 30min;
constexpr double pinnedDay = 46347;

TEST(PinnedMoment, WithoutAScopeTheClockInForceIsRead) {
  ScopedClock const clock(inForce);
  EXPECT_EQ(PinnedMoment::getCurrent(), nullptr);
  EXPECT_EQ(PinnedMoment::readMoment(), inForce);
}

TEST(PinnedMoment, FixesTheMomentForItsThreadUntilTheScopeEnds) {
  ScopedClock const clock(inForce);
  {
    PinnedMoment const outer(pinned);
    EXPECT_EQ(PinnedMoment::readMoment(), pinned);
    {
      PinnedMoment const inner(pinned + 1h);
      EXPECT_EQ(PinnedMoment::readMoment(), pinned + 1h);
    }
    EXPECT_EQ(PinnedMoment::readMoment(), pinned);
    std::jthread([] { EXPECT_EQ(PinnedMoment::readMoment(), inForce); }).join();
  }
  EXPECT_EQ(PinnedMoment::readMoment(), inForce);
}

TEST(PinnedMoment, NowIsTheCivilTimeOfTheZone) {
  ScopedClock const clock(inForce);
  PinnedMoment const scope(pinned);
  LocaleContext const since1900("en-US");
  LocaleContext const since1904("en-US", DateSystem::Since1904);
  DOM::TimeZone const utc;
  DOM::TimeZone const berlin("Europe/Berlin");  // an hour later: the next day
  // Each again after the others, since the last answer is remembered.
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(DateTime::getNow(utc, since1900).calculateDays().get(), pinnedDay);
    EXPECT_EQ(DateTime::getNow(berlin, since1900).calculateDays().get(), pinnedDay + 1);
    EXPECT_EQ(DateTime::getNow(berlin, since1904).calculateDays().get(), pinnedDay + 1 - 1462);
    EXPECT_EQ(DateTime::getNow(utc, since1904).calculateDays().get(), pinnedDay - 1462);
  }
}

TEST(PinnedMoment, NowHasTheWeekAndTheMonthThatAnUnpinnedClockWouldGive) {
  // 1 March 2026 is a Sunday: the week has begun in America and not in Germany.
  Clock::TimePoint const moment = sys_days(2026y / 3 / 1) + 1h;
  DOM::TimeZone const utc;
  for (auto const* const name : {"en-US", "de-DE"}) {
    LocaleContext const locale(name);
    auto const expected = DateTime::fromMoment(moment, utc, locale);
    PinnedMoment const scope(moment);
    DateTime const now = DateTime::getNow(utc, locale);
    EXPECT_EQ(now.getSerial().get(), expected.getSerial().get()) << name;
    EXPECT_EQ(now.getMonth(), expected.getMonth()) << name;
    EXPECT_EQ(now.getYearWeek(), expected.getYearWeek()) << name;
  }
}

}  // namespace
}  // namespace Zorv::OfficeUtils
