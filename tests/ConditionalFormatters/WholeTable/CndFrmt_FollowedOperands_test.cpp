#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedOperands.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/Operands/CndFrmt_Threshold.h"
#include "ConditionalFormatters/TextsOfOneHash.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CollectOperands.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using DOM::TopBottomConditionalFormatOperator;
using Rank = DOM::TopBottomConditionalFormatType;

constexpr OperandNeeds everyNeed{
    .mean = true, .largest = 3, .smallest = 2, .ranking = true, .occurrences = true};

/// A value of any kind, often one that others have, too.
FormulaValue drawFollowed(std::mt19937& random) {
  switch (random() % 24) {
    case 0:
      return empty();
    case 1:
      return boolean(random() % 2 == 0);
    case 2:
      return error(random() % 2 == 0 ? FormulaModel::FormulaErrorCode::Value
                                     : FormulaModel::FormulaErrorCode::Null);
    case 3:
      return number(random() % 2 == 0 ? -0.0 : 0.0);
    case 4:
      return number(random() % 8 != 0 ? 1e16 : random() % 2 == 0 ? infinity : -infinity);
    case 5:
      return number(random() % 8 == 0 ? nan : -1e16);
    case 6:
    case 7:
    case 8:
      return text(std::string(random() % 2 * 20, 'x') + std::to_string(random() % 30));
    default:
      return number((static_cast<double>(random() % 200) - 60) * 0.1);
  }
}

FollowedOperands::Clock::time_point inFuture() {
  return FollowedOperands::Clock::now() + std::chrono::hours(1);
}

class FollowedOperandsTest : public testing::Test {
protected:
  static constexpr unsigned long rows = 60;
  static constexpr unsigned long columns = 4;

  [[nodiscard]] std::vector<CellIndex> listRepeated(CollectedOperands const& collected) const {
    std::vector<CellIndex> repeated;
    for (unsigned long row = 0; row < watched.endRow; ++row) {
      for (unsigned long column = 0; column < watched.endColumn; ++column) {
        if (collected.repeated->contains(row, column)) {
          repeated.push_back({RowIndex(row), ColumnIndex(column)});
        }
      }
    }
    return repeated;
  }

  [[nodiscard]] CollectedOperands collectAnew() const {
    return collectOperands({provider, table, ranges, {1}}, everyNeed, nullptr);
  }

  /// Expects the operands that a walk over all cells gives.
  void expectUpToDate(FollowedOperands const& followed, CollectedOperands const& expected) const {
    double const mean = followed.getMean().mean.get();
    double const expectedMean = expected.mean.mean.get();
    ASSERT_EQ(std::isnan(mean), std::isnan(expectedMean));
    ASSERT_TRUE(std::isnan(mean) ||
                std::bit_cast<std::uint64_t>(mean) == std::bit_cast<std::uint64_t>(expectedMean));
    ASSERT_EQ(followed.getMean().count, expected.mean.count);
    for (TopBottomConditionalFormatOperator const& record :
         {TopBottomConditionalFormatOperator(Rank::Top, 3, false),
          {Rank::Bottom, 2, false},
          {Rank::Top, 100, false},
          {Rank::Bottom, 10, true},
          {Rank::Top, 0, false}}) {
      ASSERT_EQ(followed.getThreshold(record).rank,
                thresholdRank(record, expected.ranking->count()));
      auto const threshold = followed.getThreshold(record).threshold;
      if (threshold) {
        auto const wanted = expected.ranking->at(followed.getThreshold(record).rank,
                                                 rankingOrderOf(record.getType()));
        ASSERT_TRUE(*threshold == wanted || std::isnan(wanted.get()));
      }
    }
    for (unsigned long row = 0; row < watched.endRow; ++row) {
      for (unsigned long column = 0; column < watched.endColumn; ++column) {
        ASSERT_EQ(followed.isRepeated({RowIndex(row), ColumnIndex(column)}),
                  expected.repeated->contains(row, column))
            << row << ',' << column;
      }
    }
  }

  /// Expects the operands of now, and exactly the cells that began to repeat a value or ended.
  void expectFollowed(FollowedOperands const& followed, std::vector<CellIndex> const& flipped,
                      CollectedOperands& before) const {
    auto now = collectAnew();
    ASSERT_NO_FATAL_FAILURE(expectUpToDate(followed, now));
    std::vector<CellIndex> differing;
    std::ranges::set_symmetric_difference(listRepeated(before), listRepeated(now),
                                          std::back_inserter(differing));
    ASSERT_EQ(flipped, differing);
    before = std::move(now);
  }

