#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>

namespace Zorv::Formulas {

/// Work of one thread, its owner, in which others help that happen to need what comes of it.
///
/// The owner calls run() for one stage after the other and in the end close(); a stage consists of
/// numbered parts that do not depend on each other. Helpers call help(). No lock is held while a
/// part is done. The owner waits only for parts that helpers are doing, so that the work ends as
/// long as no part waits for anything that a thread at work on it has to do.
class SharedWork {
public:
  using DoPart = std::function<void(std::size_t)>;

  /// Has `doPart(number)` called for each number below `partCount`, and returns when all parts are
  /// done. What a part throws is thrown here, whoever did the part; parts that have not begun by
  /// then are left out.
  void run(std::size_t partCount, DoPart const& doPart);
  /// Does parts until the work is closed. Throws nothing of theirs.
  void help();
  /// Sends the helpers away. Requires that no stage is running.
  void close();

private:
  /// Does the next part; requires that there is one, and that the lock is held.
  void doNext(std::unique_lock<std::mutex>& lock);

  std::mutex _mutex;  ///< guards what follows
  std::condition_variable _changed;
  DoPart const* _doPart = nullptr;
  std::size_t _next = 0;
  std::size_t _partCount = 0;
  std::size_t _partsInHand = 0;
  std::exception_ptr _failure;
  bool _isClosed = false;
};

}  // namespace Zorv::Formulas
