#include "DOM/CellRangeIt.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DOM/Table.h"

namespace Zorv::DOM {
namespace {

using Places = std::vector<std::pair<unsigned long, unsigned long>>;

Places placesOf(Table const& table, TableRange const& range) {
  Places places;
  auto const [begin, end] = table.getRangeIterators(range);
  for (auto it = begin; it != end; ++it) {
    CellInfo const info = it.getCellInfo();
    EXPECT_NE(info.getCell(), nullptr);
    EXPECT_EQ(info.getCell(), table.findCell(info.getRowIndex(), info.getColIndex()));
    EXPECT_EQ(&info.getTable(), &table);
    places.emplace_back(info.getRowIndex(), info.getColIndex());
  }
  return places;
}

Table& fill(Table& table, Places const& places) {
  for (auto const& [row, column] : places) {
    table.obtainCell(row, column);
  }
  return table;
}

TEST(CellRangeIt, VisitsExistingCellsRowByRowFromTheLeft) {
  Table table;
  fill(table, {{2, 3}, {1, 2}, {1, 1}, {3, 1}, {0, 1}, {1, 4}, {2, 0}});
  EXPECT_EQ(placesOf(table, {1, 1, 4, 4}), (Places{{1, 1}, {1, 2}, {2, 3}, {3, 1}}));
}

TEST(CellRangeIt, VisitsNothingInAnEmptyRange) {
  Table table;
  fill(table, {{1, 1}});
  constexpr unsigned long rows = Table::rowCount;
  constexpr unsigned long columns = Table::columnCount;
  for (TableRange const& range :
       {TableRange{}, TableRange{1, 1, 1, 2}, TableRange{1, 1, 2, 1}, TableRange{2, 2, 1, 1},
        TableRange{rows, 0, rows + 5, columns}, TableRange{0, columns, rows, columns + 5},
        TableRange{2, 0, rows, columns}}) {
    EXPECT_EQ(placesOf(table, range), Places());
  }
  EXPECT_EQ(placesOf(Table(), {0, 0, rows, columns}), Places());
}

TEST(CellRangeIt, ReachesTheCornersOfTheSheet) {
  Table table;
  Places const corners{{0, 0}, {0, 16383}, {1048575, 0}, {1048575, 16383}};
  fill(table, corners);
  EXPECT_EQ(placesOf(table, {0, 0, Table::rowCount, Table::columnCount}), corners);
  EXPECT_EQ(placesOf(table, {0, 16383, Table::rowCount, 16384}),
            (Places{{0, 16383}, {1048575, 16383}}));
  EXPECT_EQ(placesOf(table, {1048575, 0, 1048576, 1}), (Places{{1048575, 0}}));
}

TEST(CellRangeIt, RangesMayReachBeyondTheSheet) {
  Table table;
  fill(table, {{5, 5}});
  constexpr unsigned long beyond = ~0UL;
  EXPECT_EQ(placesOf(table, {0, 0, beyond, beyond}), (Places{{5, 5}}));
}

/// Visiting every position of these ranges would not end.
TEST(CellRangeIt, AWalkCostsItsCellsAndNotItsRange) {
  Table table;
  Places column;
  for (unsigned long i = 0; i < 1000; ++i) {
    column.emplace_back(i * 1000, 7);
  }
  fill(table, column);
  for (int repetition = 0; repetition < 100; ++repetition) {
    ASSERT_EQ(placesOf(table, {0, 0, Table::rowCount, Table::columnCount}), column);
    ASSERT_EQ(placesOf(table, {0, 7, Table::rowCount, 8}), column);
    ASSERT_EQ(placesOf(table, {0, 8, Table::rowCount, Table::columnCount}), Places());
  }
}

TEST(CellRangeIt, StepsOverWideRowsBesideTheRange) {
  Table table;
  Places expected;
  for (unsigned long row = 0; row < 20; ++row) {
    for (unsigned long column = 0; column < 600; ++column) {
      table.obtainCell(row, column);
    }
    expected.emplace_back(row, 300);
    expected.emplace_back(row, 301);
  }
  EXPECT_EQ(placesOf(table, {0, 300, 50, 302}), expected);
}

/// Rows of equal length let a search guess where the next row goes on; others mislead it.
TEST(CellRangeIt, FindsTheColumnsOfRowsOfEqualAndOfOtherLengths) {
  std::mt19937 random(11);
  for (int round = 0; round < 40; ++round) {
    Table table;
    Places all;
    unsigned long length = 1 + random() % 12;
    for (unsigned long row = 0; row < 300; row += 1 + random() % 20 / 19) {
      length = random() % 30 == 0 ? 1 + random() % 12 : length;
      for (unsigned long column = 0; column < length; ++column) {
        if (random() % (round % 4 == 0 ? 3U : 100U) != 0) {
          all.emplace_back(row, column + row / 100);
          table.obtainCell(row, column + row / 100);
        }
      }
    }
    for (unsigned long first = 0; first < 14; ++first) {
      TableRange const range{random() % 20, first, 250 + random() % 60, first + 1 + random() % 3};
      Places expected;
      std::ranges::copy_if(all, std::back_inserter(expected), [&range](auto const& place) {
        return range.contains(place.first, place.second);
      });
      ASSERT_EQ(placesOf(table, range), expected) << "round " << round << ", column " << first;
    }
  }
}

/// A table, and a set of its cells' places, which random edits change alike.
class EditedPlaces {
public:
  explicit EditedPlaces(unsigned seed) : _random(seed) {
    for (int cell = 0; cell < 4000; ++cell) {
      add();
    }
  }

