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
/// their order, by whichever thread has the next one, never by two at once. Threads that run ahead
/// wait, so that only a few results are kept. With one thread everything happens on the caller's.
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
          threads.emplace_back([this] { work(); });
        }
      } catch (...) {
        // The threads that did start, and this one, do the work.
      }
      work();
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
    std::vector<Result> result;  ///< one, or none
    std::exception_ptr failure;
  };

  void work() {
    try {
      auto worker = _makeWorker();
      for (std::size_t part = 0; takePart(part);) {
        hand(part, compute(worker, part));
      }
    } catch (...) {
      fail(std::current_exception());
    }
  }

  static Outcome compute(Worker& worker, std::size_t part) {
    Outcome outcome;
    try {
      outcome.result.push_back(worker(part));
    } catch (...) {
      outcome.failure = std::current_exception();
    }
    return outcome;
  }

  [[nodiscard]] bool takePart(std::size_t& part) {
    std::unique_lock lock(_mutex);
    // Without a limit the results of fast parts would pile up behind a slow one.
    _delivered.wait(lock, [&] {
      return _failure || _nextPart == _partCount || _nextPart < _nextDelivery + 4 * _threadCount;
    });
    if (_failure || _nextPart == _partCount) {
      return false;
    }
    part = _nextPart++;
    return true;
  }

  /// Adds an outcome to those that wait, and delivers those whose turn has come.
  void hand(std::size_t part, Outcome outcome) {
    std::unique_lock lock(_mutex);
    _waiting.emplace(part, std::move(outcome));
    if (_isDelivering) {
      return;
    }
    _isDelivering = true;
    for (auto next = _waiting.begin();
         !_failure && next != _waiting.end() && next->first == _nextDelivery;
         next = _waiting.begin()) {
      Outcome const due = std::move(next->second);
      _waiting.erase(next);
      lock.unlock();
      std::exception_ptr failure = deliverOne(due);
      lock.lock();
      _failure = _failure ? _failure : failure;
      ++_nextDelivery;
      _delivered.notify_all();
    }
    _isDelivering = false;
  }

  std::exception_ptr deliverOne(Outcome const& outcome) {
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
    std::lock_guard const lock(_mutex);
    _failure = _failure ? _failure : std::move(failure);
    _delivered.notify_all();
  }

  std::size_t const _partCount;
  std::size_t const _threadCount;
  MakeWorker const& _makeWorker;
  Deliver const& _deliver;

  std::mutex _mutex;  ///< guards what follows
  std::condition_variable _delivered;
  std::size_t _nextPart = 0;
  std::size_t _nextDelivery = 0;
  bool _isDelivering = false;
  std::map<std::size_t, Outcome> _waiting;
  std::exception_ptr _failure;
};

}  // namespace Zorv::ConditionalFormatters
