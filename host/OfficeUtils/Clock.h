#pragma once

#include <chrono>
#include <memory>

#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Source of the current moment: the system's clock, unless a ScopedClock is in force.
///
/// Threads: now() is called from any thread, also concurrently.
class ZORV_HOST_EXPORT Clock {
public:
  /// Universal time in microseconds: every date of a sheet, 1900 to 9999, lies far inside. The
  /// system's clock counts nanoseconds and ends in the year 2262.
  using TimePoint = std::chrono::sys_time<std::chrono::microseconds>;

  Clock() = default;
  Clock(Clock const&) = delete;
  Clock& operator=(Clock const&) = delete;
  virtual ~Clock();

  /// The current moment.
  [[nodiscard]] virtual TimePoint now() const = 0;

  /// The current moment by the clock in force.
  [[nodiscard]] static TimePoint readCurrent();
};

/// Clock that always shows the same moment.
class ZORV_HOST_EXPORT FixedClock final : public Clock {
public:
  /// Shows that moment.
  explicit FixedClock(TimePoint moment) noexcept : _moment(moment) {}
  /// Always the same moment.
  [[nodiscard]] TimePoint now() const override;

private:
  TimePoint _moment;
};

/// Puts a clock in force for the whole process; the end of the scope restores the previous one.
///
/// Scopes nest and must end in reverse order. Threads: other threads may read the clock at any
/// time; they see either clock, and the one that they read stays alive meanwhile.
class ZORV_HOST_EXPORT ScopedClock {
public:
  /// Null for the clock of the system.
  explicit ScopedClock(std::shared_ptr<Clock const> clock);
  /// Puts a FixedClock in force.
  explicit ScopedClock(Clock::TimePoint moment);
  ScopedClock(ScopedClock const&) = delete;
  ScopedClock& operator=(ScopedClock const&) = delete;
  ~ScopedClock();

private:
  std::shared_ptr<Clock const> _previous;
};

}  // namespace Zorv::OfficeUtils
