#include "Formulas/Limits/StepMeter.h"

#include <gtest/gtest.h>

#include "Formulas/EvaluationLimitError.h"
#include "Utils/WorkBudget.h"

namespace Zorv::Formulas {
namespace {

TEST(StepMeter, EachEvaluationMayTakeTheMostSteps) {
  StepMeter meter;
  EXPECT_NO_THROW(meter.spend(StepMeter::mostSteps));
  EXPECT_THROW(meter.spend(1), EvaluationLimitError);
  meter.begin();
  EXPECT_NO_THROW(meter.spend(StepMeter::mostSteps));
  EXPECT_THROW(meter.spend(~0ULL), EvaluationLimitError);
}

TEST(StepMeter, SpendsFromTheBudgetInLumps) {
  WorkBudget budget({});
  StepMeter meter(&budget);
  for (int i = 0; i < 100'000; ++i) {
    meter.spend(1);
  }
  EXPECT_GE(budget.getSteps(), 100'000U);
  EXPECT_LE(budget.getSteps(), 105'000U);
}

TEST(StepMeter, PassesOnThatTheBudgetIsUsedUp) {
  WorkBudget budget({.steps = 10'000});
  StepMeter meter(&budget);
  EXPECT_NO_THROW(meter.spend(9000));
  EXPECT_THROW(meter.spend(9000), WorkBudgetExceeded);
}

TEST(StepMeter, ARunSpendsWhatItCounted) {
  WorkBudget budget({});
  StepMeter meter(&budget);
  StepRun run(meter);
  for (int i = 0; i < 50'000; ++i) {
    run.count(2);
  }
  run.end();
  EXPECT_GE(budget.getSteps(), 100'000U);
  EXPECT_LE(budget.getSteps(), 105'000U);
}

TEST(StepMeter, SortingTakesTheCountTimesItsLogarithm) {
  EXPECT_EQ(stepsOfSort(0), 0U);
  EXPECT_EQ(stepsOfSort(1), 0U);
  EXPECT_EQ(stepsOfSort(1024), 10'240U);
}

}  // namespace
}  // namespace Zorv::Formulas
