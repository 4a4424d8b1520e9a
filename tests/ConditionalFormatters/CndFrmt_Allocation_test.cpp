#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_LiveView.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Following/CndFrmt_TextClasses.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueClasses.h"
#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"
#include "DOM/Table.h"
#include "support/Allocations.h"
#include "support/Documents.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

class AllocationTest : public testing::Test {
protected:
  AllocationTest() {
    table.setValue(0, 0, text("a text that is too long to be kept inside a string object"));
    table.setValue(1, 0, number(2));
    table.setValue(2, 0, number(3));
    addStyle(styles, makeUUID(1)).setRunProps(makeProps<DOM::RunProps>([](DOM::RunProps& props) {
      props.bold = true;
    }));
    addStyle(styles, makeUUID(2), makeUUID(1))
        .setCellProps(
            makeProps<DOM::CellProps>([](DOM::CellProps& props) { props.locked = true; }));
    addFormat(table, {{0, 0, 2, 1}},
              DOM::UniquenessConditionalFormatOperator{DOM::UniquenessType::Unique}, makeUUID(1));
    addFormat(table, {{0, 0, 2, 1}}, holdsAlways(), makeUUID(2));
  }

  [[nodiscard]] DOM::SharedCellStylePtr getStyle(unsigned long row) const {
    return calculator.getConditionalFormatCellStyle(styles, table.getCellInfo(row, 0));
  }

  DOM::Table table;
  DOM::Styles styles;
  ConditionalFormattingPropsCalculator const calculator{
      std::make_unique<PlainValueContextProvider>(table)};
};

TEST_F(AllocationTest, TheCounterCounts) {
  CountedScope const counted;
  (void)getStyle(0);
  EXPECT_GT(counted.getCount(), 0);
}

TEST_F(AllocationTest, ARememberedCellAllocatesNothing) {
  table.insertRows(1, 1);  // so that identities and positions differ
  table.setValue(1, 0, text("a text"));
  DOM::Table other(UUID{});
  other.setValue(0, 0, number(1));
  addFormat(other, {{0, 0, 1, 1}}, holdsAlways(), makeUUID(1));
  (void)calculator.getConditionalFormatCellStyle(styles, other.getCellInfo(0, 0));
  for (unsigned long row = 0; row < 4; ++row) {
    auto const first = getStyle(row);
    EXPECT_EQ(first == nullptr, row == 3);
    CountedScope const counted;
    auto const second = getStyle(row);
    EXPECT_EQ(counted.getCount(), 0) << row;
    EXPECT_EQ(second, first);
  }
}

TEST_F(AllocationTest, ATableWithoutFormatsAllocatesNothing) {
  DOM::Table other;
  other.setValue(0, 0, number(1));
  CountedScope const counted;
  EXPECT_EQ(calculator.getConditionalFormatCellStyle(styles, other.getCellInfo(0, 0)), nullptr);
  EXPECT_EQ(counted.getCount(), 0);
}

TEST_F(AllocationTest, AListOfFormatsThatStandsAllocatesNothing) {
  (void)calculator.getConditionalFormatRefs(table);
  CountedScope const counted;
  EXPECT_EQ(calculator.getConditionalFormatRefs(table).size(), 2U);
  EXPECT_EQ(counted.getCount(), 0);
}

/// Calls the work with its first, second, third ... allocation failing, until none does. Returns
/// how many failed.
template <class Work>
long failEachAllocation(Work const& work) {
  for (long failing = 1;; ++failing) {
    CountedScope const counted(failing);
    try {
      work();
      return failing - 1;
    } catch (std::bad_alloc const&) {
      continue;
    }
  }
}

TEST_F(AllocationTest, AListOfFormatsThatCannotBeMadeIsNotRemembered) {
  ConditionalFormatRefs const* refs = nullptr;
  EXPECT_GT(failEachAllocation([&] { refs = &calculator.getConditionalFormatRefs(table); }), 2);
  ASSERT_EQ(refs->size(), 2U);
  EXPECT_EQ((*refs)[1].first.size(), 1U);
  EXPECT_EQ(refs, &calculator.getConditionalFormatRefs(table));
}

TEST_F(AllocationTest, ACellThatCannotBeResolvedIsNotRemembered) {
  DOM::SharedCellStylePtr style;
  // Each new attempt gets further than the one before: nothing half done is taken for an answer.
  EXPECT_GT(failEachAllocation([&] { style = getStyle(0); }), 10);
  ASSERT_NE(style, nullptr);
  EXPECT_EQ((*style)->getRunProps()->bold, true);
  EXPECT_EQ((*style)->getCellProps()->locked, true);
  EXPECT_EQ(getStyle(0), style);
  EXPECT_EQ(calculator.resolve(styles, table.getCellInfo(0, 0)), style);
}