  DOM::Table table;
  PlainValueContextProvider const provider{table};
  TableRange watched{0, 0, rows, columns};  ///< cells that the test looks at
  /// The second range overlaps the first one, the last holds single cells only.
  std::vector<TableRange> ranges{{0, 0, rows, 2}, {20, 1, 40, 4}, {50, 3, 51, 4}};
};

TEST_F(FollowedOperandsTest, AreThoseOfAWalkOverAllCellsAfterRandomEdits) {
  for (unsigned const seed : {1U, 2U, 3U}) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (unsigned long row = 0; row < rows; ++row) {
      table.setValue(row, random() % columns, drawFollowed(random));
    }
    FollowedOperands followed(provider, table, ranges, everyNeed);
    EXPECT_FALSE(followed.isComplete());
    followed.prepareUntil(inFuture());
    ASSERT_TRUE(followed.isComplete());
    auto expected = collectAnew();
    ASSERT_NO_FATAL_FAILURE(expectUpToDate(followed, expected));
    for (int edit = 0; edit < 300; ++edit) {
      unsigned long const row = random() % rows;
      unsigned long const column = random() % columns;
      TableRange const area{row, column, row + 1 + random() % 3, column + 1 + random() % 2};
      for (unsigned long changed = row; changed < area.endRow; ++changed) {
        if (random() % 4 == 0) {
          table.removeCell(changed, column);
        } else {
          table.setValue(changed, column, drawFollowed(random));
        }
      }
      // Areas may share cells, and hold some that did not change.
      std::vector<TableRange> const areas{area, {row, 0, row + 1, column + 1}};
      auto const flipped = followed.valuesChanged(areas);
      ASSERT_NO_FATAL_FAILURE(expectFollowed(followed, flipped, expected)) << "edit " << edit;
    }
  }
}

