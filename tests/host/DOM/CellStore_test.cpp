#include "DOM/CellStore.h"

#include <functional>
#include <map>
#include <optional>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

namespace Zorv::DOM {
namespace {

using Place = std::pair<unsigned long, unsigned long>;

void setNumber(CellStore& store, Place place, double number) {
  store.getOrCreate(place.first, place.second).value =
      FormulaModel::FormulaNumber{FloatNumber(number)};
}

double readNumber(Cell const& cell) {
  return boost::get<FormulaModel::FormulaNumber>(cell.value).value.get();
}

std::vector<std::pair<Place, double>> contentOf(CellStore const& store) {
  std::vector<std::pair<Place, double>> content;
  for (auto it = store.lowerBound(0, 0); it != store.end(); it = store.next(it)) {
    CellStore::Entry const& entry = store.entryAt(it);
    content.emplace_back(Place(entry.getRow(), entry.getColumn()), readNumber(entry.cell));
  }
  return content;
}

/// Where each line goes; none for one that is removed.
using MoveLine = std::function<std::optional<unsigned long>(unsigned long)>;

CellStore::Remap toRuns(MoveLine const& move) {
  constexpr unsigned long movedLines = 20'000;
  CellStore::Remap runs;
  for (unsigned long line = 0; line < movedLines; ++line) {
    auto const moved = move(line);
    auto const shift = moved ? std::optional(*moved - line) : std::nullopt;
    if (runs.empty() || runs.back().shift != shift) {
      runs.push_back({0, shift});
    }
    runs.back().end = line + 1;
  }
  return runs;
}

TEST(CellStore, IsEmptyAtFirst) {
  CellStore const store;
  EXPECT_EQ(store.size(), 0U);
  EXPECT_EQ(store.lowerBound(0, 0), store.end());
  EXPECT_EQ(store.find(0, 0), nullptr);
  EXPECT_EQ(store.getUsedRange(), TableRange());
}

TEST(CellStore, ObtainingTwiceGivesOneCell) {
  CellStore store;
  setNumber(store, {3, 4}, 1.5);
  EXPECT_EQ(&store.getOrCreate(3, 4), store.find(3, 4));
  EXPECT_EQ(readNumber(store.getOrCreate(3, 4)), 1.5);
  EXPECT_EQ(store.size(), 1U);
  EXPECT_EQ(store.find(3, 3), nullptr);
  EXPECT_EQ(store.find(4, 4), nullptr);
}

TEST(CellStore, KeepsTheCornersOfTheSheetApart) {
  CellStore store;
  std::vector<Place> const corners{{0, 0}, {0, 16383}, {1, 0}, {1048575, 0}, {1048575, 16383}};
  for (Place const& corner : corners) {
    setNumber(store, corner, static_cast<double>(corner.first + corner.second));
  }
  EXPECT_EQ(store.size(), corners.size());
  EXPECT_EQ(store.getUsedRange(), (TableRange{0, 0, 1048576, 16384}));
  EXPECT_EQ(readNumber(*store.find(1048575, 16383)), 1048575.0 + 16383.0);
}

TEST(CellStore, RemovingWhatIsNotThereChangesNothing) {
  CellStore store;
  store.remove(0, 0);
  setNumber(store, {1, 1}, 1);
  store.remove(1, 0);
  store.remove(2, 2);
  EXPECT_EQ(store.size(), 1U);
}

TEST(CellStore, ABoundIsTheFirstCellNotBefore) {
  CellStore store;
  for (unsigned long row = 0; row < 2000; ++row) {
    setNumber(store, {row, 5}, static_cast<double>(row));
  }
  EXPECT_EQ(store.entryAt(store.lowerBound(700, 5)).getRow(), 700UL);
  EXPECT_EQ(store.entryAt(store.lowerBound(700, 6)).getRow(), 701UL);
  EXPECT_EQ(store.lowerBound(1999, 6), store.end());
  auto const from = store.lowerBound(10, 0);
  EXPECT_EQ(store.lowerBoundFrom(from, 20, 0), store.lowerBound(20, 0));
  EXPECT_EQ(store.lowerBoundFrom(from, 1500, 6), store.lowerBound(1500, 6));
  EXPECT_EQ(store.lowerBoundFrom(from, 1999, 6), store.end());
}

/// Fills many blocks in random order and empties them again; compares with an ordered map.
TEST(CellStore, AgreesWithAMapOverRandomEdits) {
  std::mt19937 generator(7);
  auto const upTo = [&](unsigned long largest) {
    return std::uniform_int_distribution<unsigned long>(0, largest)(generator);
  };
  CellStore store;
  std::map<Place, double> model;
  auto const expectAgreement = [&] {
    ASSERT_EQ(contentOf(store),
              (std::vector<std::pair<Place, double>>(model.begin(), model.end())));
    ASSERT_EQ(store.size(), model.size());
  };
  for (int step = 0; step < 6000; ++step) {
    Place const place(upTo(99), upTo(49));
    // First more insertions than removals, then more removals.
    if (upTo(9) < (step < 3000 ? 8U : 2U)) {
      setNumber(store, place, step);
      model[place] = step;
    } else {
      store.remove(place.first, place.second);
      model.erase(place);
    }
    if (step % 500 == 0) {
      expectAgreement();
    }
  }
  expectAgreement();
  for (unsigned long row = 0; row < 100; ++row) {
    for (unsigned long column = 0; column < 50; ++column) {
      ASSERT_EQ(store.find(row, column) != nullptr, model.contains({row, column}));
    }
  }
}

TEST(CellStore, AHintChangesNoAnswer) {
  std::mt19937 generator(11);
  auto const upTo = [&](unsigned long largest) {
    return std::uniform_int_distribution<unsigned long>(0, largest)(generator);
  };
  CellStore store;
  CellStore::Position hint;
  EXPECT_EQ(store.find(0, 0, hint), nullptr);
  for (int cell = 0; cell < 3000; ++cell) {
    setNumber(store, {upTo(199), upTo(29)}, cell);
  }
  for (int step = 0; step < 20'000; ++step) {
    Place const place(upTo(201), upTo(31));
    // Any position is a valid hint, also after the last cell and after a block's end.
    if (upTo(3) == 0) {
      hint = {upTo(30), upTo(300)};
    }
    ASSERT_EQ(store.find(place.first, place.second, hint), store.find(place.first, place.second));
    ASSERT_EQ(hint, store.lowerBound(place.first, place.second));
  }
}

TEST(CellStore, AWalkWithAHintFindsEveryCell) {
  CellStore store;
  for (unsigned long row = 0; row < 2000; ++row) {
    setNumber(store, {row, row % 5}, static_cast<double>(row));
  }
  CellStore::Position hint;
  for (unsigned long row = 0; row < 2000; ++row) {
    Cell const* const cell = store.find(row, row % 5, hint);
    ASSERT_NE(cell, nullptr);
    ASSERT_EQ(readNumber(*cell), static_cast<double>(row));
    ASSERT_EQ(store.find(row, row % 5 + 1, hint), nullptr);
  }
}

TEST(CellStore, RemapMovesEveryCell) {
  CellStore store;
  for (unsigned long row = 0; row < 1000; ++row) {
    setNumber(store, {row, row % 3}, static_cast<double>(row));
  }
  store.remapRows(toRuns([](unsigned long row) {
    return row < 500 ? std::optional<unsigned long>(999 - row) : std::nullopt;
  }));
  EXPECT_EQ(store.size(), 500U);
  EXPECT_EQ(readNumber(*store.find(999, 0)), 0.0);
  EXPECT_EQ(store.entryAt(store.lowerBound(0, 0)).getRow(), 500UL);
  store.remapColumns(toRuns([](unsigned long column) {
    return column != 1 ? std::optional<unsigned long>(10 - column) : std::nullopt;
  }));
  EXPECT_EQ(store.size(), 333U);
  EXPECT_EQ(readNumber(*store.find(999, 10)), 0.0);
  EXPECT_EQ(readNumber(*store.find(997, 8)), 2.0);
}

/// Remaps of lines by name: those that edits of a table make, and others.
std::vector<std::pair<char const*, MoveLine>> listRemaps() {
  using Line = std::optional<unsigned long>;
  return {
      {"insert", [](unsigned long line) -> Line { return line < 20 ? line : line + 3; }},
      {"insert before all", [](unsigned long line) -> Line { return line + 1; }},
      {"delete",
       [](unsigned long line) -> Line {
         return line < 7 ? Line(line) : line < 19 ? std::nullopt : Line(line - 12);
       }},
      {"delete all", [](unsigned long /*line*/) -> Line { return std::nullopt; }},
      {"move down",
       [](unsigned long line) -> Line {
         bool const isMoved = 3 <= line && line < 5;
         return isMoved ? line + 30 : 5 <= line && line < 35 ? line - 2 : line;
       }},
      {"move up by one",
       [](unsigned long line) -> Line { return line == 9    ? 10
                                               : line == 10 ? 9
                                                            : line; }},
      {"move far up",
       [](unsigned long line) -> Line {
         return line < 900 ? line + 100 : line < 1000 ? line - 900 : line;
       }},
      {"move far down",
       [](unsigned long line) -> Line {
         return line < 100 ? line + 900 : line < 1000 ? line - 100 : line;
       }},
      {"turn around", [](unsigned long line) -> Line { return line < 60 ? 59 - line : line; }},
      {"interleave",
       [](unsigned long line) -> Line {
         return line < 30 ? 2 * line : line < 60 ? 2 * (line - 30) + 1 : line;
       }},
      {"delete every third",
       [](unsigned long line) -> Line { return line % 3 == 0 ? std::nullopt : Line(line); }},
  };
}

/// Fills a store and a map with the same cells: a square in which every third place is empty.
void fillSquare(CellStore& store, std::map<Place, double>& model) {
  constexpr unsigned long side = 60;
  for (unsigned long row = 0; row < side; ++row) {
    for (unsigned long column = 0; column < side; ++column) {
      if ((row + column) % 3 != 0) {
        auto const value = static_cast<double>(row * side + column);
        setNumber(store, {row, column}, value);
        model[{row, column}] = value;
      }
    }
  }
}

TEST(CellStore, ARemapOfRowsMovesEachCell) {
  for (auto const& [name, remap] : listRemaps()) {
    CellStore store;
    std::map<Place, double> model;
    fillSquare(store, model);
    for (int round = 0; round < 2; ++round) {
      std::map<Place, double> moved;
      for (auto const& [place, value] : model) {
        if (auto const row = remap(place.first)) {
          moved[{*row, place.second}] = value;
        }
      }
      store.remapRows(toRuns(remap));
      model = moved;
      EXPECT_EQ(contentOf(store),
                (std::vector<std::pair<Place, double>>(model.begin(), model.end())))
          << name;
      EXPECT_EQ(store.size(), model.size()) << name;
    }
    setNumber(store, {30, 30}, -1);
    EXPECT_EQ(readNumber(*store.find(30, 30)), -1) << name;
  }
}

TEST(CellStore, ARemapOfColumnsMovesEachCell) {
  for (auto const& [name, remap] : listRemaps()) {
    CellStore store;
    std::map<Place, double> model;
    fillSquare(store, model);
    // A row that goes on through several blocks.
    for (unsigned long column = 0; column < 60; ++column) {
      for (unsigned long far = 0; far < 20; ++far) {
        unsigned long const place = far == 0 ? column : 60 * far + column;
        setNumber(store, {60, place}, static_cast<double>(place));
        model[{60, place}] = static_cast<double>(place);
      }
    }
    std::map<Place, double> moved;
    for (auto const& [place, value] : model) {
      if (auto const column = remap(place.second)) {
        moved[{place.first, *column}] = value;
      }
    }
    store.remapColumns(toRuns(remap));
    EXPECT_EQ(contentOf(store), (std::vector<std::pair<Place, double>>(moved.begin(), moved.end())))
        << name;
    EXPECT_EQ(store.size(), moved.size()) << name;
  }
}

TEST(CellStore, TellsWhenCellsMoveInMemory) {
  CellStore store;
  auto const changes = [&](auto const& edit) {
    auto const before = store.getLayoutVersion();
    edit();
    return store.getLayoutVersion() != before;
  };
  EXPECT_TRUE(changes([&] { setNumber(store, {5, 5}, 1); }));
  EXPECT_TRUE(changes([&] { setNumber(store, {3, 5}, 1); }));
  EXPECT_FALSE(changes([&] { setNumber(store, {5, 5}, 2); }));
  EXPECT_FALSE(changes([&] { store.remove(4, 4); }));
  EXPECT_TRUE(changes([&] { store.remove(3, 5); }));
  EXPECT_TRUE(changes([&] { store.remapRows({{9, 1}}); }));
  EXPECT_TRUE(changes([&] { store.remapColumns({{9, 1}}); }));
}

TEST(CellStore, PassesOverBlocksWithoutSomeColumns) {
  CellStore store;
  for (unsigned long row = 0; row < 2000; ++row) {
    setNumber(store, {row, 5}, 1);
    setNumber(store, {row, row == 1500 ? 6 : 7}, 1);
  }
  CellStore::Position const start{0, 9};
  EXPECT_EQ(store.skipBlocks(start, {7, 1}, 2000), start);
  CellStore::Position const found = store.skipBlocks(start, {6, 1}, 2000);
  EXPECT_EQ(found, (CellStore::Position{store.lowerBound(1500, 6).block, 0}));
  EXPECT_EQ(store.skipBlocks(start, {8, 1}, 2000), store.end());
  EXPECT_EQ(store.skipBlocks(start, {69, 2}, 2000), start);
  EXPECT_EQ(store.skipBlocks(store.end(), {5, 1}, 2000), store.end());
  // It looks at no block behind the last row that is asked for.
  EXPECT_EQ(store.skipBlocks(start, {8, 1}, 1).block, 1U);
}

TEST(CellStore, StaysInFewBlocksThroughManyMoves) {
  CellStore store;
  for (unsigned long row = 0; row < 20'000; ++row) {
    setNumber(store, {row, 0}, static_cast<double>(row));
  }
  for (unsigned long move = 0; move < 500; ++move) {
    unsigned long const from = 37 * move % 19'000;
    store.remapRows({{from, 0}, {from + 1, 1}, {from + 2, 0UL - 1}, {20'000, 0}});
  }
  EXPECT_EQ(store.size(), 20'000U);
  std::size_t blocks = 0;
  for (auto it = store.lowerBound(0, 0); it != store.end(); it = store.next(it)) {
    blocks = it.block + 1;
  }
  EXPECT_LT(blocks, 250U);
}

}  // namespace
}  // namespace Zorv::DOM
