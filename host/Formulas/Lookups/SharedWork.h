#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>

namespace Zorv::Formulas {

/// Work of one thread, its owner, with which threads help that would otherwise wait for the result.
///
/// The work has stages, one after the other; a stage has parts that do not depend on each other.
/// The owner calls run() for each stage, and close() at the end. Helpers call help(). No lock is
/// held during a part. The owner waits only for parts that helpers are doing, so the work ends as
/// long as no part waits for another thread of the work.
class SharedWork {
public:
  using DoPart = std::function<void(std::size_t)>;

  /// Calls `doPart(index)` for each index below `partCount`, and returns when all parts are done.
  /// An exception of a part, whichever thread did it, is thrown here; parts that have not begun by
  /// then are left out.
  void run(std::size_t partCount, DoPart const& doPart);
  /// Does parts until the work is closed. Never throws an exception of a part.
  void help();
  /// Sends the helpers away. Requires that no stage is running.
  void close();

private:
  /// Does the next part. Requires that there is one, and that the lock is held.
  void doNext(std::unique_lock<std::mutex>& lock);

  std::mutex _mutex;  ///< guards what follows
  std::condition_variable _changed;
  DoPart const* _doPart = nullptr;
  std::size_t _next = 0;
  std::size_t _partCount = 0;
  std::size_t _runningParts = 0;
  std::exception_ptr _failure;
  bool _isClosed = false;
};

}  // namespace Zorv::Formulas
