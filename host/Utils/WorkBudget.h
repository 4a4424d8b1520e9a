#pragma once

#include <atomic>
#include <cstdint>
#include <limits>
#include <stop_token>
#include <string>
#include <utility>

#include "Utils/Exceptions.h"
#include "Utils/Export.h"

namespace Zorv {

/// Base of the exceptions by which a caller's budget ends work as a whole; never the failure of a
/// single cell.
class ZORV_HOST_EXPORT WorkEnded : public BaseRuntimeError {
public:
  explicit WorkEnded(std::string const& message);
  WorkEnded(WorkEnded const&) = default;
  WorkEnded& operator=(WorkEnded const&) = default;
  ~WorkEnded() override;
};

/// Thrown when work has used up the steps or the memory that its caller allows.
class ZORV_HOST_EXPORT WorkBudgetExceeded : public WorkEnded {
public:
  explicit WorkBudgetExceeded(std::string const& message);
  WorkBudgetExceeded(WorkBudgetExceeded const&) = default;
  WorkBudgetExceeded& operator=(WorkBudgetExceeded const&) = default;
  ~WorkBudgetExceeded() override;
};

/// Thrown when work ends early because its caller requested a stop.
class ZORV_HOST_EXPORT WorkStopped : public WorkEnded {
public:
  explicit WorkStopped(std::string const& message);
  WorkStopped(WorkStopped const&) = default;
  WorkStopped& operator=(WorkStopped const&) = default;
  ~WorkStopped() override;
};

/// Limits that a caller sets to a piece of work, and a way to stop it from outside.
///
/// The caller makes a budget and lends it to the work, which spends from it: steps, where one step
/// is about the reading of one cell or element, some nanoseconds; and bytes of memory, counted when
/// they are taken and never given back. What exceeds a limit ends the work by an exception. One
/// budget may serve several pieces of work, which then share its limits.
///
/// Threads: all operations may run concurrently. Cost: an atomic addition and a look at the stop
/// token; callers that count single steps spend them in lumps, see StepCounter.
class ZORV_HOST_EXPORT WorkBudget {
public:
  /// No limit.
  static constexpr std::uint64_t unlimited = std::numeric_limits<std::uint64_t>::max();

  /// Limits of the work in all.
  struct Limits {
    std::uint64_t steps = unlimited;  ///< most steps
    std::uint64_t bytes = unlimited;  ///< most bytes of memory
  };

  /// A request to `stop` ends the work at its next step.
  explicit WorkBudget(Limits limits, std::stop_token stop = {}) noexcept;
  WorkBudget(WorkBudget const&) = delete;
  WorkBudget& operator=(WorkBudget const&) = delete;
  ~WorkBudget() = default;

  /// Throws WorkStopped after a request to stop, and WorkBudgetExceeded if the limit is exceeded.
  void spend(std::uint64_t steps);
  /// The same for memory.
  void takeMemory(std::uint64_t bytes);

  /// The steps spent so far.
  [[nodiscard]] std::uint64_t getSteps() const noexcept {
    return _steps.load(std::memory_order_relaxed);
  }
  /// The bytes taken so far.
  [[nodiscard]] std::uint64_t getBytes() const noexcept {
    return _bytes.load(std::memory_order_relaxed);
  }

private:
  Limits _limits;
  std::stop_token _stop;
  std::atomic<std::uint64_t> _steps = 0;
  std::atomic<std::uint64_t> _bytes = 0;
};

/// Counts steps for one thread, and spends them from a budget in lumps.
///
/// Borrows the budget; without one, counting has no effect. Steps that are left when the counter
/// ends are not spent.
class StepCounter {
public:
  /// Counts from 0.
  explicit StepCounter(WorkBudget* budget) noexcept : _budget(budget) {}

  /// Throws like WorkBudget::spend().
  void count(std::uint64_t steps = 1) {
    if (_budget != nullptr) {
      _pending += steps;
      if (_pending >= lump) {
        _budget->spend(std::exchange(_pending, 0));
      }
    }
  }

private:
  static constexpr std::uint64_t lump = 1024;

  WorkBudget* _budget;
  std::uint64_t _pending = 0;
};

}  // namespace Zorv
