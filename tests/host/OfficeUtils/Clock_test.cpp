#include "OfficeUtils/Clock.h"

#include <chrono>
#include <memory>

#include <gtest/gtest.h>

namespace Zorv::OfficeUtils {
namespace {

using std::chrono::seconds;

Clock::TimePoint at(int second) { return Clock::TimePoint(seconds(second)); }

TEST(Clock, ReadsTheSystemsClockByDefault) {
  // A moment of the clock is the microsecond that has begun.
  auto const before =
      std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
  auto const read = Clock::readCurrent();
  auto const after = std::chrono::system_clock::now();
  EXPECT_LE(before, read);
  EXPECT_LE(read, after);
}

TEST(ScopedClock, IsInForceUntilItsScopeEnds) {
  {
    ScopedClock const clock(at(1000));
    EXPECT_EQ(Clock::readCurrent(), at(1000));
  }
  EXPECT_GT(Clock::readCurrent(), at(1000));
}

TEST(ScopedClock, Nests) {
  ScopedClock const outer(at(1));
  {
    ScopedClock const middle(at(2));
    {
      ScopedClock const inner(at(3));
      EXPECT_EQ(Clock::readCurrent(), at(3));
    }
    EXPECT_EQ(Clock::readCurrent(), at(2));
  }
  EXPECT_EQ(Clock::readCurrent(), at(1));
}

TEST(ScopedClock, PutsTheSystemsClockInForceForANullOne) {
  ScopedClock const outer(at(1));
  ScopedClock const inner(std::shared_ptr<Clock const>{});
  EXPECT_GT(Clock::readCurrent(), at(1));
}

TEST(ScopedClock, AsksItsClockEachTime) {
  class Counter final : public Clock {
  public:
    [[nodiscard]] TimePoint now() const override { return at(++_calls); }

  private:
    mutable int _calls = 0;
  };
  ScopedClock const clock(std::make_shared<Counter const>());
  EXPECT_EQ(Clock::readCurrent(), at(1));
  EXPECT_EQ(Clock::readCurrent(), at(2));
}

TEST(ScopedClock, LetsGoOfItsClock) {
  auto const clock = std::make_shared<FixedClock const>(at(5));
  {
    ScopedClock const scope(clock);
    EXPECT_GT(clock.use_count(), 1);
  }
  EXPECT_EQ(clock.use_count(), 1);
}

}  // namespace
}  // namespace Zorv::OfficeUtils
