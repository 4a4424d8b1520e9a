#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "ConditionalFormatters/Operators/CndFrmt_AboveAverageOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_BinaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_NullaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TextOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TopBottomOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"
#include "DOM/ConditionalFormat.h"
#include "support/RecordingHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char const* noRangesMessage =
    "^/code/ConditionalFormatters/CndFrmt_OperatorsFactory:57: assertion failed: "
    "\"!ranges.empty\\(\\)\"\n$";

constexpr char const* noValueMessage =
    "^/code/ConditionalFormatters/Operators/CndFrmt_UniquenessOperator:62: assertion failed: "
    "\"valueCount != 0\"\n$";

DOM::ConditionalFormatOperator makeUnary() {
  return DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::Equal, Expr());
}
DOM::ConditionalFormatOperator makeBinary() {
  return DOM::BinaryConditionalFormatOperator(DOM::BinaryConditionalFormatType::Between, Expr(),
                                              Expr());
}
DOM::ConditionalFormatOperator makeText() {
  return DOM::TextConditionalFormatOperator(DOM::TextConditionalFormatType::Contains,
                                            std::make_unique<Expr>());
}
DOM::ConditionalFormatOperator makeTop(std::uint32_t count) {
  return DOM::TopBottomConditionalFormatOperator(DOM::TopBottomConditionalFormatType::Top, count,
                                                 false);
}
DOM::ConditionalFormatOperator makeAverage(DOM::AboveAverageConditionalFormatType type) {
  return DOM::AboveAverageConditionalFormatOperator(type);
}
DOM::ConditionalFormatOperator makeUniqueness(DOM::UniquenessType type) {
  return DOM::UniquenessConditionalFormatOperator{type};
}

class OperatorsFactoryTest : public testing::Test {
protected:
  OperatorsFactoryTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  /// The operator of a format with this condition over these ranges; the format stays.
  std::unique_ptr<Operator> create(DOM::ConditionalFormatOperator condition,
                                   std::vector<TableRange> ranges) {
    formats.push_back(std::make_unique<DOM::ConditionalFormat>(std::vector<DOM::TableRangeByID>(),
                                                               std::move(condition), UUID()));
    return factory.create({std::move(ranges), std::cref(*formats.back())});
  }

  RecordingHost host;
  std::unique_ptr<RecordingValueContextProvider> provider = host.makeProvider();
  OperatorsFactory const factory{*provider, host.table};
  std::vector<std::unique_ptr<DOM::ConditionalFormat>> formats;
};

using OperatorsFactoryDeathTest = OperatorsFactoryTest;

FormulaValueData at(unsigned long row, unsigned long column, FormulaValue value = {}) {
  return {std::move(value), CellIndex(RowIndex(row), ColumnIndex(column))};
}

