#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"

#include <optional>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/Following/CndFrmt_CellIdentities.h"
#include "DOM/Table.h"

namespace Zorv::ConditionalFormatters {
namespace {

constexpr unsigned long lastRow = DOM::Table::rowCount - 1;
constexpr unsigned long lastColumn = DOM::Table::columnCount - 1;

LineMoves movesOf(std::vector<AxisEdit> const& edits, unsigned long length = lastRow + 1) {
  LineMoves moves(length);
  for (AxisEdit const& edit : edits) {
    moves.add(edit);
  }
  return moves;
}

/// Edits a table, whose identities of rows and columns tell where each of them came to lie.
void editTable(DOM::Table& table, AxisEdit const& edit, bool isOfRows) {
  switch (edit.kind) {
    case AxisEdit::Kind::Insert:
      isOfRows ? table.insertRows(edit.first, edit.count)
               : table.insertColumns(edit.first, edit.count);
      break;
    case AxisEdit::Kind::Delete:
      isOfRows ? table.deleteRows(edit.first, edit.count)
               : table.deleteColumns(edit.first, edit.count);
      break;
    default:
      isOfRows ? table.moveRows(edit.first, edit.count, edit.before)
               : table.moveColumns(edit.first, edit.count, edit.before);
  }
}

std::optional<unsigned long> findLine(DOM::AxisIds const& ids, unsigned long id) {
  unsigned long const line = ids.beginOf(id);
  return ids.idAt(line) == id ? std::optional(line) : std::nullopt;
}

/// A sheet after some edits of its rows and columns.
struct EditedLines {
  EditedLines(std::mt19937& random, unsigned kindCount) {
    for (int edit = 0; edit < 12; ++edit) {
      unsigned long const first = random() % 40;
      unsigned long const count = random() % 9;
      AxisEdit const made{static_cast<AxisEdit::Kind>(random() % kindCount), first, count,
                          random() % 2 == 0 ? random() % (first + 1) : first + count + 5};
      bool const isOfRows = random() % 2 == 0;
      editTable(table, made, isOfRows);
      (isOfRows ? moves.rows : moves.columns).add(made);
    }
  }

  /// Where the cell is that was at a position.
  [[nodiscard]] std::optional<PositionKey> find(unsigned long row, unsigned long column) const {
    auto const movedRow = findLine(table.getRowIds(), row + 1);
    auto const movedColumn = findLine(table.getColumnIds(), column + 1);
    return movedRow && movedColumn ? std::optional(positionKeyOf(*movedRow, *movedColumn))
                                   : std::nullopt;
  }