  void edit() {
    unsigned long const kind = draw(8);
    unsigned long const count = 1 + draw(3);
    unsigned long const row = draw(rowCount);
    unsigned long const column = drawColumn(draw(rowCount));
    unsigned long const before = kind % 2 == 0 ? draw(rowCount) : drawColumn(draw(rowCount));
    if (kind == 0) {
      _table.insertRows(row, count);
      move([=](Place place) { return Place(inserted(place.first, row, count), place.second); });
    } else if (kind == 1) {
      _table.insertColumns(column, count);
      move([=](Place place) { return Place(place.first, inserted(place.second, column, count)); });
    } else if (kind == 2) {
      _table.deleteRows(row, count);
      removeIf([=](Place place) { return place.first - row < count; });
      move([=](Place place) { return Place(deleted(place.first, row, count), place.second); });
    } else if (kind == 3) {
      _table.deleteColumns(column, count);
      removeIf([=](Place place) { return place.second - column < count; });
      move([=](Place place) { return Place(place.first, deleted(place.second, column, count)); });
    } else if (kind == 4) {
      _table.moveRows(row, 1, before);
      move([=](Place place) { return Place(moved(place.first, row, before), place.second); });
    } else if (kind == 5) {
      _table.moveColumns(column, 1, before);
      move([=](Place place) { return Place(place.first, moved(place.second, column, before)); });
    } else if (kind == 6) {
      for (int cell = 0; cell < 150; ++cell) {
        add();
      }
    } else {
      removeIf([&](Place place) {
        return draw(40) == 0 && (_table.removeCell(place.first, place.second), true);
      });
    }
  }

  /// A range near the cells: one of few columns, or of about as many as can be told apart.
  TableRange drawRange() {
    constexpr std::array<unsigned long, 8> widths{1, 1, 2, 3, 63, 64, 65, 200};
    unsigned long const firstRow = draw(rowCount);
    unsigned long const firstColumn = drawColumn(draw(rowCount));
    return {firstRow, firstColumn, firstRow + draw(rowCount),
            firstColumn + widths[draw(widths.size())]};
  }

  [[nodiscard]] Table const& getTable() const { return _table; }
  [[nodiscard]] Places findPlaces(TableRange const& range) const {
    Places found;
    std::ranges::copy_if(_places, std::back_inserter(found), [&range](Place place) {
      return range.contains(place.first, place.second);
    });
    return found;
  }

private:
  using Place = Places::value_type;
  static constexpr unsigned long rowCount = 600;

  unsigned long draw(unsigned long end) { return _random() % end; }
  /// Each hundred rows have columns of their own, of which some are equal modulo 64.
  unsigned long drawColumn(unsigned long row) {
    return row / 100 * 3 + draw(4) * 64 + draw(draw(2) == 0 ? 3 : 6);
  }
  void add() {
    unsigned long const row = draw(rowCount);
    unsigned long const column = drawColumn(row);
    _table.obtainCell(row, column);
    _places.emplace(row, column);
  }

  static unsigned long inserted(unsigned long line, unsigned long before, unsigned long count) {
    return line < before ? line : line + count;
  }
  static unsigned long deleted(unsigned long line, unsigned long first, unsigned long count) {
    return line < first ? line : line - count;
  }
  static unsigned long moved(unsigned long line, unsigned long from, unsigned long before) {
    unsigned long const to = before > from ? before - 1 : before;
    return line == from ? to : inserted(deleted(line, from, 1), to, 1);
  }
  template <class Move>
  void move(Move const& move) {
    std::set<Place> moved;
    for (Place const& place : _places) {
      moved.insert(move(place));
    }
    _places = std::move(moved);
  }
  template <class Condition>
  void removeIf(Condition const& condition) {
    std::erase_if(_places, condition);
  }

  std::mt19937 _random;
  Table _table;
  std::set<Place> _places;
};

/// Blocks of cells that have none of a range's columns are passed over, and no other ones.
TEST(CellRangeIt, FindsTheCellsOfNarrowAndWideRangesThroughEdits) {
  for (unsigned seed = 0; seed < 4; ++seed) {
    EditedPlaces places(seed);
    for (int edit = 0; edit < 40; ++edit) {
      for (int walk = 0; walk < 12; ++walk) {
        TableRange const range = places.drawRange();
        ASSERT_EQ(placesOf(places.getTable(), range), places.findPlaces(range))
            << "seed " << seed << ", edit " << edit << ", column " << range.firstColumn;
      }
      places.edit();
    }
  }
}

TEST(CellRangeIt, CopiesWalkByThemselves) {
  Table table;
  fill(table, {{0, 0}, {0, 1}});
  auto const [begin, end] = table.getRangeIterators({0, 0, 1, 2});
  auto copy = begin;
  ++copy;
  EXPECT_EQ(begin.getCellInfo().getColIndex(), 0UL);
  EXPECT_EQ(copy.getCellInfo().getColIndex(), 1UL);
  EXPECT_TRUE(copy != begin);
  ++copy;
  EXPECT_FALSE(copy != end);
}

}  // namespace
}  // namespace Zorv::DOM
