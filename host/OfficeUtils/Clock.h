#pragma once

#include <chrono>
#include <memory>

#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Where the current moment comes from: the system's clock, unless a ScopedClock is in force.
///
/// Threads: now() is called from any thread and must be safe for that.
class ZORV_HOST_EXPORT Clock {
public:
  using TimePoint = std::chrono::system_clock::time_point;

  Clock() = default;
  Clock(Clock const&) = delete;
  Clock& operator=(Clock const&) = delete;
  virtual ~Clock();

  [[nodiscard]] virtual TimePoint now() const = 0;

  /// The current moment by the clock in force.
  [[nodiscard]] static TimePoint readCurrent();
};

/// A clock that stands still.
class ZORV_HOST_EXPORT FixedClock final : public Clock {
public:
  explicit FixedClock(TimePoint moment) noexcept : _moment(moment) {}
  [[nodiscard]] TimePoint now() const override;

private:
  TimePoint _moment;
};

/// Puts a clock in force for the whole process until the scope ends, then the one before it.
///
/// Scopes nest and end in reverse order. Threads that read the clock meanwhile see the one or the
/// other, and keep the one they see alive while they read it.
class ZORV_HOST_EXPORT ScopedClock {
public:
  explicit ScopedClock(std::shared_ptr<Clock const> clock);
  explicit ScopedClock(Clock::TimePoint moment);
  ScopedClock(ScopedClock const&) = delete;
  ScopedClock& operator=(ScopedClock const&) = delete;
  ~ScopedClock();

private:
  std::shared_ptr<Clock const> _previous;
};

}  // namespace Zorv::OfficeUtils
