#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceIndex.h"

#include <atomic>
#include <limits>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/TextsOfOneHash.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceCondition.h"
#include "Utils/WorkBudget.h"
#include "support/CountingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using FormulaModel::FormulaErrorCode;

/// Values of all kinds in a column, some of them more than once, in ranges that overlap.
class OccurrenceIndexTest : public testing::Test {
protected:
  OccurrenceIndexTest() {
    auto values = std::vector<FormulaValue>{number(1),
                                            text("1"),
                                            number(0.0),
                                            empty(),
                                            number(-0.0),
                                            text("x"),
                                            boolean(true),
                                            number(std::numeric_limits<double>::quiet_NaN()),
                                            error(FormulaErrorCode::Value),
                                            text("X"),
                                            boolean(true),
                                            number(7),
                                            error(FormulaErrorCode::Name),
                                            number(std::numeric_limits<double>::quiet_NaN()),
                                            text("x"),
                                            error(FormulaErrorCode::Value),
                                            number(7),
                                            text("")};
    for (auto const& sameHash : makeTextsOfOneHash(3)) {
      values.push_back(text(sameHash));
      values.push_back(text(sameHash));
    }
    for (auto const& value : values) {
      table.setValue(rows++, 0, value);
    }
    operands.addFormat(DOM::UniquenessConditionalFormatOperator{});
    operands.prepareOccurrences({});
  }

  [[nodiscard]] FormulaValue const& valueAt(unsigned long row) const {
    return table.findCell(row, 0)->value;
  }

  static void expectSame(OccurrenceOperand const& a, OccurrenceOperand const& b,
                         unsigned long row) {
    EXPECT_EQ(a.count, b.count) << "row " << row;
    EXPECT_TRUE(a.first == b.first) << "row " << row;
  }

  unsigned long rows = 0;
  DOM::Table table;
  std::vector<TableRange> const ranges{{14, 0, 40, 1}, {0, 0, 12, 1}, {10, 0, 16, 1}};
  std::atomic<std::size_t> reads = 0;
  CountingValueContextProvider const provider{table, reads};
  RangeOperands operands{provider, table, ranges};
};

TEST_F(OccurrenceIndexTest, TellsOfRepeatedValuesWhatAWalkTells) {
  OccurrenceIndex const index(operands, {});
  std::size_t repeatedCount = 0;
  for (unsigned long row = 0; row < rows; ++row) {
    if (!isComparable(valueAt(row))) {
      continue;
    }
    auto const walked = countOccurrences(operands, valueAt(row), {});
    auto const* const indexed = index.find(valueAt(row));
    ASSERT_EQ(indexed != nullptr, walked.count > 1) << "row " << row;
    if (indexed != nullptr) {
      expectSame(*indexed, walked, row);
      ++repeatedCount;
    }
  }
  EXPECT_GT(repeatedCount, 20U);
  EXPECT_EQ(index.find(text("elsewhere")), nullptr);
}

TEST_F(OccurrenceIndexTest, TheConditionTellsTheSameBeforeAndAfterItIsMade) {
  DOM::UniquenessConditionalFormatOperator const record{DOM::UniquenessType::Duplicate};
  OccurrenceCondition const condition(record, operands);
  Formulas::LookupCache lookups;
  PassContext pass(lookups, {}, {});
  for (int round = 0; round < 2; ++round) {
    for (unsigned long row = 0; row < rows; ++row) {
      bool const isCollected = row != 12 && row != 13;
      TestedCell const cell{{valueAt(row), CellIndex(RowIndex(row), ColumnIndex(0))}, isCollected};
      auto const told = std::get<OccurrenceOperand>(condition.findOperands(cell, pass));
      auto const walked = isComparable(valueAt(row)) ? countOccurrences(operands, valueAt(row), {})
                                                     : OccurrenceOperand();
      expectSame(told, walked, row);
    }
  }
}

TEST_F(OccurrenceIndexTest, ManyQuestionsReadTheRangesAFewTimes) {
  DOM::UniquenessConditionalFormatOperator const record{DOM::UniquenessType::Unique};
  OccurrenceCondition const condition(record, operands);
  Formulas::LookupCache lookups;
  PassContext pass(lookups, {}, {});
  reads = 0;
  TestedCell const cell{{number(7), CellIndex(RowIndex(11), ColumnIndex(0))}, true};
  for (int question = 0; question < 1'000; ++question) {
    EXPECT_EQ(std::get<OccurrenceOperand>(condition.findOperands(cell, pass)).count, 3U);
  }
  EXPECT_LE(reads, 26 * (rows + 6)) << "1,000 walks would read forty times as much";
}

TEST_F(OccurrenceIndexTest, EndsWithItsBudget) {
  for (unsigned long row = 0; row < 5'000; ++row) {
    table.setValue(row, 0, number(1));
  }
  std::vector<TableRange> const whole{{0, 0, 5'000, 1}};
  RangeOperands const many(provider, table, whole);
  many.prepareOccurrences({});
  WorkBudget budget({.steps = 100});
  EXPECT_THROW(OccurrenceIndex(many, {.threadCount = 1, .budget = &budget}), WorkEnded);
  EXPECT_THROW(
      static_cast<void>(countOccurrences(many, number(1), {.threadCount = 1, .budget = &budget})),
      WorkEnded);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
