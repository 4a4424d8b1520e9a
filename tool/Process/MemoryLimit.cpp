#include "tool/Process/MemoryLimit.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <fstream>
#include <new>
#include <utility>

namespace Zorv::Tool {

namespace {

// What is left for winding up the work after the first failure.
constexpr rlim_t reserve = 67'108'864;

struct LackOfMemory {
  std::string message;
  int exitStatus = 0;
  std::terminate_handler previous = nullptr;
  std::stop_source stop{std::nostopstate};
  std::atomic<bool> happened = false;
};

LackOfMemory& lackOfMemory() {
  static LackOfMemory state;
  return state;
}

/// Bytes of data memory in use; 0 if the system does not say.
rlim_t readDataMemory() {
  std::ifstream status("/proc/self/status");
  constexpr rlim_t bytesPerUnit = 1024;
  for (std::string word; status >> word;) {
    rlim_t kibibytes = 0;
    if (word == "VmData:" && status >> kibibytes) {
      return kibibytes * bytesPerUnit;
    }
  }
  return 0;
}

[[noreturn]] void handleLackOfMemory() {
  if (!lackOfMemory().happened.exchange(true)) {
    rlimit limit{};
    if (getrlimit(RLIMIT_DATA, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
      limit.rlim_cur = std::min(limit.rlim_max, limit.rlim_cur + reserve);
      setrlimit(RLIMIT_DATA, &limit);
    }
    lackOfMemory().stop.request_stop();
  }
  throw std::bad_alloc();
}

[[noreturn]] void terminate() {
  auto const& state = lackOfMemory();
  if (state.happened) {
    // The heap may be in any state, so nothing is allocated here.
    static_cast<void>(write(STDERR_FILENO, state.message.data(), state.message.size()) < 0);
    _exit(state.exitStatus);
  }
  state.previous();
  std::abort();
}

}  // namespace

void limitMemory(std::uint64_t bytes, std::string message, int exitStatus, std::stop_source stop) {
  auto& state = lackOfMemory();
  state.message = std::move(message) + "\n";
  state.exitStatus = exitStatus;
  state.stop = std::move(stop);
  state.previous = std::set_terminate(&terminate);
  std::set_new_handler(&handleLackOfMemory);
  rlimit limit{};
  if (getrlimit(RLIMIT_DATA, &limit) == 0) {
    limit.rlim_cur = std::min({limit.rlim_cur, limit.rlim_max, readDataMemory() + rlim_t{bytes}});
    setrlimit(RLIMIT_DATA, &limit);
  }
}

bool hasLackedMemory() noexcept { return lackOfMemory().happened; }

}  // namespace Zorv::Tool
