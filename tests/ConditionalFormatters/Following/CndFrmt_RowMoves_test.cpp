#include "ConditionalFormatters/Following/CndFrmt_RowMoves.h"

#include <optional>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/Following/CndFrmt_CellIdentities.h"
#include "DOM/Table.h"

namespace Zorv::ConditionalFormatters {
namespace {

constexpr unsigned long lastRow = DOM::Table::rowCount - 1;

RowMoves movesOf(std::vector<RowEdit> const& edits) {
  RowMoves moves;
  for (RowEdit const& edit : edits) {
    moves.add(edit);
  }
  return moves;
}

/// Edits a table, whose identities of rows tell where each row came to lie.
void editTable(DOM::Table& table, RowEdit const& edit) {
  switch (edit.kind) {
    case RowEdit::Kind::Insert:
      table.insertRows(edit.first, edit.count);
      break;
    case RowEdit::Kind::Delete:
      table.deleteRows(edit.first, edit.count);
      break;
    default:
      table.moveRows(edit.first, edit.count, edit.before);
  }
}

std::optional<unsigned long> findRow(DOM::Table const& table, unsigned long id) {
  unsigned long const row = table.getRowIds().beginOf(id);
  return table.getRowIds().idAt(row) == id ? std::optional(row) : std::nullopt;
}

std::optional<unsigned long> findMoved(RowMoves const& moves, unsigned long row) {
  RowRun const& run = moves.runOf(row);
  return run.shift ? std::optional(row + *run.shift) : std::nullopt;
}

TEST(RowMoves, PutEachRowWhereATablePutsIt) {
  std::mt19937 random(4);
  for (int round = 0; round < 60; ++round) {
    DOM::Table table;
    RowMoves moves;
    CellIdentities identities;
    for (int edit = 0; edit < 8; ++edit) {
      unsigned long const first = random() % 40;
      unsigned long const count = random() % 9;
      RowEdit const made{static_cast<RowEdit::Kind>(random() % 3), first, count,
                         random() % 2 == 0 ? random() % (first + 1) : first + count + 5};
      editTable(table, made);
      moves.add(made);
    }
    identities.follow(moves);
    for (unsigned long row = 0; row < 120; ++row) {
      ASSERT_EQ(findMoved(moves, row), findRow(table, row + 1)) << "row " << row;
      auto const cell = identities.find((CellIdentity{row + 1} << columnKeyBits) + 7);
      auto const moved = findRow(table, row + 1);
      ASSERT_EQ(cell, moved ? std::optional(positionKeyOf(*moved, 7)) : std::nullopt);
      ASSERT_TRUE(!cell || identities.identityOf(*cell) >> columnKeyBits == row + 1);
    }
    for (unsigned long row = 0; row < 50; row += 7) {
      TableRange const range{row, 2, row + 20, 5};
      auto const expected = DOM::convertToTableRanges(table, {DOM::Table().toRangeByID(range)});
      TableRange const moved = moves.move(range);
      // Where rows move, corners without a row may come to lie elsewhere.
      if (moves.keepOrder() && !expected.empty()) {
        ASSERT_EQ(moved, expected.front());
      }
    }
  }
}

TEST(RowMoves, AreCutAtTheEndOfTheSheet) {
  EXPECT_EQ(movesOf({{RowEdit::Kind::Insert, 5, ~0UL}}).getRuns(),
            (std::vector<RowRun>{{0, 5, 0}, {5, lastRow + 1, std::nullopt}}));
  EXPECT_EQ(movesOf({{RowEdit::Kind::Delete, lastRow, ~0UL}}).getRuns(),
            (std::vector<RowRun>{{0, lastRow, 0}, {lastRow, lastRow + 1, std::nullopt}}));
  for (RowEdit const& nothing : {RowEdit{RowEdit::Kind::Insert, ~0UL, 3},
                                 {RowEdit::Kind::Delete, 3, 0},
                                 {RowEdit::Kind::Move, 3, 4, 3},
                                 {RowEdit::Kind::Move, 3, 4, 5},
                                 {RowEdit::Kind::Move, 3, 4, 7}}) {
    EXPECT_TRUE(movesOf({nothing}).isEmpty());
  }
}

TEST(RowMoves, KeepTheOrderUnlessRowsWereMoved) {
  EXPECT_TRUE(movesOf({{RowEdit::Kind::Insert, 5, 2}, {RowEdit::Kind::Delete, 1, 1}}).keepOrder());
  EXPECT_FALSE(movesOf({{RowEdit::Kind::Move, 5, 2, 9}}).keepOrder());
}

TEST(RowMoves, MoveAreasInTheirParts) {
  std::vector<TableRange> areas;
  movesOf({{RowEdit::Kind::Delete, 4, 2}, {RowEdit::Kind::Insert, 2, 1}})
      .appendMoved({1, 3, 9, 4}, areas);
  EXPECT_EQ(areas, (std::vector<TableRange>{{1, 3, 2, 4}, {3, 3, 5, 4}, {5, 3, 8, 4}}));
}

TEST(CellIdentities, EndAfterVeryManyEdits) {
  CellIdentities identities;
  RowMoves const edit = movesOf({{RowEdit::Kind::Insert, 5, 1}});
  for (int count = 0; count < 2'048; ++count) {
    ASSERT_TRUE(identities.canFollow(edit));
    identities.follow(edit);
  }
  EXPECT_FALSE(identities.canFollow(edit));
  RowMoves large;
  for (int count = 0; count < 16; ++count) {
    large.add({RowEdit::Kind::Insert, 0, lastRow});
  }
  EXPECT_FALSE(CellIdentities().canFollow(large)) << "identities have a bounded size";
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
