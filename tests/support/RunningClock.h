#pragma once

#include <chrono>

#include "OfficeUtils/Clock.h"

namespace Zorv::TestSupport {

/// The moment of tests that look at the date.
inline OfficeUtils::Clock::TimePoint noonOn21November() {
  using namespace std::chrono;
  return sys_days(2026y / November / 21) + hours(12);
}

/// A clock that goes on a day each time it is read, from noon on 21 November.
class RunningClock final : public OfficeUtils::Clock {
public:
  [[nodiscard]] TimePoint now() const override {
    return noonOn21November() + std::chrono::days(_reads++);
  }

private:
  mutable int _reads = 0;
};

}  // namespace Zorv::TestSupport
