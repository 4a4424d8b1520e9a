#include "tool/Process/StopWatcher.h"

#include <ctime>
#include <utility>

namespace Zorv::Tool {

namespace {

/// Sent to the watcher's thread when the work is done.
constexpr int workDone = SIGUSR1;

/// The time in which the work ends after a request, if it looks at its budget.
constexpr std::time_t secondsToStop = 3;

StopCause causeOf(int signal) noexcept {
  switch (signal) {
    case SIGINT:
      return StopCause::Interrupted;
    case SIGTERM:
      return StopCause::Terminated;
    default:
      return StopCause::OutOfTime;
  }
}

/// True for a process that was started with the signal ignored, such as one in the background.
bool isIgnored(int signal) noexcept {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

timespec toTimespec(std::chrono::milliseconds duration) noexcept {
  auto const seconds = std::chrono::floor<std::chrono::seconds>(duration);
  return {.tv_sec = seconds.count(),
          .tv_nsec = std::chrono::nanoseconds(duration - seconds).count()};
}

}  // namespace

StopWatcher::StopWatcher(std::chrono::milliseconds processorTime, EndProcess endProcess)
    : _endProcess(std::move(endProcess)) {
  sigemptyset(&_signals);
  for (int const signal : {SIGINT, SIGTERM}) {
    if (!isIgnored(signal)) {
      sigaddset(&_signals, signal);
    }
  }
  sigaddset(&_signals, SIGXCPU);
  sigaddset(&_signals, workDone);
  pthread_sigmask(SIG_BLOCK, &_signals, &_signalsBefore);

  sigevent event{};
  event.sigev_notify = SIGEV_SIGNAL;
  event.sigev_signo = SIGXCPU;
  _hasTimer = timer_create(CLOCK_PROCESS_CPUTIME_ID, &event, &_timer) == 0;
  if (_hasTimer) {
    itimerspec const once{.it_interval = {}, .it_value = toTimespec(processorTime)};
    timer_settime(_timer, 0, &once, nullptr);
  }
  _thread = std::thread([this] { watch(); });
}

StopWatcher::~StopWatcher() {
  if (_hasTimer) {
    timer_delete(_timer);
  }
  pthread_kill(_thread.native_handle(), workDone);
  _thread.join();
  // A signal that came too late has no work to stop.
  timespec const now{};
  while (sigtimedwait(&_signals, nullptr, &now) > 0) {
  }
  pthread_sigmask(SIG_SETMASK, &_signalsBefore, nullptr);
}

void StopWatcher::watch() {
  int signal = 0;
  if (sigwait(&_signals, &signal) != 0 || signal == workDone) {
    return;
  }
  _cause = causeOf(signal);
  _stop.request_stop();
  timespec const patience{.tv_sec = secondsToStop, .tv_nsec = 0};
  if (sigtimedwait(&_signals, nullptr, &patience) != workDone) {
    _endProcess(_cause);
  }
}

}  // namespace Zorv::Tool