TEST_F(OperatorsFactoryTest, ConstructionAsksNothing) {
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(OperatorsFactoryTest, EachKindOfRecordHasItsOperatorAndItsCallsToTheHost) {
  host.table.setValue(0, 0, number(1));
  host.table.setValue(1, 0, number(2));
  struct Case {
    char const* name;
    DOM::ConditionalFormatOperator record;
    std::type_info const& type;
    std::vector<std::string> calls;
  };
  std::vector<std::string> const formulaCalls{"getFormulasContextProvider"};
  std::vector<std::string> const rangeCalls{"getCellValue(0,0)", "getCellValue(1,0)"};
  Case cases[] = {
      {"nullary",
       DOM::NullaryConditionalFormatOperator(DOM::NullaryConditionalFormatType::Blanks),
       typeid(NullaryOperator),
       {"getTimeZone", "getFormulasContextProvider", "getLocaleContext"}},
      // The unary operator takes its locale when it is made.
      {"unary",
       makeUnary(),
       typeid(UnaryOperator),
       {"getFormulasContextProvider", "getLocaleContext"}},
      {"binary", makeBinary(), typeid(BinaryOperator), formulaCalls},
      {"text", makeText(), typeid(TextOperator), formulaCalls},
      {"top/bottom", makeTop(1), typeid(TopBottomOperator), rangeCalls},
      {"average", makeAverage(DOM::AboveAverageConditionalFormatType::Above),
       typeid(AboveAverageOperator), rangeCalls},
      {"uniqueness", makeUniqueness(DOM::UniquenessType::Unique), typeid(UniquenessOperator),
       rangeCalls},
  };
  for (Case& c : cases) {
    SCOPED_TRACE(c.name);
    host.journal.clear();
    DOM::ConditionalFormat const format({}, std::move(c.record), UUID());
    auto const condition = factory.create({{TableRange{0, 0, 2, 1}}, std::cref(format)});
    ASSERT_NE(condition, nullptr);
    Operator const& reference = *condition;
    EXPECT_EQ(typeid(reference), c.type);
    EXPECT_EQ(host.journal.getEntries(), c.calls);
  }
}

TEST_F(OperatorsFactoryTest, EveryCallMakesAnOperatorAndCollectsAnew) {
  host.table.setValue(0, 0, number(1));
  std::vector<TableRange> const ranges{{0, 0, 1, 1}};
  auto const first = create(makeTop(1), ranges);
  host.table.setValue(0, 0, number(5));
  auto const second = create(makeTop(1), ranges);
  EXPECT_EQ(host.journal.count("getCellValue"), 2U);
  EXPECT_TRUE((*first)(at(0, 0, number(2))));
  EXPECT_FALSE((*second)(at(0, 0, number(2))));
}

TEST_F(OperatorsFactoryTest, FormulasAreWrittenRelativeToTheCornerOfAllRanges) {
  struct Case {
    char const* name;
    std::vector<TableRange> ranges;
    int row;
    int column;
  };
  std::vector<Case> const cases{
      {"one range", {{2, 3, 5, 5}}, 2, 3},
      {"a corner in neither range", {{2, 3, 5, 5}, {6, 0, 9, 2}}, 2, 0},
      {"the same in another order", {{6, 0, 9, 2}, {2, 3, 5, 5}}, 2, 0},
      {"a second range that is higher but further right", {{8, 1, 9, 2}, {3, 6, 4, 7}}, 3, 1},
      {"three ranges", {{9, 9, 10, 10}, {4, 8, 5, 9}, {7, 2, 8, 3}}, 4, 2},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.name);
    for (auto const& makeRecord : {makeUnary, makeBinary, makeText}) {
      auto const condition = create(makeRecord(), c.ranges);
      (void)(*condition)(at(20, 30));
      EXPECT_EQ(host.engine.getShiftCalls().back().rowOffset, 20 - c.row);
      EXPECT_EQ(host.engine.getShiftCalls().back().columnOffset, 30 - c.column);
      EXPECT_EQ(host.engine.getShiftCalls().back().tableContext,
                &host.contextProvider.getContext());
    }
  }
}

TEST_F(OperatorsFactoryTest, ANullaryConditionNeedsNoRanges) {
  auto const condition =
      create(DOM::NullaryConditionalFormatOperator(DOM::NullaryConditionalFormatType::Blanks), {});
  EXPECT_TRUE((*condition)(at(0, 0, empty())));
  EXPECT_FALSE((*condition)(at(0, 0, number(1))));
}

TEST_F(OperatorsFactoryTest, RangeConditionsWithoutRangesJudgeByNothing) {
  EXPECT_FALSE((*create(makeTop(3), {}))(at(0, 0, number(1))));
  // The mean of nothing is not a number, and no number is below it.
  auto const average =
      create(makeAverage(DOM::AboveAverageConditionalFormatType::EqualOrAbove), {});
  EXPECT_TRUE((*average)(at(0, 0, number(1))));
  EXPECT_FALSE((*create(makeUniqueness(DOM::UniquenessType::Unique), {}))(at(0, 0, empty())));
  EXPECT_THAT(host.journal.getEntries(), IsEmpty());
}

