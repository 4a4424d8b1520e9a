#include "ConditionalFormatters/WholeTable/CndFrmt_RepeatedCells.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_ValueCollectors.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CollectOperands.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {

namespace {

using namespace TestSupport;
using FormulaModel::FormulaErrorCode;

std::unique_ptr<CellSet const> findRepeated(CollectedRanges const& from) {
  return collectOperands(from, {.occurrences = true}, nullptr).repeated;
}

/// Which rows of a column of values repeat one.
std::vector<unsigned long> findRepeatedRows(std::vector<FormulaValue> const& column) {
  DOM::Table table;
  for (unsigned long row = 0; row < column.size(); ++row) {
    table.setValue(row, 0, column[row]);
  }
  PlainValueContextProvider const provider(table);
  std::vector<TableRange> const ranges{{0, 0, column.size(), 1}};
  auto const repeated = findRepeated({provider, table, ranges, {1}});
  std::vector<unsigned long> rows;
  for (unsigned long row = 0; row < column.size(); ++row) {
    if (repeated->contains(row, 0)) {
      rows.push_back(row);
    }
  }
  return rows;
}

TEST(RepeatedCells, AreThoseWithAnEqualValueOfTheSameKind) {
  using Rows = std::vector<unsigned long>;
  struct Case {
    char const* name;
    std::vector<FormulaValue> column;
    Rows repeated;
  };
  std::string const longText = "a longer text that no small string holds";
  Case const cases[] = {
      {"numbers", {number(1), number(2), number(1), number(1.5), number(2)}, {0, 1, 2, 4}},
      {"the two zeros", {number(0.0), number(1), number(-0.0)}, {0, 2}},
      {"NaN equals nothing", {number(nan), number(nan), number(1)}, {}},
      {"infinities", {number(infinity), number(-infinity), number(infinity)}, {0, 2}},
      {"texts",
       {text("a"), text("A"), text("a"), text(""), text(longText), text(longText)},
       {0, 2, 4, 5}},
      {"empty texts", {text(""), text("")}, {0, 1}},
      {"empty cells do not count", {empty(), empty(), number(0)}, {}},
      {"booleans are no numbers", {boolean(true), number(1), boolean(false), number(0)}, {}},
      {"booleans", {boolean(true), boolean(false), boolean(true)}, {0, 2}},
      {"a number and its text", {number(1), text("1")}, {}},
      {"errors",
       {error(FormulaErrorCode::Value), error(FormulaErrorCode::Null),
        error(FormulaErrorCode::Value)},
       {0, 2}},
      {"an error and the number of its kind", {error(FormulaErrorCode::Null), number(1)}, {}},
      {"nothing", {}, {}},
  };
  for (Case const& each : cases) {
    EXPECT_EQ(findRepeatedRows(each.column), each.repeated) << each.name;
  }
}

TEST(RepeatedCells, ACellOfTwoRangesCountsTwice) {
  DOM::Table table;
  table.setValue(0, 0, number(1));
  table.setValue(1, 0, number(2));
  table.setValue(2, 0, number(3));
  PlainValueContextProvider const provider(table);
  std::vector<TableRange> const ranges{{0, 0, 2, 1}, {1, 0, 3, 1}};
  auto const repeated = findRepeated({provider, table, ranges, {1}});
  EXPECT_FALSE(repeated->contains(0, 0));
  EXPECT_TRUE(repeated->contains(1, 0));
  EXPECT_FALSE(repeated->contains(2, 0));
}

/// Many cells of all kinds, about half of them with a value that stands elsewhere, too.
class ManyRepeatedCells : public testing::Test {
protected:
  static constexpr unsigned long rows = 30'000;

  ManyRepeatedCells() {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> draw(0, 90'000);
    for (unsigned long row = 0; row < rows; ++row) {
      for (unsigned long column = 0; column < 3; ++column) {
        table.setValue(row, column, valueOf(draw(random)));
      }
    }
  }

  static FormulaValue valueOf(int drawn) {
    switch (drawn % 5) {
      case 0:
        return text("text " + std::to_string(drawn));
      case 1:
        return drawn % 100 == 1 ? empty() : number(-drawn * 0.5);
      default:
        return number(drawn);
    }
  }

  DOM::Table table;
  PlainValueContextProvider const provider{table};
  std::vector<TableRange> const ranges{{0, 0, rows, 2}, {100, 2, 20'000, 3}, {90, 2, 200, 3}};
};

TEST_F(ManyRepeatedCells, AreThoseOfWhichTheMultisetCountsSeveralOnAnyNumberOfThreads) {
  OperatorsFactory const factory(provider, table);
  UniquenessOperator const isDuplicate(
      {DOM::UniquenessType::Duplicate},
      factory.collectValuesFromRange<FormulaValueMultiset>(ranges, insertNonEmpty));
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    auto const repeated = findRepeated({provider, table, ranges, {threadCount}});
    for (TableRange const& range : ranges) {
      auto const [begin, end] = table.getRangeIterators(range);
      for (auto cell = begin; cell != end; ++cell) {
        auto const info = cell.getCellInfo();
        ASSERT_EQ(repeated->contains(info.getRowIndex(), info.getColIndex()),
                  isDuplicate({info.getCell()->value, info.getCellIndex()}))
            << info.getRowIndex() << ',' << info.getColIndex();
      }
    }
    EXPECT_FALSE(repeated->contains(20'000, 2)) << "outside the ranges";
  }
}

/// Throws for the cells from some row on.
class ThrowingProvider final : public ForwardingValueContextProvider {
public:
  ThrowingProvider(DOM::Table const& table, unsigned long row)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)),
        _row(row) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    if (cellInfo.getRowIndex() >= _row) {
      throw std::runtime_error(std::to_string(cellInfo.getRowIndex()));
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

private:
  unsigned long _row;
};

TEST_F(ManyRepeatedCells, WhatTheProviderThrowsForTheFirstCellReachesTheCaller) {
  ThrowingProvider const throwing(table, 12'345);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    try {
      static_cast<void>(findRepeated({throwing, table, ranges, {threadCount}}));
      ADD_FAILURE() << "nothing was thrown";
    } catch (std::runtime_error const& error) {
      EXPECT_STREQ(error.what(), "12345") << threadCount << " threads";
    }
  }
}

}  // namespace

}  // namespace Zorv::ConditionalFormatters
