#include "Utils/WorkBudget.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace Zorv {

namespace {

TEST(WorkBudget, SpendsUpToItsStepsAndThrowsBeyond) {
  WorkBudget budget({.steps = 10});
  budget.spend(4);
  budget.spend(6);
  EXPECT_EQ(budget.getSteps(), 10U);
  EXPECT_THROW(budget.spend(1), WorkBudgetExceeded);
  EXPECT_THROW(budget.spend(0), WorkBudgetExceeded);
}

TEST(WorkBudget, TakesMemoryUpToItsBytesAndThrowsBeyond) {
  WorkBudget budget({.bytes = 100});
  budget.takeMemory(100);
  EXPECT_EQ(budget.getBytes(), 100U);
  EXPECT_THROW(budget.takeMemory(1), WorkBudgetExceeded);
  budget.spend(1'000'000);
}

TEST(WorkBudget, IsUnlimitedUnlessItIsTold) {
  WorkBudget budget({});
  EXPECT_NO_THROW(budget.spend(WorkBudget::unlimited));
  EXPECT_NO_THROW(budget.takeMemory(WorkBudget::unlimited));
}

TEST(WorkBudget, SumsThatWouldWrapAroundExceedEveryLimit) {
  WorkBudget budget({.steps = 10, .bytes = 10});
  EXPECT_THROW(budget.spend(WorkBudget::unlimited), WorkBudgetExceeded);
  EXPECT_THROW(budget.spend(2), WorkBudgetExceeded);
  EXPECT_THROW(budget.takeMemory(WorkBudget::unlimited), WorkBudgetExceeded);
  EXPECT_THROW(budget.takeMemory(2), WorkBudgetExceeded);
}

TEST(WorkBudget, ARequestToStopEndsTheWork) {
  std::stop_source source;
  WorkBudget budget({}, source.get_token());
  EXPECT_NO_THROW(budget.spend(1));
  source.request_stop();
  EXPECT_THROW(budget.spend(1), WorkStopped);
  EXPECT_THROW(budget.takeMemory(1), WorkStopped);
}

TEST(WorkBudget, ThreadsShareItsLimit) {
  WorkBudget budget({.steps = 4000});
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int step = 0; step < 1000; ++step) {
        budget.spend(1);
      }
    });
  }
  threads.clear();
  EXPECT_EQ(budget.getSteps(), 4000U);
  EXPECT_THROW(budget.spend(1), WorkBudgetExceeded);
}

TEST(StepCounter, SpendsInLumps) {
  WorkBudget budget({});
  StepCounter counter(&budget);
  counter.count(1000);
  EXPECT_EQ(budget.getSteps(), 0U);
  counter.count(24);
  EXPECT_EQ(budget.getSteps(), 1024U);
}

TEST(StepCounter, CountsNothingWithoutABudget) {
  StepCounter counter(nullptr);
  EXPECT_NO_THROW(counter.count(WorkBudget::unlimited));
}

}  // namespace

}  // namespace Zorv
