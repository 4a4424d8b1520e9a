#include "OfficeUtils/Clock.h"

#include <atomic>
#include <mutex>
#include <utility>

namespace Zorv::OfficeUtils {

namespace {

// The clock in force; null for the system's. Guarded by the mutex.
constinit std::mutex clockMutex;
constinit std::shared_ptr<Clock const> currentClock;

// True while a ScopedClock is in force. Avoids the lock while there is none.
constinit std::atomic<bool> isReplaced = false;

std::shared_ptr<Clock const> exchangeClock(std::shared_ptr<Clock const> clock) {
  std::scoped_lock const lock(clockMutex);
  isReplaced.store(clock != nullptr, std::memory_order_release);
  return std::exchange(currentClock, std::move(clock));
}

std::shared_ptr<Clock const> getClock() {
  std::scoped_lock const lock(clockMutex);
  return currentClock;
}

}  // namespace

Clock::~Clock() = default;

Clock::TimePoint Clock::readCurrent() {
  if (isReplaced.load(std::memory_order_acquire)) {
    if (auto const clock = getClock()) {
      return clock->now();
    }
  }
  return std::chrono::floor<TimePoint::duration>(std::chrono::system_clock::now());
}

Clock::TimePoint FixedClock::now() const { return _moment; }

ScopedClock::ScopedClock(std::shared_ptr<Clock const> clock)
    : _previous(exchangeClock(std::move(clock))) {}

ScopedClock::ScopedClock(Clock::TimePoint moment)
    : ScopedClock(std::make_shared<FixedClock const>(moment)) {}

ScopedClock::~ScopedClock() { exchangeClock(std::move(_previous)); }

}  // namespace Zorv::OfficeUtils