TEST_F(AllocationTest, ATextThatCannotBeKeptIsNotCounted) {
  TextClasses classes;
  constexpr CellIdentity texts = 2'000;  // so that hash tables and chunks of texts grow
  long failed = 0;
  for (CellIdentity text = 0; text < texts; ++text) {
    std::string written = std::to_string(text);
    written.resize(written.size() + text % 3 * 40, 'x');
    TextClasses::Index index = 0;
    failed += failEachAllocation([&] {
      EXPECT_EQ(classes.size(), text);
      index = classes.getOrCreate(written, TextClasses::hashOf(written)).value();
    });
    EXPECT_EQ(classes.add(index, text).count, 0U);
    EXPECT_EQ(classes.at(index), written);
  }
  EXPECT_GT(failed, 500);
}

TEST_F(AllocationTest, AValueThatCannotBeCountedIsNot) {
  ValueClasses classes;
  constexpr CellIdentity values = 2'000;  // so that hash tables grow
  long failed = 0;
  for (CellIdentity value = 0; value < values; ++value) {
    ValueBits const bits = bitsOfNumber(static_cast<double>(value));
    failed += failEachAllocation([&] { EXPECT_EQ(classes.add(bits, value).count, 0U); });
    EXPECT_EQ(classes.count(bits), 1U);
  }
  EXPECT_GT(failed, 100);
}

class LiveAllocationTest : public AllocationTest, public testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(WithAndWithoutPreparing, LiveAllocationTest, testing::Bool());

TEST_P(LiveAllocationTest, AnswersAreRightWhicheverAllocationOfAChangeFails) {
  LiveResolver live = calculator.follow(styles, table);
  LiveView view(live);
  view.show({0, 0, 4, 2});
  DOM::SharedCellStylePtr painted[4][2];
  auto const paint = [&](ResolvedCell const& cell) {
    painted[cell.cellInfo.getRowIndex()][cell.cellInfo.getColIndex()] = cell.style;
  };
  view.refresh(paint);
  bool hasFailed = true;
  for (long failing = 1; hasFailed; ++failing) {
    // What follows edits was forgotten where the change before failed.
    while (GetParam() && live.prepareSome(std::chrono::milliseconds(1))) {
    }
    // The column goes to and fro, and row 1 repeats row 0, or does not.
    unsigned long const column = failing % 2 == 0 ? 0 : 1;
    column == 0 ? table.deleteColumns(0, 1) : table.insertColumns(0, 1);
    table.setValue(1, column, column == 0 ? table.findCell(0, column)->value : number(2));
    std::vector<Change> const changes = {
        LinesChanged{.table = &table,
                     .axis = Axis::Columns,
                     .edit = column == 0 ? LineEdit::Delete : LineEdit::Insert,
                     .first = 0,
                     .count = 1},
        ValuesChanged{&table, {{1, column, 2, column + 1}}}, FormatsChanged{&table}};
    hasFailed = false;
    try {
      CountedScope const counted(failing);
      static_cast<void>(live.apply(changes));
      view.refresh(paint);
    } catch (std::bad_alloc const&) {
      hasFailed = true;
    }
    view.refresh(paint);
    calculator.clearTablesRangesCache();
    TableResolver const anew = calculator.prepare(styles, table);
    for (unsigned long row = 0; row < 4; ++row) {
      for (unsigned long const each : {0UL, 1UL}) {
        auto const cellInfo = table.getCellInfo(row, each);
        EXPECT_EQ(live.resolve(cellInfo), anew.resolve(cellInfo)) << failing << ", row " << row;
        EXPECT_EQ(painted[row][each], anew.resolve(cellInfo)) << failing << ", row " << row;
      }
    }
  }
}

/// The number of blocks that an operator consists of.
template <class Make>
std::size_t countBlocks(Make const& make) {
  constexpr auto label = "operator";
  std::unique_ptr<Operator const> made;
  {
    LabelledScope const scope(label);
    made = make();
  }
  return countLivingBlocks(label);
}

// So nothing was put into its collection, which no question about one value after the other tells.
TEST(OperatorsFactoryAllocation, AnOperatorOverRangesWithoutValuesKeepsNone) {
  DOM::Table table;
  table.setValue(3, 3, FormulaValue());
  PlainValueContextProvider const provider(table);
  OperatorsFactory const factory(provider, table);
  DOM::UniquenessConditionalFormatOperator const record{DOM::UniquenessType::Unique};
  DOM::ConditionalFormat const format({}, record, UUID());
  std::size_t const ofNoValues = countBlocks(
      [&] { return std::make_unique<UniquenessOperator>(record, FormulaValueMultiset()); });
  for (std::vector<TableRange> const& ranges :
       {std::vector<TableRange>(), {{0, 0, 2, 2}}, {{0, 0, 9, 9}}}) {
    EXPECT_EQ(countBlocks([&] { return factory.create({ranges, std::cref(format)}); }), ofNoValues);
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
