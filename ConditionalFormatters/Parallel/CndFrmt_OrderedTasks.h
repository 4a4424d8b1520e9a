#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

/// Runs tasks on several threads and delivers their results in order.
///
/// Each thread, the caller's among them, makes a worker by `makeWorker()` and calls `worker(index)`
/// for one task after the other. `deliver(result)` is called for the results in the order of their
/// tasks, never by two threads at once; it may take the result over. A thread delivers its own
/// results, which are in its processor's cache, and those of others if they pile up. A thread that
/// is too far ahead waits, so that only a few results exist at a time. With one thread everything
/// happens on the caller's.
///
/// An exception of a worker or of `deliver` reaches the caller once, after all threads have ended:
/// of several exceptions that of the first task, after all tasks before it were delivered. If the
/// caller has pinned a moment, the threads see it, too.
template <class MakeWorker, class Deliver>
class OrderedTasks {
public:
  OrderedTasks(std::size_t taskCount, unsigned threadCount, MakeWorker const& makeWorker,
               Deliver const& deliver)
      : _taskCount(taskCount),
        _threadCount(std::max(1U, threadCount)),
        _makeWorker(makeWorker),
        _deliver(deliver) {}

  void run() {
    {
      std::vector<std::jthread> threads;
      auto* const pinned = OfficeUtils::PinnedMoment::getCurrent();
      std::size_t const useful = std::min<std::size_t>(_threadCount, _taskCount);
      try {
        for (std::size_t thread = 1; thread < useful; ++thread) {
          threads.emplace_back([this, thread, pinned] { workPinned(thread, pinned); });
        }
      } catch (...) {
        // No more threads are to be had: those that started, and this one, do the work.
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

  /// The result of a task, or its exception.
  struct Outcome {
    std::size_t thread;
    std::vector<Result> result;  ///< one, or none
    std::exception_ptr failure;
  };

  void workPinned(std::size_t thread, OfficeUtils::PinnedMoment* ofCaller) {
    std::optional<OfficeUtils::PinnedMoment> pinned;
    if (ofCaller != nullptr) {
      pinned.emplace(ofCaller->get().getTimePoint());
    }
    work(thread);
  }

  void work(std::size_t thread) {
    try {
      auto worker = _makeWorker();
      std::unique_lock lock(_mutex);
      while (waitForTask(thread, lock)) {
        std::size_t const task = _nextTask++;
        lock.unlock();
        Outcome outcome = compute(worker, task, thread);
        lock.lock();
        _waiting.emplace(task, std::move(outcome));
      }
    } catch (...) {
      std::lock_guard const lock(_mutex);
      fail(std::current_exception());
    }
  }

  static Outcome compute(Worker& worker, std::size_t task, std::size_t thread) {
    Outcome outcome{thread, {}, nullptr};
    try {
      outcome.result.push_back(worker(task));
    } catch (...) {
      outcome.failure = std::current_exception();
    }
    return outcome;
  }

  /// Delivers the results that are this thread's to deliver, until there is a task for it. False if
  /// there will be none.
  bool waitForTask(std::size_t thread, std::unique_lock<std::mutex>& lock) {
    for (;;) {
      while (isToDeliver(thread)) {
        deliverNext(lock);
      }
      if (_failure || _nextTask == _taskCount) {
        return false;
      }
      // Without a limit the results of fast tasks would pile up behind a slow one.
      if (_nextTask < _nextDelivery + 4 * _threadCount) {
        return true;
      }
      _changed.wait(lock);
    }
  }

  [[nodiscard]] bool isToDeliver(std::size_t thread) const {
    if (_isDelivering || _failure || _waiting.empty() || _waiting.begin()->first != _nextDelivery) {
      return false;
    }
    bool const isPileHigh = _waiting.size() > 2 * _threadCount || _nextTask == _taskCount;
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

  std::size_t const _taskCount;
  std::size_t const _threadCount;
  MakeWorker const& _makeWorker;
  Deliver const& _deliver;

  std::mutex _mutex;  ///< guards what follows
  std::condition_variable _changed;
  std::size_t _nextTask = 0;
  std::size_t _nextDelivery = 0;
  bool _isDelivering = false;
  std::map<std::size_t, Outcome> _waiting;  ///< by task
  std::exception_ptr _failure;
};

}  // namespace Zorv::ConditionalFormatters
