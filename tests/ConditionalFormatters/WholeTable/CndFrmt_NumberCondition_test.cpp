#include "ConditionalFormatters/WholeTable/CndFrmt_NumberCondition.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OperandNeeds.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"
#include "DOM/ConditionalFormat.h"
#include "Formulas/LookupCache.h"
#include "support/PlainHost.h"
#include "support/RunningClock.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {

namespace {

using namespace TestSupport;
using namespace DOM;

/// Cells of many row blocks: numbers whose sum depends on the order in which they are added, and
/// texts; and a column that holds NaNs alone.
class NumberConditionTest : public testing::Test {
protected:
  static constexpr unsigned long rows = 9'000;

  NumberConditionTest() {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> draw(-9'999, 9'999);
    for (unsigned long row = 0; row < rows; ++row) {
      int const drawn = draw(random);
      _table.setValue(row, 0, drawn % 5 == 0 ? text("text") : number(drawn * 0.1));
      _table.setValue(row, 1, number(drawn % 100 == 0 ? nan : drawn * 1e9));
    }
    for (unsigned long row = 0; row < 10; ++row) {
      _table.setValue(row, 2, number(nan));
    }
    auto const [begin, end] = _table.getRangeIterators({0, 0, rows, 3});
    for (auto cell = begin; cell != end; ++cell) {
      auto const info = cell.getCellInfo();
      _cells.push_back({{info.getCell()->value, info.getCellIndex()}, true});
    }
  }

  /// Expects that the condition judges each cell as the factory's operator does.
  void expectSameAnswers(ConditionalFormatOperator record, std::vector<TableRange> const& ranges,
                         std::string const& name) {
    ConditionalFormat const format({}, std::move(record), UUID::generate());
    ConditionalFormatRef const formatRef(ranges, format);
    auto const isExpected = _factory.create(formatRef);
    std::vector<bool> expected;
    for (TestedCell const& cell : _cells) {
      expected.push_back((*isExpected)(cell.data));
    }
    for (unsigned const threadCount : {1U, 7U}) {
      RangeOperands operands(_provider, _table, ranges);
      operands.addFormat(format.getOperator());
      auto const condition =
          prepareCondition({_provider, _table, &operands, {.resources = {threadCount}}}, formatRef);
      for (std::size_t index = 0; index < _cells.size(); ++index) {
        if (condition->holds(_cells[index], _pass) != expected[index]) {
          auto const& cell = _cells[index].data.cellIndex;
          FAIL() << name << ", row " << cell.getRow().get() << ", column "
                 << cell.getColumn().get();
        }
      }
    }
  }

  static constexpr double nan = std::numeric_limits<double>::quiet_NaN();

  Table _table;
  PlainValueContextProvider _provider{_table};
  std::vector<TestedCell> _cells;  ///< all of the table
  OperatorsFactory _factory{_provider, _table};
  Formulas::LookupCache _lookups;
  PassContext _pass{_lookups, noonOn21November(), {}};
  std::vector<std::vector<TableRange>> const _ranges = {
      {},
      {{0, 0, rows, 2}},
      {{100, 0, 5'000, 1}, {50, 0, 7'000, 2}},
      {{0, 2, rows, 3}},
  };
};

TEST_F(NumberConditionTest, TopAndBottomAnswerAsTheirOperatorOnAnyNumberOfThreads) {
  struct Case {
    unsigned value;
    bool usePercent;
  };
  // The last count that is selected, and the first that is sorted; more than there are numbers.
  Case const cases[] = {{0, false}, {1, false}, {64, false}, {65, false}, {50'000, false},
                        {0, true},  {1, true},  {10, true},  {100, true}, {250, true}};
  for (auto const type :
       {TopBottomConditionalFormatType::Top, TopBottomConditionalFormatType::Bottom}) {
    for (Case const& each : cases) {
      for (auto const& ranges : _ranges) {
        std::string name = type == TopBottomConditionalFormatType::Top ? "top " : "bottom ";
        name += std::to_string(each.value);
        name += each.usePercent ? " percent" : "";
        expectSameAnswers(TopBottomConditionalFormatOperator(type, each.value, each.usePercent),
                          ranges, name);
      }
    }
  }
}

TEST_F(NumberConditionTest, AveragesAnswerAsTheirOperatorOnAnyNumberOfThreads) {
  using Type = AboveAverageConditionalFormatType;
  for (auto const type : {Type::Above, Type::EqualOrAbove, Type::Below, Type::EqualOrBelow}) {
    for (auto const& ranges : _ranges) {
      expectSameAnswers(AboveAverageConditionalFormatOperator(type), ranges,
                        "type " + std::to_string(static_cast<int>(type)));
    }
  }
}

TEST_F(NumberConditionTest, TheMeanIsThatOfTheNumbersAddedOneAfterTheOther) {
  // To the first of these each 1 is lost; the sum of a thousand of them would not be.
  Table table;
  table.setValue(0, 0, number(1e16));
  for (unsigned long row = 1; row < rows; ++row) {
    table.setValue(row, 0, number(1));
  }
  table.setValue(rows, 0, number(-1e16));
  PlainValueContextProvider const provider(table);
  std::vector<TableRange> const ranges{{0, 0, rows + 1, 1}};
  ConditionalFormat const format(
      {}, AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::EqualOrAbove),
      UUID::generate());
  ConditionalFormatRef const formatRef(ranges, format);
  CellInfo const cell = table.getCellInfo(0, 0);
  for (unsigned const threadCount : {1U, 2U, 7U}) {
    RangeOperands operands(provider, table, ranges);
    operands.addFormat(format.getOperator());
    auto const condition =
        prepareCondition({provider, table, &operands, {.resources = {threadCount}}}, formatRef);
    EXPECT_TRUE(condition->holds({{number(0), cell.getCellIndex()}, true}, _pass));
    EXPECT_FALSE(condition->holds({{number(-1e-9), cell.getCellIndex()}, true}, _pass));
  }
}

}  // namespace

}  // namespace Zorv::ConditionalFormatters
