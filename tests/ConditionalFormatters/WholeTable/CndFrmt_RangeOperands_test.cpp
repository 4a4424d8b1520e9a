#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/WholeTable/CndFrmt_OperandNeeds.h"
#include "DOM/ConditionalFormatOperator.h"
#include "support/CountingValueContextProvider.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using Rank = DOM::TopBottomConditionalFormatType;
using RankRecord = DOM::TopBottomConditionalFormatOperator;
DOM::AboveAverageConditionalFormatOperator const aboveAverage(
    DOM::AboveAverageConditionalFormatType::Above);
DOM::UniquenessConditionalFormatOperator const duplicates{};

// What a getter of a record throws reaches the caller.
static_assert(!noexcept(findOperandNeeds(std::declval<DOM::ConditionalFormatOperator const&>())));

/// A column of the numbers 0 to 499, twice.
class RangeOperandsTest : public testing::Test {
protected:
  static constexpr std::size_t rows = 1'000;

  RangeOperandsTest() {
    for (unsigned long row = 0; row < rows; ++row) {
      table.setValue(row, 0, number(static_cast<double>(row % 500)));
    }
    operands.addFormat(aboveAverage);
    operands.addFormat(RankRecord(Rank::Top, 3, false));
    operands.addFormat(RankRecord(Rank::Bottom, 7, false));
    operands.addFormat(RankRecord(Rank::Top, 10, true));
    operands.addFormat(RankRecord(Rank::Top, 20, true));
    operands.addFormat(RankRecord(Rank::Bottom, 100, false));
    operands.addFormat(duplicates);
  }

  DOM::Table table;
  std::vector<TableRange> const ranges{{0, 0, rows, 1}};
  std::atomic<std::size_t> reads = 0;
  CountingValueContextProvider const provider{table, reads};
  RangeOperands operands{provider, table, ranges};
};

TEST_F(RangeOperandsTest, AreAllCollectedByTheFirstRequestOfAllFormats) {
  EXPECT_EQ(operands.getMean({}).mean.get(), 249.5);
  EXPECT_EQ(reads, rows);
  EXPECT_EQ(operands.getMean({}).count, rows);
  EXPECT_EQ(operands.getThreshold({Rank::Top, 3, false}, {}).threshold->get(), 497);
  EXPECT_EQ(operands.getThreshold({Rank::Bottom, 7, false}, {}).threshold->get(), 6);
  EXPECT_EQ(operands.getThreshold({Rank::Bottom, 2, false}, {}).threshold->get(), 1);
  EXPECT_EQ(operands.getThreshold({Rank::Top, 10, true}, {}).threshold->get(), 450);
  EXPECT_EQ(operands.getThreshold({Rank::Top, 10, true}, {}).rank, 50U);
  EXPECT_EQ(operands.getThreshold({Rank::Top, 20, true}, {}).threshold->get(), 400);
  EXPECT_EQ(operands.getThreshold({Rank::Bottom, 100, false}, {}).threshold->get(), 99);
  operands.prepareOccurrences({});
  EXPECT_TRUE(operands.isRepeated({RowIndex(7), ColumnIndex(0)}, {}));
  EXPECT_EQ(reads, rows) << "one walk gave everything";
}

TEST_F(RangeOperandsTest, ARequestOfOneFormatCollectsWhatItNeedsAlone) {
  PassRequest const request{.asksOneFormat = true};
  EXPECT_EQ(operands.getThreshold({Rank::Top, 1, false}, request).threshold->get(), 499);
  EXPECT_EQ(operands.getThreshold({Rank::Top, 3, false}, request).threshold->get(), 497);
  EXPECT_EQ(reads, rows) << "the lists are collected for the longest rank";
  EXPECT_EQ(operands.getMean(request).mean.get(), 249.5);
  EXPECT_EQ(reads, 2 * rows);
}

TEST_F(RangeOperandsTest, ThresholdsOfFewerNumbersAreTheLast) {
  for (unsigned long row = 2; row < rows; ++row) {
    table.setValue(row, 0, text("a"));
  }
  EXPECT_EQ(operands.getThreshold({Rank::Top, 3, false}, {}).threshold->get(), 0);
  EXPECT_EQ(operands.getThreshold({Rank::Top, 3, false}, {}).rank, 2U);
  EXPECT_FALSE(operands.getThreshold({Rank::Top, 10, true}, {}).threshold);
}

TEST_F(RangeOperandsTest, ASmallRequestFindsTheRepeatedValuesOfItsOwnCells) {
  table.setValue(3, 0, number(-1));
  TableRange const area{0, 0, 10, 1};
  operands.prepareOccurrences({.areas = {&area, 1}, .asksOneFormat = true});
  EXPECT_EQ(reads, rows + 10);
  EXPECT_TRUE(operands.isRepeated({RowIndex(2), ColumnIndex(0)}, {}));
  EXPECT_FALSE(operands.isRepeated({RowIndex(3), ColumnIndex(0)}, {}));
  EXPECT_EQ(reads, rows + 10);
  EXPECT_FALSE(operands.isRepeated({RowIndex(503), ColumnIndex(0)}, {}));
  EXPECT_TRUE(operands.isRepeated({RowIndex(502), ColumnIndex(0)}, {}));
  EXPECT_EQ(reads, 2 * rows + 10) << "another cell is asked about: all are found";
}

TEST_F(RangeOperandsTest, WhatWasForgottenIsCollectedAnew) {
  static_cast<void>(operands.getMean({}));
  table.setValue(0, 0, number(1'000));
  EXPECT_EQ(operands.getMean({}).mean.get(), 249.5) << "edits are not followed";
  operands.forget();
  EXPECT_EQ(operands.getMean({}).mean.get(), 250.5);
  EXPECT_EQ(operands.getThreshold({Rank::Top, 1, false}, {}).threshold->get(), 1'000);
  EXPECT_FALSE(operands.isRepeated({RowIndex(500), ColumnIndex(0)}, {}));
}

/// Throws at a cell for as long as it is told to.
class FailingOnceProvider final : public ForwardingValueContextProvider {
public:
  explicit FailingOnceProvider(DOM::Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    if (isFailing && cellInfo.getRowIndex() >= 5) {
      throw std::runtime_error(std::to_string(cellInfo.getRowIndex()));
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

  bool isFailing = true;
};

TEST_F(RangeOperandsTest, AFailureIsThatOfTheFirstCellAndTheNextRequestTriesAgain) {
  FailingOnceProvider failing(table);
  RangeOperands ofFailing(failing, table, ranges);
  ofFailing.addFormat(aboveAverage);
  ofFailing.addFormat(duplicates);
  // The value of a cell that is asked about is read before those of the others, and fails, too.
  TableRange const area{20, 0, 30, 1};
  try {
    static_cast<void>(ofFailing.getMean({.areas = {&area, 1}}));
    FAIL();
  } catch (std::runtime_error const& error) {
    EXPECT_STREQ(error.what(), "5");
  }
  failing.isFailing = false;
  EXPECT_EQ(ofFailing.getMean({}).mean.get(), 249.5);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
