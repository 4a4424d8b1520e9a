#include "Utils/WorkBudget.h"

#include <utility>

#include <fmt/format.h>

namespace Zorv {

WorkEnded::WorkEnded(std::string const& message) : BaseRuntimeError(message) {}
WorkEnded::~WorkEnded() = default;

WorkBudgetExceeded::WorkBudgetExceeded(std::string const& message) : WorkEnded(message) {}
WorkBudgetExceeded::~WorkBudgetExceeded() = default;

WorkStopped::WorkStopped(std::string const& message) : WorkEnded(message) {}
WorkStopped::~WorkStopped() = default;

namespace {

/// Adds to a sum that stays at the greatest number instead of wrapping around.
std::uint64_t addTo(std::atomic<std::uint64_t>& sum, std::uint64_t added) noexcept {
  std::uint64_t const before = sum.fetch_add(added, std::memory_order_relaxed);
  if (before <= WorkBudget::unlimited - added) {
    return before + added;
  }
  sum.store(WorkBudget::unlimited, std::memory_order_relaxed);
  return WorkBudget::unlimited;
}

}  // namespace

WorkBudget::WorkBudget(Limits limits, std::stop_token stop) noexcept
    : _limits(limits), _stop(std::move(stop)) {}

void WorkBudget::spend(std::uint64_t steps) {
  if (_stop.stop_requested()) {
    throw WorkStopped("the work was stopped");
  }
  if (addTo(_steps, steps) > _limits.steps) {
    throw WorkBudgetExceeded(
        fmt::format("the work takes more than the {} steps that are allowed", _limits.steps));
  }
}

void WorkBudget::takeMemory(std::uint64_t bytes) {
  if (_stop.stop_requested()) {
    throw WorkStopped("the work was stopped");
  }
  if (addTo(_bytes, bytes) > _limits.bytes) {
    throw WorkBudgetExceeded(
        fmt::format("the work needs more than the {} bytes that are allowed", _limits.bytes));
  }
}

}  // namespace Zorv
