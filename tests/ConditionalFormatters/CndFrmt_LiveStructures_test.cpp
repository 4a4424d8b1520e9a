// What a live resolver keeps of ranges while rows, formats and values change.

#include <atomic>
#include <chrono>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_LiveResolver.h"
#include "ConditionalFormatters/CndFrmt_LiveView.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "ConditionalFormatters/LiveSheet.h"
#include "support/CountingValueContextProvider.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using TestSupport::LiveSheet;
using TestSupport::number;

/// Column A with the numbers 1 to 1,500 and 1 to 500, under rules of all kinds, and a resolver that
/// has prepared everything.
class LiveStructures : public testing::Test {
protected:
  static constexpr unsigned long rows = 2'000;

  LiveStructures() {
    for (unsigned long row = 0; row < rows; ++row) {
      sheet.table.setValue(row, 0, number(static_cast<double>(row % 1'500 + 1)));
    }
    addRules("A1:A2000", "A1>MEDIAN($A:$A)", "COUNTIF($A:$A,A1)=2");
    live.emplace(calculator.follow(sheet.styles, sheet.table));
    while (live->prepareSome(std::chrono::milliseconds(1))) {
    }
  }

  void addRules(char const* range, char const* order, char const* count) {
    sheet.addRule(range, LiveSheet::isAboveAverage());
    sheet.addRule(range, DOM::UniquenessConditionalFormatOperator{DOM::UniquenessType::Duplicate},
                  2);
    sheet.addRule(range, LiveSheet::isTrue(order));
    sheet.addRule(range, LiveSheet::isTrue(count), 2);
  }

  template <class Resolver>
  std::string listHolding(Resolver const& resolver) const {
    std::string list;
    resolver.visit({.range = view}, [&](ResolvedCell const& cell) {
      list += std::to_string(cell.cellInfo.getRowIndex()) + ":";
      for (FormatIndex const format : cell.formats) {
        list += std::to_string(format);
      }
      list += ' ';
    });
    return list;
  }

  /// Expects right answers after changes, for which no range is read as a whole.
  void expectKept(std::vector<Change> const& changes) {
    reads = 0;
    live->apply(changes);
    std::string const held = listHolding(*live);
    EXPECT_LT(reads, 200U) << "not all values";
    calculator.clearTablesRangesCache();
    EXPECT_EQ(held, listHolding(calculator.prepare(sheet.styles, sheet.table)));
  }

  [[nodiscard]] LinesChanged lines(Axis axis, LineEdit edit, unsigned long first,
                                   unsigned long count, unsigned long before = 0) const {
    return {&sheet.table, axis, edit, first, count, before};
  }
  [[nodiscard]] ValuesChanged cell(unsigned long row) const {
    return {&sheet.table, {{row, 0, row + 1, 1}}};
  }

  TableRange view{990, 0, 1'010, 1};
  std::atomic<std::size_t> reads = 0;
  LiveSheet sheet;
  ConditionalFormattingPropsCalculator calculator{
      std::make_unique<TestSupport::CountingValueContextProvider>(sheet.table, reads)};
  std::optional<LiveResolver> live;
};

TEST_F(LiveStructures, StayWhileRowsAreInsertedDeletedAndMoved) {
  sheet.table.insertRows(1'000, 3);
  expectKept({lines(Axis::Rows, LineEdit::Insert, 1'000, 3)});
  sheet.table.deleteRows(500, 2);
  expectKept({lines(Axis::Rows, LineEdit::Delete, 500, 2)});
  sheet.table.moveRows(5, 40, 1'000);
  expectKept({lines(Axis::Rows, LineEdit::Move, 5, 40, 1'000)});
  sheet.table.insertRows(0, 1);
  sheet.table.deleteRows(1'990, 5);
  expectKept(
      {lines(Axis::Rows, LineEdit::Insert, 0, 1), lines(Axis::Rows, LineEdit::Delete, 1'990, 5)});
  sheet.table.setValue(999, 0, number(-7'000));
  expectKept({cell(999)});
}

TEST_F(LiveStructures, StayWhileColumnsAreInsertedDeletedAndMoved) {
  sheet.table.insertColumns(0, 2);
  view = {990, 2, 1'010, 3};
  expectKept({lines(Axis::Columns, LineEdit::Insert, 0, 2)});
  sheet.table.deleteColumns(1, 1);
  sheet.table.insertRows(1'000, 1);
  view = {990, 1, 1'010, 2};
  expectKept({lines(Axis::Columns, LineEdit::Delete, 1, 1),
              lines(Axis::Rows, LineEdit::Insert, 1'000, 1)});
  sheet.table.moveColumns(1, 1, 7);
  view = {990, 6, 1'010, 7};
  expectKept({lines(Axis::Columns, LineEdit::Move, 1, 1, 7)});
  sheet.table.setValue(999, 6, number(-7'000));
  expectKept({ValuesChanged{&sheet.table, {{999, 6, 1'000, 7}}}});
}

TEST_F(LiveStructures, OfFormulasStayWhereTheHostMovesTheirReferences) {
  sheet.table.insertColumns(0, 1);
  view = {990, 1, 1'010, 2};
  sheet.table.setConditionalFormats({});
  addRules("B1:B2000", "B1>MEDIAN($B:$B)", "COUNTIF($B:$B,B1)=2");
  expectKept({lines(Axis::Columns, LineEdit::Insert, 0, 1), FormatsChanged{&sheet.table}});
}

TEST_F(LiveStructures, StayWhileFormatsAndOtherColumnsChange) {
  sheet.addRule("C1:C9", LiveSheet::isTrue("TRUE"));
  expectKept({FormatsChanged{&sheet.table}});
  sheet.table.insertColumns(5, 1);
  expectKept({lines(Axis::Columns, LineEdit::Insert, 5, 1)});
  sheet.table.setValue(999, 0, number(7));
  sheet.addRule("A1:A2000", LiveSheet::isTrue("A1=7"));
  expectKept({cell(999), FormatsChanged{&sheet.table}});
}

TEST_F(LiveStructures, AreMadeAnewAfterAnyChange) {
  live->apply({AnythingChanged()});
  reads = 0;
  listHolding(*live);
  EXPECT_GT(reads, rows);
}

TEST_F(LiveStructures, ReadCellsThatWereToldBeforeTheirLinesMoved) {
  sheet.table.setValue(990, 0, number(1e9));
  sheet.table.setValue(995, 0, number(1e9));
  sheet.table.insertRows(0, 10);
  sheet.table.deleteRows(3, 1);
  sheet.table.insertColumns(0, 1);
  view = {990, 1, 1'010, 2};
  expectKept({cell(990), cell(995), lines(Axis::Rows, LineEdit::Insert, 0, 10),
              lines(Axis::Rows, LineEdit::Delete, 3, 1),
              lines(Axis::Columns, LineEdit::Insert, 0, 1)});
}

/// A number that some others have, one that is alone, a text, or nothing.
FormulaValue drawOften(std::mt19937& random) {
  switch (random() % 8) {
    case 0:
      return TestSupport::empty();
    case 1:
      return TestSupport::text("text " + std::to_string(random() % 400));
    case 2:
      return number(random() % 2 == 0 ? 0.0 : -0.0);
    case 3:
      return number(static_cast<double>(random()) * 0.1);
    default:
      return number(static_cast<double>(random() % 1'000) - 300);
  }
}

TEST_F(LiveStructures, FollowEditsOfMostValuesAtOnce) {
  std::mt19937 random(8);
  view = {0, 0, rows, 1};
  LiveView window(*live);
  window.show(view);
  std::vector<DOM::SharedCellStylePtr> painted(rows);
  auto const paint = [&](ResolvedCell const& told) {
    painted[told.cellInfo.getRowIndex()] = told.style;
  };
  window.refresh(paint);
  for (int edit = 0; edit < 15; ++edit) {
    SCOPED_TRACE(edit);
    unsigned long const first = random() % 300;
    unsigned long const end = rows - random() % 300;
    for (unsigned long row = first; row < end; ++row) {
      sheet.table.setValue(row, 0, drawOften(random));
    }
    reads = 0;
    live->apply({ValuesChanged{&sheet.table, {{first, 0, end, 1}}}});
    EXPECT_LE(reads, end - first) << "more than the edited values";
    window.refresh(paint);
    EXPECT_EQ(listHolding(*live), listHolding(calculator.prepare(sheet.styles, sheet.table)));
    for (unsigned long row = 0; row < rows; ++row) {
      EXPECT_EQ(painted[row], live->resolve(sheet.table.getCellInfo(row, 0))) << row;
    }
    while (live->prepareSome(std::chrono::milliseconds(1))) {
    }
  }
}

/// For formulas a cell with an infinite number holds an error.
TEST(LiveAreas, AnswerLikeAWalkWhereANumberIsInfinite) {
  constexpr double limit = std::numeric_limits<double>::infinity();
  for (char const* const formula :
       {"AVERAGE($A:$A)>1", "SUM($A:$A)>1", "COUNT($A:$A)=5", "A1=MAX($A:$A)", "A1=MIN($A:$A)",
        "A1>MEDIAN($A:$A)", "A1=LARGE($A:$A,2)", "A1=PERCENTILE($A:$A,0.5)", "RANK(A1,$A:$A)=2",
        "COUNTIF($A:$A,A1)=1"}) {
    LiveSheet sheet;
    sheet.setColumn(0, {1, 46'348, -7, 7, limit, -limit});
    sheet.addRule("A1:A9", LiveSheet::isTrue(formula));
    LiveResolver const walking = sheet.follow();
    LiveResolver following = sheet.follow();
    while (following.prepareSome(std::chrono::milliseconds(1))) {
    }
    for (unsigned long row = 0; row < 9; ++row) {
      auto const cell = sheet.table.getCellInfo(row, 0);
      EXPECT_EQ(following.holds(0, cell), walking.holds(0, cell)) << formula << ", row " << row;
    }
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
