#include <Python.h>

// Python's own header must come first.
#include <algorithm>
#include <chrono>
#include <future>
#include <limits>
#include <stop_token>

#include <fmt/format.h>

#include "python/Native/RunWork.h"

namespace Zorv::Python {

namespace {

using SteadyClock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// How often signals are looked for: a person does not notice it, and it costs nothing.
constexpr Seconds signalInterval{0.05};

/// Scope without the interpreter's lock.
class UnlockedInterpreter {
public:
  UnlockedInterpreter() : _thread(PyEval_SaveThread()) {}
  UnlockedInterpreter(UnlockedInterpreter const&) = delete;
  UnlockedInterpreter& operator=(UnlockedInterpreter const&) = delete;
  ~UnlockedInterpreter() { PyEval_RestoreThread(_thread); }

private:
  PyThreadState* _thread;
};

/// Waits for the end of work, but not for ever.
bool waitFor(std::future<void> const& end, Seconds time) {
  UnlockedInterpreter const unlocked;
  return end.wait_for(time) == std::future_status::ready;
}

/// Has work stop, and waits for its end, whatever that is.
void stop(std::future<void> const& end, std::stop_source& source) {
  source.request_stop();
  UnlockedInterpreter const unlocked;
  end.wait();
}

/// Waits for the end of work; stops it at the end of its time, and when a signal asks for it.
void watch(std::future<void> const& end, std::optional<double> seconds, std::stop_source& source) {
  auto const begin = SteadyClock::now();
  Seconds const allowed(seconds.value_or(std::numeric_limits<double>::infinity()));
  for (Seconds taken{0}; !waitFor(end, std::clamp(allowed - taken, Seconds(0), signalInterval));
       taken = SteadyClock::now() - begin) {
    if (PyErr_CheckSignals() != 0) {
      stop(end, source);
      throw RaisedBySignal();
    }
    if (SteadyClock::now() - begin >= allowed) {
      stop(end, source);
      throw TimeExceeded(
          fmt::format("takes more time than the {} seconds that are allowed", allowed.count()));
    }
  }
}

}  // namespace

void runInterruptibly(Allowance const& allowance, std::function<void(WorkBudget&)> const& work) {
  std::stop_source source;
  WorkBudget budget({.steps = allowance.steps.value_or(WorkBudget::unlimited),
                     .bytes = allowance.bytes.value_or(WorkBudget::unlimited)},
                    source.get_token());
  // Its destructor waits for the thread, so the work never outlives what it borrows.
  auto end = std::async(std::launch::async, [&] { work(budget); });
  watch(end, allowance.seconds, source);
  end.get();
}

}  // namespace Zorv::Python
