#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <utility>

#include "Utils/WorkBudget.h"

namespace Zorv::Python {

/// Limits of one call; nothing: none.
struct Allowance {
  std::optional<std::uint64_t> steps;
  std::optional<std::uint64_t> bytes;
  std::optional<double> seconds;  ///< from the beginning of the call
};

/// Thrown when a call has taken more time than its caller allows.
class TimeExceeded : public WorkEnded {
public:
  using WorkEnded::WorkEnded;
};

/// Thrown when a handler of a signal has raised a Python exception, which is set.
class RaisedBySignal : public std::exception {};

/// Runs work in a thread of its own while this one looks after the interpreter: its lock is
/// released, and the handlers of signals run where this is the interpreter's main thread. So Ctrl-C
/// and the end of the allowed time stop the work within a fraction of a second.
///
/// Requires the interpreter's lock, which is held again at the end. The work must not touch Python
/// objects. Throws what the work throws, WorkEnded at the end of the allowance, and RaisedBySignal;
/// the work has always ended by then.
void runInterruptibly(Allowance const& allowance, std::function<void(WorkBudget&)> const& work);

/// The same for work that has a result.
template <class Work>
[[nodiscard]] auto runWork(Allowance const& allowance, Work const& work) {
  std::optional<decltype(work(std::declval<WorkBudget&>()))> result;
  runInterruptibly(allowance, [&](WorkBudget& budget) { result.emplace(work(budget)); });
  return *std::move(result);
}

}  // namespace Zorv::Python