  DOM::Table table;
  SheetMoves moves;
};

TEST(SheetMoves, PutEachCellWhereATablePutsIt) {
  std::mt19937 random(4);
  for (int round = 0; round < 60; ++round) {
    EditedLines const edited(random, 3);
    CellIdentities identities;
    CellIdentities const before;
    identities.follow(edited.moves);
    for (unsigned long row = 0; row < 120; ++row) {
      unsigned long const column = (row * 7 + 3) % 60;
      PositionKey const position = positionKeyOf(row, column);
      auto const expected = edited.find(row, column);
      ASSERT_EQ(edited.moves.move(position), expected) << row << ',' << column;
      CellIdentity const cell = before.identityOf(position);
      ASSERT_EQ(identities.find(cell), expected) << row << ',' << column;
      ASSERT_TRUE(!expected || identities.identityOf(*expected) == cell);
    }
  }
}

TEST(SheetMoves, MoveRangesAsTablesDo) {
  std::mt19937 random(5);
  for (int round = 0; round < 60; ++round) {
    // Where lines are moved, corners without a line may come to lie elsewhere.
    unsigned const kindCount = 2 + random() % 2;
    EditedLines const edited(random, kindCount);
    for (unsigned long first = 0; first < 50; first += 7) {
      TableRange const range{first, 50 - first, first + 20, 60 - first};
      auto const expected =
          DOM::convertToTableRanges(edited.table, {DOM::Table().toRangeByID(range)});
      TableRange const moved = edited.moves.move(range);
      if (kindCount == 2) {
        ASSERT_EQ(moved.isEmpty(), expected.empty());
        ASSERT_TRUE(moved.isEmpty() || moved == expected.front());
      }
      bool const isLeft = edited.moves.leave(range);
      for (unsigned long row = range.firstRow; isLeft && row < range.endRow; ++row) {
        PositionKey const position = positionKeyOf(row, range.firstColumn);
        ASSERT_EQ(edited.find(row, range.firstColumn), position);
      }
    }
  }
}

TEST(SheetMoves, LeaveRangesBeforeTheEdits) {
  SheetMoves moves;
  moves.columns.add({AxisEdit::Kind::Insert, 5, 1});
  moves.rows.add({AxisEdit::Kind::Move, 7, 1, 9});
  EXPECT_TRUE(moves.leave({0, 0, 7, 5}));
  EXPECT_TRUE(moves.leave({9, 0, 12, 5}));
  EXPECT_FALSE(moves.leave({0, 0, 8, 5}));
  EXPECT_FALSE(moves.leave({0, 5, 7, 6}));
  EXPECT_FALSE(moves.leave({0, 4, 7, 6}));
  EXPECT_FALSE(moves.leave({0, 0, 0, 5})) << "nothing";
  EXPECT_FALSE(moves.leave({0, 0, lastRow + 2, 1})) << "beyond the sheet";
}

TEST(LineMoves, AreCutAtTheEndOfTheSheet) {
  EXPECT_EQ(movesOf({{AxisEdit::Kind::Insert, 5, ~0UL}}).getRuns(),
            (std::vector<LineRun>{{0, 5, 0}, {5, lastRow + 1, std::nullopt}}));
  EXPECT_EQ(movesOf({{AxisEdit::Kind::Delete, lastColumn, ~0UL}}, lastColumn + 1).getRuns(),
            (std::vector<LineRun>{{0, lastColumn, 0}, {lastColumn, lastColumn + 1, std::nullopt}}));
  for (AxisEdit const& nothing : {AxisEdit{AxisEdit::Kind::Insert, ~0UL, 3},
                                  {AxisEdit::Kind::Delete, 3, 0},
                                  {AxisEdit::Kind::Move, 3, 4, 3},
                                  {AxisEdit::Kind::Move, 3, 4, 5},
                                  {AxisEdit::Kind::Move, 3, 4, 7}}) {
    EXPECT_TRUE(movesOf({nothing}).isEmpty());
  }
}

TEST(LineMoves, KeepTheOrderUnlessLinesWereMoved) {
  EXPECT_TRUE(
      movesOf({{AxisEdit::Kind::Insert, 5, 2}, {AxisEdit::Kind::Delete, 1, 1}}).keepOrder());
  EXPECT_FALSE(movesOf({{AxisEdit::Kind::Move, 5, 2, 9}}).keepOrder());
}

TEST(LineMoves, MoveIntervalsThatStayTogetherByOneDistance) {
  LineMoves const moves = movesOf({{AxisEdit::Kind::Insert, 5, 2}, {AxisEdit::Kind::Delete, 9, 1}});
  EXPECT_EQ(moves.findShift({0, 5}), 0UL);
  EXPECT_EQ(moves.findShift({5, 7}), 2UL);
  EXPECT_EQ(moves.findShift({8, 20}), 1UL);
  EXPECT_EQ(moves.findShift({4, 6}), std::nullopt) << "moved apart";
  EXPECT_EQ(moves.findShift({7, 8}), std::nullopt) << "gone";
  EXPECT_EQ(moves.findShift({7, 9}), std::nullopt) << "gone in part";
}

TEST(SheetMoves, MoveAreasInTheirParts) {
  SheetMoves moves;
  moves.rows = movesOf({{AxisEdit::Kind::Delete, 4, 2}, {AxisEdit::Kind::Insert, 2, 1}});
  std::vector<TableRange> areas;
  moves.appendMoved({1, 3, 9, 4}, areas);
  EXPECT_EQ(areas, (std::vector<TableRange>{{1, 3, 2, 4}, {3, 3, 5, 4}, {5, 3, 8, 4}}));
  moves.columns.add({AxisEdit::Kind::Insert, 3, 2});
  areas.clear();
  moves.appendMoved({1, 2, 3, 4}, areas);
  EXPECT_EQ(areas,
            (std::vector<TableRange>{{1, 2, 2, 3}, {1, 5, 2, 6}, {3, 2, 4, 3}, {3, 5, 4, 6}}));
}

TEST(DocumentMoves, AreKeptByTable) {
  DOM::Table const first;
  DOM::Table const second;
  DocumentMoves moves;
  moves.getOrCreate(first).columns.add({AxisEdit::Kind::Insert, 3, 2});
  moves.getOrCreate(first).rows.add({AxisEdit::Kind::Insert, 3, 1});
  static_cast<void>(moves.getOrCreate(second));
  ASSERT_NE(moves.find(first), nullptr);
  EXPECT_EQ(moves.find(first)->move(positionKeyOf(3, 3)), positionKeyOf(4, 5));
  EXPECT_EQ(moves.find(second), nullptr) << "without edits";
}

TEST(CellIdentities, FollowVeryManyEditsInFewPlaces) {
  using Kind = AxisEdit::Kind;
  CellIdentities identities;
  CellIdentity const cell = identities.identityOf(positionKeyOf(50, 2));
  auto const follow = [&](std::vector<AxisEdit> const& rows, std::vector<AxisEdit> const& columns) {
    SheetMoves edits;
    edits.rows = movesOf(rows);
    edits.columns = movesOf(columns, lastColumn + 1);
    ASSERT_TRUE(identities.canFollow(edits));
    identities.follow(edits);
  };
  for (unsigned long count = 0; count < 20'000; ++count) {
    // Each row behind the one before it, as a list is written; a column to and fro.
    ASSERT_NO_FATAL_FAILURE(
        follow({{Kind::Insert, 5 + count, 1}}, {{Kind::Move, 3, 1, 0}, {Kind::Move, 0, 1, 4}}));
  }
  for (int count = 0; count < 20'000; ++count) {
    ASSERT_NO_FATAL_FAILURE(follow({{Kind::Insert, 9, 1}, {Kind::Delete, 9, 1}}, {}));
  }
  EXPECT_EQ(identities.find(cell), positionKeyOf(20'050, 2));
}

TEST(CellIdentities, EndAfterVeryManyEditsInAsManyPlaces) {
  CellIdentities identities;
  SheetMoves edit;
  unsigned long count = 0;
  for (; count < 10'000; ++count) {
    edit = SheetMoves();
    edit.rows.add({AxisEdit::Kind::Insert, 3 * count, 1});
    if (!identities.canFollow(edit)) {
      break;
    }
    identities.follow(edit);
  }
  EXPECT_GT(count, 8'000U);
  EXPECT_LT(count, 10'000U) << "each further edit would take longer";
}

TEST(CellIdentities, EndWhereRowsOrColumnsHaveNoFurtherOnes) {
  SheetMoves rows;
  SheetMoves columns;
  SheetMoves moved;
  for (int count = 0; count < 16; ++count) {
    rows.rows.add({AxisEdit::Kind::Insert, 0, lastRow});
    columns.columns.add({AxisEdit::Kind::Delete, 0, lastColumn / 8});
    moved.columns.add({AxisEdit::Kind::Move, 0, lastColumn / 2, lastColumn});
  }
  EXPECT_FALSE(CellIdentities().canFollow(rows));
  EXPECT_FALSE(CellIdentities().canFollow(columns));
  EXPECT_TRUE(CellIdentities().canFollow(moved)) << "moved lines keep theirs";

  // The last ones that there are.
  CellIdentities identities;
  SheetMoves last;
  last.columns.add({AxisEdit::Kind::Insert, 0, (1UL << columnIdentityBits) - lastColumn - 1});
  ASSERT_TRUE(identities.canFollow(last));
  identities.follow(last);
  CellIdentity const cell = identities.identityOf(positionKeyOf(3, lastColumn));
  EXPECT_EQ(columnOfIdentity(cell), (1UL << columnIdentityBits) - 1);
  EXPECT_EQ(rowOfIdentity(cell), 3U);
  EXPECT_EQ(identities.find(cell), positionKeyOf(3, lastColumn));
  EXPECT_EQ(identities.find(CellIdentities().identityOf(positionKeyOf(3, 5))), std::nullopt);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
