#pragma once

#include <barrier>
#include <cstddef>
#include <future>
#include <vector>

namespace Zorv::TestSupport {

/// Calls `work(INDEX)` on as many threads, which begin together; returns when all have ended.
/// Rethrows the first exception of any of them.
template <class Work>
void runOnThreads(std::size_t count, Work const& work) {
  std::barrier<> start(static_cast<std::ptrdiff_t>(count));
  std::vector<std::future<void>> threads;
  for (std::size_t index = 0; index < count; ++index) {
    threads.push_back(std::async(std::launch::async, [&, index] {
      start.arrive_and_wait();
      work(index);
    }));
  }
  for (auto& thread : threads) {
    thread.get();
  }
}

}  // namespace Zorv::TestSupport
