#include "visuals/Prepare/NumberStatistics.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "Utils/WorkBudget.h"
#include "support/PlainHost.h"

namespace Zorv::Visuals {
namespace {

using FormulaModel::FormulaNumber;

/// Numbers below each other in column A.
class NumberStatisticsTest : public testing::Test {
protected:
  void add(double number) { _table.setValue(_rows++, 0, FormulaNumber{FloatNumber(number)}); }

  NumberStatistics collect(WorkBudget* budget = nullptr) {
    return {{_table, _provider, _ranges, {.threadCount = 1, .budget = budget}}, true};
  }

  DOM::Table _table;
  TestSupport::PlainValueContextProvider _provider{_table};
  std::vector<TableRange> _ranges{{0, 0, 100, 1}};
  unsigned long _rows = 0;
};

TEST_F(NumberStatisticsTest, PercentilesInterpolate) {
  for (double const number : {15.0, 20.0, 35.0, 40.0, 50.0}) {
    add(number);
  }
  auto statistics = collect();
  EXPECT_DOUBLE_EQ(statistics.findPercentile(40), 29);
  EXPECT_DOUBLE_EQ(statistics.findPercentile(75), 40);
  EXPECT_DOUBLE_EQ(statistics.findPercentile(0), 15);
  EXPECT_DOUBLE_EQ(statistics.findPercentile(100), 50);
  EXPECT_DOUBLE_EQ(statistics.findPercentile(10), 17);
}

TEST_F(NumberStatisticsTest, PercentilesOutsideTheRangeAreClamped) {
  add(1);
  add(2);
  auto statistics = collect();
  EXPECT_DOUBLE_EQ(statistics.findPercentile(-5), 1);
  EXPECT_DOUBLE_EQ(statistics.findPercentile(150), 2);
}

TEST_F(NumberStatisticsTest, OtherValuesDoNotCount) {
  add(3);
  add(-7);
  _table.setValue(_rows++, 0, FormulaModel::FormulaString{"99"});
  _table.setValue(_rows++, 0, FormulaModel::FormulaBoolean{true});
  _table.setValue(_rows++, 0, FormulaModel::FormulaError{});
  _table.setValue(_rows++, 0, FormulaModel::FormulaEmpty{});
  add(std::numeric_limits<double>::quiet_NaN());
  add(std::numeric_limits<double>::infinity());
  auto statistics = collect();
  EXPECT_EQ(statistics.getLowest(), -7);
  EXPECT_EQ(statistics.getHighest(), 3);
  EXPECT_EQ(statistics.findPercentile(50), -2);
}

TEST_F(NumberStatisticsTest, ACellInSeveralRangesCountsOnce) {
  add(0);
  add(10);
  _ranges = {{0, 0, 2, 1}, {1, 0, 2, 1}, {1, 0, 2, 1}};
  EXPECT_EQ(collect().findPercentile(50), 5);
}

TEST_F(NumberStatisticsTest, WithoutNumbersAllIsZero) {
  auto statistics = collect();
  EXPECT_EQ(statistics.getLowest(), 0);
  EXPECT_EQ(statistics.getHighest(), 0);
  EXPECT_EQ(statistics.findPercentile(50), 0);
}

TEST_F(NumberStatisticsTest, CollectingSpendsFromTheBudget) {
  for (int number = 0; number < 5'000; ++number) {
    add(number);
  }
  _ranges = {{0, 0, 5'000, 1}};
  WorkBudget steps({.steps = 1'000});
  EXPECT_THROW(collect(&steps), WorkBudgetExceeded);
  WorkBudget memory({.bytes = 8'000});
  EXPECT_THROW(collect(&memory), WorkBudgetExceeded);
  WorkBudget enough({.steps = 5'000, .bytes = 80'000});
  EXPECT_NO_THROW(collect(&enough));
}

}  // namespace
}  // namespace Zorv::Visuals
