#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace Zorv::ConditionalFormatters {

/// Computes numbered parts of some work on several threads and hands the results over in order.
///
/// Each thread, the caller's among them, makes a worker by `makeWorker()` and calls
/// `worker(number)` for one part after the other; `deliver(result)` is called for the parts in
/// their order, never by two threads at once; it may take what is in the result. A thread delivers
/// its own parts, which lie in its processor's cache, and those of others where they pile up.
/// Threads that run ahead wait, so that only a few results are kept. With one thread everything
/// happens on the caller's.
///
/// What a worker or `deliver` throws reaches the caller once, after all threads have ended: of
/// several exceptions the one of the first part, whose predecessors have then all been delivered.
template <class MakeWorker, class Deliver>
class OrderedParallel {
public:
  OrderedParallel(std::size_t partCount, unsigned threadCount, MakeWorker const& makeWorker,
                  Deliver const& deliver)
      : _partCount(partCount),
        _threadCount(std::max(1U, threadCount)),
        _makeWorker(makeWorker),
        _deliver(deliver) {}

  void run() {
    {
      std::vector<std::jthread> threads;
      std::size_t const useful = std::min<std::size_t>(_threadCount, _partCount);
      try {
        for (std::size_t number = 1; number < useful; ++number) {
          threads.emplace_back([this, number] { work(number); });
        }
      } catch (...) {
        // The threads that did start, and this one, do the work.
      }
      work(0);
    }
    if (_failure) {
      std::rethrow_exception(_failure);
    }
  }

private:
  using Worker = decltype(std::declval<MakeWorker const&>()());
  using Result = decltype(std::declval<Worker&>()(std::size_t{}));

  /// The result of a part, or why there is none.
  struct Outcome {
    std::size_t thread;
    std::vector<Result> result;  ///< one, or none
    std::exception_ptr failure;
  };

  void work(std::size_t thread) {
    try {
      auto worker = _makeWorker();
      std::unique_lock lock(_mutex);
      while (waitForWork(thread, lock)) {
        std::size_t const part = _nextPart++;
        lock.unlock();
        Outcome outcome = compute(worker, part, thread);
        lock.lock();
        _waiting.emplace(part, std::move(outcome));
      }
    } catch (...) {
      std::lock_guard const lock(_mutex);
      fail(std::current_exception());
    }
  }

  static Outcome compute(Worker& worker, std::size_t part, std::size_t thread) {
    Outcome outcome{thread, {}, nullptr};
    try {
      outcome.result.push_back(worker(part));
    } catch (...) {
      outcome.failure = std::current_exception();
    }
    return outcome;
  }

  /// Delivers what is this thread's to deliver until there is a part for it to compute; false when
  /// there will be none.
  bool waitForWork(std::size_t thread, std::unique_lock<std::mutex>& lock) {
    for (;;) {
      while (isToDeliver(thread)) {
        deliverNext(lock);
      }
      if (_failure || _nextPart == _partCount) {
        return false;
      }
      // Without a limit the results of fast parts would pile up behind a slow one.
      if (_nextPart < _nextDelivery + 4 * _threadCount) {
        return true;
      }
      _changed.wait(lock);
    }
  }

  [[nodiscard]] bool isToDeliver(std::size_t thread) const {
    if (_isDelivering || _failure || _waiting.empty() || _waiting.begin()->first != _nextDelivery) {
      return false;
    }
    bool const isPileHigh = _waiting.size() > 2 * _threadCount || _nextPart == _partCount;
    return isPileHigh || _waiting.begin()->second.thread == thread;
  }

  void deliverNext(std::unique_lock<std::mutex>& lock) {
    Outcome due = std::move(_waiting.begin()->second);
    _waiting.erase(_waiting.begin());
    _isDelivering = true;
    lock.unlock();
    std::exception_ptr const failure = deliverOne(due);
    lock.lock();
    _isDelivering = false;
    ++_nextDelivery;
    if (failure) {
      fail(failure);
    }
    _changed.notify_all();
  }

  std::exception_ptr deliverOne(Outcome& outcome) {
    if (outcome.failure) {
      return outcome.failure;
    }
    try {
      _deliver(outcome.result.front());
    } catch (...) {
      return std::current_exception();
    }
    return nullptr;
  }

  void fail(std::exception_ptr failure) {
    _failure = _failure ? _failure : std::move(failure);
    _changed.notify_all();
  }

  std::size_t const _partCount;
  std::size_t const _threadCount;
  MakeWorker const& _makeWorker;
  Deliver const& _deliver;

  std::mutex _mutex;  ///< guards what follows
  std::condition_variable _changed;
  std::size_t _nextPart = 0;
  std::size_t _nextDelivery = 0;
  bool _isDelivering = false;
  std::map<std::size_t, Outcome> _waiting;
  std::exception_ptr _failure;
};

}  // namespace Zorv::ConditionalFormatters
