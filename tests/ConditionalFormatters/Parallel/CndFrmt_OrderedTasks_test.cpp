#include "ConditionalFormatters/Parallel/CndFrmt_OrderedTasks.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

using OfficeUtils::PinnedMoment;

class OrderedTasksTest : public testing::TestWithParam<unsigned> {
protected:
  /// Runs tasks whose result is their index.
  template <class Work, class Deliver>
  static void run(std::size_t count, Work const& work, Deliver const& deliver) {
    auto const makeWorker = [&] {
      return [&](std::size_t task) {
        work(task);
        return task;
      };
    };
    OrderedTasks(count, GetParam(), makeWorker, deliver).run();
  }
};

constexpr auto doNothing = [](std::size_t) {};

TEST_P(OrderedTasksTest, DeliversEachResultOnceAndInOrder) {
  std::vector<std::size_t> delivered;
  run(1'000, doNothing, [&](std::size_t result) { delivered.push_back(result); });
  ASSERT_EQ(delivered.size(), 1'000U);
  for (std::size_t task = 0; task < delivered.size(); ++task) {
    ASSERT_EQ(delivered[task], task);
  }
}

TEST_P(OrderedTasksTest, NeverDeliversOnTwoThreadsAtOnce) {
  std::atomic<int> delivering = 0;
  run(500, doNothing, [&](std::size_t) {
    EXPECT_EQ(++delivering, 1);
    std::this_thread::yield();
    --delivering;
  });
}

TEST_P(OrderedTasksTest, WithoutTasksDeliversNothing) {
  run(0, doNothing, [](std::size_t) { FAIL(); });
}

TEST_P(OrderedTasksTest, KeepsFewResultsBehindASlowTask) {
  std::atomic<std::size_t> started = 0;
  std::atomic<std::size_t> delivered = 0;
  std::size_t mostAhead = 0;
  auto const work = [&](std::size_t task) {
    ++started;
    if (task == 0) {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
  };
  run(400, work, [&](std::size_t) {
    mostAhead = std::max(mostAhead, started.load() - delivered.load());
    ++delivered;
  });
  EXPECT_LE(mostAhead, 4U * GetParam() + GetParam());
}

TEST_P(OrderedTasksTest, TheExceptionOfTheFirstTaskThatFailsFollowsTheResultsBeforeIt) {
  std::size_t delivered = 0;
  auto const work = [](std::size_t task) {
    if (task >= 77) {
      throw std::runtime_error(std::to_string(task));
    }
  };
  try {
    run(500, work, [&](std::size_t) { ++delivered; });
    FAIL();
  } catch (std::runtime_error const& error) {
    EXPECT_STREQ(error.what(), "77");
  }
  EXPECT_EQ(delivered, 77U);
}

TEST_P(OrderedTasksTest, AnExceptionOfADeliveryEndsTheRun) {
  std::size_t delivered = 0;
  auto const deliver = [&](std::size_t result) {
    if (result == 33) {
      throw std::runtime_error("enough");
    }
    ++delivered;
  };
  EXPECT_THROW(run(500, doNothing, deliver), std::runtime_error);
  EXPECT_EQ(delivered, 33U);
}

TEST_P(OrderedTasksTest, AnExceptionOfAWorkersCreationReachesTheCaller) {
  auto const makeWorker = []() -> std::size_t (*)(std::size_t) {
    throw std::runtime_error("no worker");
  };
  OrderedTasks tasks(9, GetParam(), makeWorker, doNothing);
  EXPECT_THROW(tasks.run(), std::runtime_error);
}

TEST_P(OrderedTasksTest, ThreadsSeeTheMomentThatTheCallerPinned) {
  auto const moment = OfficeUtils::Clock::TimePoint() + std::chrono::hours(9);
  PinnedMoment const pinned(moment);
  auto const expectPinned = [&](std::size_t) { EXPECT_EQ(PinnedMoment::readMoment(), moment); };
  run(100, expectPinned, expectPinned);
}

TEST_P(OrderedTasksTest, NoMomentIsPinnedIfTheCallerHasNone) {
  auto const expectNone = [](std::size_t) { EXPECT_EQ(PinnedMoment::getCurrent(), nullptr); };
  run(100, expectNone, expectNone);
}

TEST_P(OrderedTasksTest, EachThreadMakesOneWorkerAndThereAreNoMoreThanTasks) {
  for (std::size_t const count : {1UL, 2UL, 100UL}) {
    std::atomic<std::size_t> workers = 0;
    std::atomic<bool> isShared = false;
    auto const makeWorker = [&] {
      ++workers;
      return [&, owner = std::this_thread::get_id()](std::size_t task) {
        isShared = isShared || owner != std::this_thread::get_id();
        return task;
      };
    };
    OrderedTasks(count, GetParam(), makeWorker, doNothing).run();
    EXPECT_EQ(workers, std::min<std::size_t>(count, GetParam()));
    EXPECT_FALSE(isShared);
  }
}

TEST_P(OrderedTasksTest, AnExceptionEndsTheWork) {
  std::atomic<std::size_t> started = 0;
  auto const work = [&](std::size_t) {
    ++started;
    throw std::runtime_error("no result");
  };
  EXPECT_THROW(run(10'000, work, doNothing), std::runtime_error);
  EXPECT_LE(started, 4U * GetParam());
}

INSTANTIATE_TEST_SUITE_P(Threads, OrderedTasksTest, testing::Values(1U, 2U, 7U));

TEST(OrderedTasks, WithOneThreadEverythingHappensOnTheCallers) {
  std::set<std::thread::id> threads;
  auto const makeWorker = [&] {
    return [&](std::size_t task) {
      threads.insert(std::this_thread::get_id());
      return task;
    };
  };
  auto const deliver = [&](std::size_t) { threads.insert(std::this_thread::get_id()); };
  OrderedTasks(9, 1, makeWorker, deliver).run();
  EXPECT_EQ(threads, std::set{std::this_thread::get_id()});
}

TEST(OrderedTasks, SeveralThreadsWorkAtOnce) {
  std::atomic<int> working = 0;
  auto const makeWorker = [&] {
    return [&](std::size_t task) {
      // Each of the two tasks waits until the other has begun.
      ++working;
      auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
      while (working < 2 && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
      }
      EXPECT_EQ(working, 2);
      return task;
    };
  };
  OrderedTasks(2, 2, makeWorker, doNothing).run();
}

TEST(OrderedTasks, AThreadMayBeSomeTasksAheadOfASlowOne) {
  constexpr unsigned threadCount = 2;
  constexpr std::size_t farthest = 4 * threadCount;
  std::atomic<std::size_t> started = 0;
  auto const makeWorker = [&] {
    return [&](std::size_t task) {
      ++started;
      if (task == 0) {
        // Until the other thread is as far ahead as it may be, and then some time to go too far.
        auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (started < farthest && std::chrono::steady_clock::now() < end) {
          std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_EQ(started, farthest);
      }
      return task;
    };
  };
  OrderedTasks(100, threadCount, makeWorker, doNothing).run();
}

TEST(OrderedTasks, OneThreadDeliversEachResultAtOnce) {
  for (unsigned const threadCount : {0U, 1U}) {
    std::vector<std::string> log;
    auto const makeWorker = [&] {
      return [&](std::size_t task) {
        log.push_back("compute " + std::to_string(task));
        return task;
      };
    };
    auto const deliver = [&](std::size_t result) {
      log.push_back("deliver " + std::to_string(result));
    };
    OrderedTasks(2, threadCount, makeWorker, deliver).run();
    EXPECT_EQ(log, (std::vector<std::string>{"compute 0", "deliver 0", "compute 1", "deliver 1"}));
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