TEST_F(OperatorsFactoryTest, CellsOfOverlappingRangesCountTwice) {
  host.table.setValue(0, 0, number(1));
  host.table.setValue(1, 0, number(4));
  std::vector<TableRange> const ranges{{0, 0, 2, 1}, {0, 0, 1, 1}};
  // (1 + 4 + 1) / 3 = 2, where each cell once would give 2.5.
  auto const average = create(makeAverage(DOM::AboveAverageConditionalFormatType::Above), ranges);
  EXPECT_TRUE((*average)(at(0, 0, number(2.25))));
  EXPECT_FALSE((*average)(at(0, 0, number(2))));
  auto const duplicate = create(makeUniqueness(DOM::UniquenessType::Duplicate), ranges);
  EXPECT_TRUE((*duplicate)(at(0, 0, number(1))));
  EXPECT_FALSE((*duplicate)(at(1, 0, number(4))));
}

TEST_F(OperatorsFactoryTest, WhatTheProviderThrowsReachesTheCaller) {
  for (unsigned long row = 0; row < 3; ++row) {
    host.table.setValue(row, 0, text("a value of some length, kept on the heap"));
  }
  for (unsigned long failing = 0; failing < 3; ++failing) {
    SCOPED_TRACE(failing);
    provider->answerBy([&](DOM::CellInfo const& cellInfo) {
      if (cellInfo.getRowIndex() == failing) {
        throw std::out_of_range("no value");
      }
      return cellInfo.getCell()->value;
    });
    std::vector<TableRange> const ranges{{0, 0, 3, 1}};
    EXPECT_THROW((void)create(makeUniqueness(DOM::UniquenessType::Unique), ranges),
                 std::out_of_range);
    EXPECT_THROW((void)create(makeTop(1), ranges), std::out_of_range);
  }
}

TEST_F(OperatorsFactoryTest, WhatAnOperatorsConstructorThrowsReachesTheCaller) {
  host.contextProvider.onGetLocaleContext([] { throw std::runtime_error("no locale"); });
  EXPECT_THROW((void)create(makeUnary(), {{0, 0, 1, 1}}), std::runtime_error);
}

/// Writes a line when it is asked for the formula context.
class TalkingProvider : public RecordingValueContextProvider {
public:
  using RecordingValueContextProvider::RecordingValueContextProvider;
  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
    std::fputs("asked for the formula context\n", stderr);
    return RecordingValueContextProvider::getFormulasContextProvider();
  }
};

TEST_F(OperatorsFactoryDeathTest, AFormulaConditionWithoutRangesIsFatal) {
  EXPECT_DEATH((void)create(makeUnary(), {}), noRangesMessage);
  EXPECT_DEATH((void)create(makeBinary(), {}), noRangesMessage);
  EXPECT_DEATH((void)create(makeText(), {}), noRangesMessage);
}

TEST_F(OperatorsFactoryDeathTest, WithoutValuesNoValueWasCollected) {
  // Whatever stood in the collection would be found by one of these.
  for (FormulaValue const& value : {number(0), number(1), text(""), text("a"), boolean(false),
                                    boolean(true), error(FormulaModel::FormulaErrorCode::Value)}) {
    SCOPED_TRACE(value.which());
    auto const withoutRanges = create(makeUniqueness(DOM::UniquenessType::Unique), {});
    EXPECT_DEATH((void)(*withoutRanges)(at(0, 0, value)), noValueMessage);
    auto const withoutCells = create(makeUniqueness(DOM::UniquenessType::Unique), {{0, 0, 9, 9}});
    EXPECT_DEATH((void)(*withoutCells)(at(0, 0, value)), noValueMessage);
  }
}

TEST_F(OperatorsFactoryDeathTest, TheBaseCellIsComputedBeforeTheFormulaContextIsAskedFor) {
  TalkingProvider const talkingProvider(host.contextProvider, host.journal);
  OperatorsFactory const talkingFactory(talkingProvider, host.table);
  DOM::ConditionalFormat const format({}, makeUnary(), UUID());
  EXPECT_DEATH((void)talkingFactory.create({{}, std::cref(format)}), noRangesMessage);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
