#pragma once

#include <csignal>

#include <atomic>
#include <chrono>
#include <functional>
#include <stop_token>
#include <thread>

namespace Zorv::Tool {

/// Why the work is to end before it is done.
enum class StopCause { None, Interrupted, Terminated, OutOfTime };

/// Requests the work to stop when the process is interrupted (SIGINT), asked to terminate
/// (SIGTERM), or out of processor time.
///
/// The signals are blocked in all threads that start afterwards, and a thread of the watcher waits
/// for them. If the work goes on for some seconds after the request, or the signal comes again, the
/// watcher ends the process. One watcher at a time.
class StopWatcher {
public:
  /// Ends the process; called by the watcher's thread while the work goes on, and must not return.
  using EndProcess = std::function<void(StopCause)>;

  /// `processorTime` is that of all threads, from now on.
  StopWatcher(std::chrono::milliseconds processorTime, EndProcess endProcess);
  StopWatcher(StopWatcher const&) = delete;
  StopWatcher& operator=(StopWatcher const&) = delete;
  ~StopWatcher();

  /// The source of the request; others may request a stop, too.
  [[nodiscard]] std::stop_source const& getSource() const noexcept { return _stop; }
  [[nodiscard]] StopCause getCause() const noexcept { return _cause; }

private:
  void watch();

  EndProcess _endProcess;
  sigset_t _signals{};
  sigset_t _signalsBefore{};
  timer_t _timer{};
  bool _hasTimer = false;
  std::atomic<StopCause> _cause = StopCause::None;
  std::stop_source _stop;
  std::thread _thread;
};

}  // namespace Zorv::Tool