TEST_F(FollowedOperandsTest, AreThoseOfAWalkOverAllCellsAfterEditsOfThousandsOfCells) {
  std::mt19937 random(9);
  watched = {0, 0, 2'600, 4};
  ranges = {{0, 0, 2'600, 2}, {500, 1, 1'000, 3}};
  auto const draw = [&] {
    // Half of the numbers lie among many others, and half are those of other tests.
    return random() % 2 == 0 ? drawFollowed(random)
                             : number(static_cast<double>(random() % 3'000) * 0.25 - 300);
  };
  auto const fill = [&](TableRange const& area) {
    for (unsigned long row = area.firstRow; row < area.endRow; ++row) {
      for (unsigned long column = area.firstColumn; column < area.endColumn; ++column) {
        random() % 8 == 0 ? table.removeCell(row, column) : table.setValue(row, column, draw());
      }
    }
  };
  fill({0, 0, 2'600, 2});
  FollowedOperands followed(provider, table, ranges, everyNeed);
  followed.prepareUntil(inFuture());
  auto expected = collectAnew();
  for (int edit = 0; edit < 12; ++edit) {
    SCOPED_TRACE(edit);
    std::vector<TableRange> const areas{{random() % 100, 0, 2'400 + random() % 200, 2}};
    fill(areas.front());
    auto const flipped = followed.valuesChanged(areas);
    ASSERT_NO_FATAL_FAILURE(expectFollowed(followed, flipped, expected));
    // A column goes with most of what has just come.
    SheetMoves moves;
    moves.columns.add({AxisEdit::Kind::Delete, 1, 1});
    table.deleteColumns(1, 1);
    // The order of the cells is not that in which they came.
    moves.rows.add({AxisEdit::Kind::Move, 0, 1, 1'300});
    table.moveRows(0, 1, 1'300);
    ASSERT_TRUE(followed.linesChanged(moves, ranges));
    expected = collectAnew();
    ASSERT_NO_FATAL_FAILURE(expectUpToDate(followed, expected));
  }
}

/// Makes a random edit of rows or columns near the ranges.
void editLines(std::mt19937& random, DOM::Table& table, SheetMoves& moves) {
  bool const isOfRows = random() % 2 == 0;
  unsigned long const first = random() % (isOfRows ? 50 : 6);
  unsigned long const count = 1 + random() % 3;
  unsigned long const before = random() % 2 == 0 ? random() % (first + 1) : first + count + 4;
  LineMoves& ofAxis = isOfRows ? moves.rows : moves.columns;
  switch (random() % 3) {
    case 0:
      isOfRows ? table.insertRows(first, count) : table.insertColumns(first, count);
      ofAxis.add({AxisEdit::Kind::Insert, first, count});
      break;
    case 1:
      isOfRows ? table.deleteRows(first, count) : table.deleteColumns(first, count);
      ofAxis.add({AxisEdit::Kind::Delete, first, count});
      break;
    default:
      isOfRows ? table.moveRows(first, count, before) : table.moveColumns(first, count, before);
      ofAxis.add({AxisEdit::Kind::Move, first, count, before});
  }
}

TEST_F(FollowedOperandsTest, AreThoseOfAWalkOverAllCellsAfterEditsOfRowsAndColumns) {
  for (unsigned const seed : {1U, 2U, 3U, 4U, 5U, 6U}) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    ranges = {{0, 0, rows, 2}, {20, 1, 40, 4}, {50, 3, 51, 4}};
    std::optional<FollowedOperands> followed;
    int followedCount = 0;
    for (int edit = 0; edit < 200; ++edit) {
      for (int cell = 0; cell < 4; ++cell) {
        unsigned long const row = random() % rows;
        unsigned long const column = random() % columns;
        table.setValue(row, column, drawFollowed(random));
        std::vector<TableRange> const areas{{row, column, row + 1, column + 1}};
        if (followed) {
          static_cast<void>(followed->valuesChanged(areas));
        }
      }
      if (!followed) {
        followed.emplace(provider, table, ranges, everyNeed);
        followed->prepareUntil(inFuture());
      }
      SheetMoves moves;
      for (std::uint32_t part = random() % 2 + 1; part > 0; --part) {
        editLines(random, table, moves);
      }
      // Ranges stay where they are, or follow their corners as far as the test looks.
      for (TableRange& range : ranges) {
        TableRange const moved = moves.move(range);
        bool const isInSight =
            !moved.isEmpty() && moved.endRow <= rows && moved.endColumn <= columns;
        range = random() % 4 != 0 && isInSight ? moved : range;
      }
      if (!followed->linesChanged(moves, ranges)) {
        followed.reset();
        continue;
      }
      ++followedCount;
      ASSERT_NO_FATAL_FAILURE(expectUpToDate(*followed, collectAnew())) << "edit " << edit;
      // The structures are sound: values can be set and removed.
      unsigned long const row = random() % rows;
      table.setValue(row, 1, drawFollowed(random));
      std::vector<TableRange> const areas{{row, 1, row + 1, 2}};
      static_cast<void>(followed->valuesChanged(areas));
      ASSERT_NO_FATAL_FAILURE(expectUpToDate(*followed, collectAnew())) << "edit " << edit;
    }
    EXPECT_GT(followedCount, 150) << "most edits were not followed";
  }
}

TEST_F(FollowedOperandsTest, FollowEditsOfLinesThatTakeOrBringFewCells) {
  constexpr unsigned long many = 10'000;
  for (unsigned long row = 0; row < many; ++row) {
    table.setValue(row, 0, number(1));
  }
  std::vector<TableRange> const column{{0, 0, DOM::Table::rowCount, 1}};
  std::vector<TableRange> const next{{0, 1, DOM::Table::rowCount, 2}};
  FollowedOperands followed(provider, table, column, everyNeed);
  followed.prepareUntil(inFuture());
  SheetMoves taken;
  taken.rows.add({AxisEdit::Kind::Delete, 0, 5'000});
  EXPECT_FALSE(followed.linesChanged(taken, column));
  SheetMoves brought;
  brought.columns.add({AxisEdit::Kind::Move, 0, 1, 5});
  EXPECT_FALSE(followed.linesChanged(brought, next)) << "other cells";
  EXPECT_FALSE(followed.linesChanged(SheetMoves(), {column.front(), column.front()}));
  EXPECT_EQ(followed.getMean().count, many);

  SheetMoves empty;
  empty.rows.add({AxisEdit::Kind::Delete, many, 500'000});
  table.deleteRows(many, 500'000);
  EXPECT_TRUE(followed.linesChanged(empty, column)) << "many rows without cells";
  table.deleteRows(0, 4'000);
  SheetMoves few;
  few.rows.add({AxisEdit::Kind::Delete, 0, 4'000});
  EXPECT_TRUE(followed.linesChanged(few, column));
  EXPECT_EQ(followed.getMean().count, 6'000U);
  table.insertColumns(0, 1);
  SheetMoves before;
  before.columns.add({AxisEdit::Kind::Insert, 0, 1});
  EXPECT_TRUE(followed.linesChanged(before, next));
  EXPECT_EQ(followed.getMean().count, 6'000U);
  EXPECT_TRUE(followed.isRepeated({RowIndex(5'999), ColumnIndex(1)}));
}

TEST_F(FollowedOperandsTest, ThatAreNotCompleteFollowEditsThatLeaveTheirCells) {
  table.setValue(5, 0, number(1));
  std::vector<TableRange> const column{{0, 0, rows, 1}};
  FollowedOperands followed(provider, table, column, everyNeed);
  SheetMoves beside;
  beside.columns.add({AxisEdit::Kind::Insert, 1, 1});
  beside.rows.add({AxisEdit::Kind::Delete, rows, 3});
  EXPECT_TRUE(followed.linesChanged(beside, column));
  SheetMoves inside;
  inside.rows.add({AxisEdit::Kind::Insert, 5, 1});
  EXPECT_FALSE(followed.linesChanged(inside, column));
  EXPECT_FALSE(followed.linesChanged(beside, {{0, 0, rows, 2}})) << "other ranges";
}

TEST_F(FollowedOperandsTest, KnowThatACellRepeatsAValueAfterItLeftOneOfSeveralRanges) {
  // The first cell is one of two ranges, and has the value of another cell or not.
  for (double const other : {1.0, 2.0}) {
    DOM::Table edited;
    PlainValueContextProvider const ofEdited(edited);
    edited.setValue(0, 1, number(1));
    edited.setValue(9, 1, number(other));
    std::vector<TableRange> const before{{0, 0, 1, 9}, {0, 1, 10, 2}};
    std::vector<TableRange> const after{{0, 0, 1, 9}, {0, 0, 10, 1}};
    FollowedOperands followed(ofEdited, edited, before, everyNeed);
    followed.prepareUntil(inFuture());
    EXPECT_TRUE(followed.isRepeated({RowIndex(0), ColumnIndex(1)}));
    // Out of the first range, and still in the second one, with it.
    edited.moveRows(0, 1, 5);
    SheetMoves moves;
    moves.rows.add({AxisEdit::Kind::Move, 0, 1, 5});
    EXPECT_TRUE(followed.linesChanged(moves, before));
    EXPECT_EQ(followed.isRepeated({RowIndex(4), ColumnIndex(1)}), other == 1);
    // Out of both, and into the second one.
    edited.moveColumns(1, 1, 0);
    SheetMoves back;
    back.columns.add({AxisEdit::Kind::Move, 1, 1, 0});
    EXPECT_TRUE(followed.linesChanged(back, after));
    EXPECT_EQ(followed.isRepeated({RowIndex(4), ColumnIndex(0)}), other == 1);
  }
}

TEST_F(FollowedOperandsTest, HoldNothingOnceAllCellsAreGone) {
  std::mt19937 random(4);
  for (unsigned long row = 0; row < rows; ++row) {
    table.setValue(row, 1, drawFollowed(random));
  }
  FollowedOperands followed(provider, table, ranges, everyNeed);
  followed.prepareUntil(inFuture());
  for (unsigned long row = 0; row < rows; ++row) {
    table.removeCell(row, 1);
  }
  std::vector<TableRange> const areas{{0, 0, 1'048'576, 16'384}};
  static_cast<void>(followed.valuesChanged(areas));
  EXPECT_EQ(followed.size(), 0U);
  EXPECT_EQ(followed.getMean().count, 0U);
  EXPECT_EQ(followed.getThreshold({Rank::Top, 1, false}).rank, 0U);
}

TEST_F(FollowedOperandsTest, KeepOnlyWhatIsNeeded) {
  table.setValue(0, 0, text("a"));
  table.setValue(1, 0, number(1));
  FollowedOperands followed(provider, table, ranges, {.mean = true});
  followed.prepareUntil(inFuture());
  EXPECT_EQ(followed.size(), 1U) << "texts are of no use for a mean";
  EXPECT_EQ(followed.getMean().mean.get(), 1);
}

TEST_F(FollowedOperandsTest, AreWorthItForFewCells) {
  FollowedOperands const followed(provider, table, ranges, everyNeed);
  std::vector<TableRange> const few{{0, 0, rows, columns}, {70, 0, 1'048'576, 16'384}};
  EXPECT_TRUE(followed.isWorthFollowing(few));
  EXPECT_FALSE(followed.isWorthFollowing(std::vector<TableRange>(70, few.front())));
}

TEST_F(FollowedOperandsTest, TextsThatCrowdAreNotFollowed) {
  auto const texts = makeTextsOfOneHash(10);
  for (unsigned long row = 0; row < texts.size(); ++row) {
    table.setValue(row, 0, text(texts[row]));
  }
  std::vector<TableRange> const all{{0, 0, texts.size(), 1}};
  FollowedOperands followed(provider, table, all, everyNeed);
  followed.prepareUntil(inFuture());
  EXPECT_TRUE(followed.isHopeless());
  EXPECT_FALSE(followed.isComplete());
}

/// Throws for the cells from row 10 on while it is told to.
class EarlyEndProvider final : public ForwardingValueContextProvider {
public:
  EarlyEndProvider(DOM::Table const& table, bool const& fails)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)),
        _fails(fails) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    if (_fails && cellInfo.getRowIndex() >= 10) {
      throw std::runtime_error("no value");
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

private:
  bool const& _fails;
};

TEST(FollowedOperandsSteps, AnEditRemovesANumberThatIsReadAndNotYetRanked) {
  DOM::Table table;
  for (unsigned long const row : {0UL, 1UL, 2UL, 10UL}) {
    table.setValue(row, 0, number(static_cast<double>(row)));
  }
  bool fails = true;
  EarlyEndProvider const provider(table, fails);
  std::vector<TableRange> const ranges{{0, 0, 3, 1}, {10, 0, 11, 1}};
  FollowedOperands followed(provider, table, ranges, everyNeed);
  EXPECT_THROW(followed.prepareUntil(inFuture()), std::runtime_error);
  table.setValue(2, 0, number(-7));
  std::vector<TableRange> const areas{{2, 0, 3, 1}};
  static_cast<void>(followed.valuesChanged(areas));
  fails = false;
  followed.prepareUntil(inFuture());
  EXPECT_EQ(followed.getThreshold({Rank::Top, 100, false}).rank, 4U);
  EXPECT_EQ(followed.getThreshold({Rank::Top, 2, false}).threshold->get(), 1);
}

/// So many cells that they are read in several steps, with edits in between.
TEST(FollowedOperandsSteps, EditsReachWhatIsReadAndWhatIsNot) {
  constexpr unsigned long many = 150'000;
  std::mt19937 random(6);
  DOM::Table table;
  for (unsigned long row = 0; row < many; ++row) {
    table.setValue(row, 0, number(static_cast<double>(random() % 90'000) * 0.1));
  }
  PlainValueContextProvider const provider(table);
  // Some of its rows have no cell when reading begins.
  std::vector<TableRange> const ranges{{0, 0, many + 10, 1}};
  FollowedOperands followed(provider, table, ranges, everyNeed);
  int steps = 0;
  while (!followed.isComplete()) {
    followed.prepareUntil(FollowedOperands::Clock::now() + std::chrono::milliseconds(1));
    for (unsigned long const row :
         {random() % many, random() % 100, many - 1 - random() % 100, many + random() % 10}) {
      table.setValue(row, 0, number(static_cast<double>(random() % 90'000) * 0.1));
      std::vector<TableRange> const areas{{row, 0, row + 1, 1}};
      static_cast<void>(followed.valuesChanged(areas));
    }
    ++steps;
  }
  EXPECT_GT(steps, 2);
  auto const expected = collectOperands({provider, table, ranges, {1}}, everyNeed, nullptr);
  EXPECT_EQ(followed.getMean().mean.get(), expected.mean.mean.get());
  EXPECT_EQ(followed.getMean().count, expected.mean.count);
  TopBottomConditionalFormatOperator const record(Rank::Top, 10, true);
  std::size_t const rank = thresholdRank(record, expected.ranking->count());
  EXPECT_EQ(followed.getThreshold(record).rank, rank);
  EXPECT_EQ(followed.getThreshold(record).threshold->get(),
            expected.ranking->at(rank, RankingOrder::LargestFirst).get());
  for (unsigned long row = 0; row < many + 10; ++row) {
    ASSERT_EQ(followed.isRepeated({RowIndex(row), ColumnIndex(0)}),
              expected.repeated->contains(row, 0))
        << row;
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
