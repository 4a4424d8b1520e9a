#include "ConditionalFormatters/Following/CndFrmt_ValueColumn.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "DOM/Table.h"
#include "FormulaModel/ValueKey.h"

namespace Zorv::ConditionalFormatters {
namespace {

constexpr double columnNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double columnInfinity = std::numeric_limits<double>::infinity();
constexpr TableRange wholeColumnSheet{0, 0, DOM::Table::rowCount, DOM::Table::columnCount};
ValueBits const someText = FormulaModel::ValueKey::ofTextIndex(7).bits();

/// The plainest column: a map, and a sum from the first place on.
class PlainColumn {
public:
  ValueBits set(PlaceKey place, ValueBits value) {
    auto const found = _values.find(place);
    ValueBits const old = found == _values.end() ? noValueBits : found->second;
    if (value == noValueBits) {
      _values.erase(place);
    } else {
      _values[place] = value;
    }
    return old;
  }

  /// Moves values to other rows and columns; those that are gone are removed here and from a
  /// column.
  void move(SheetMoves const& moves, ValueColumn& column) {
    std::map<PlaceKey, ValueBits> const before = std::exchange(_values, {});
    for (auto const& [place, value] : before) {
      if (auto const moved = moves.move(positionOfPlace(place))) {
        _values.emplace(placeKeyOf(rangeOfPlace(place), *moved), value);
      } else {
        column.set(place, noValueBits);
      }
    }
  }

  void expectSame(ValueColumn& column) const {
    double sum = 0;
    std::size_t count = 0;
    for (auto const& [place, value] : _values) {
      if (isNumberBits(value)) {
        sum += std::bit_cast<double>(value);
        ++count;
      }
    }
    double const found = column.sum().get();
    ASSERT_EQ(std::isnan(found), std::isnan(sum));
    ASSERT_TRUE(std::isnan(sum) ||
                std::bit_cast<std::uint64_t>(found) == std::bit_cast<std::uint64_t>(sum))
        << found << " is not " << sum << " to the bit";
    ASSERT_EQ(column.countNumbers(), count);
    ASSERT_EQ(column.size(), _values.size());
  }

  [[nodiscard]] std::map<PlaceKey, ValueBits> const& getValues() const noexcept { return _values; }

private:
  std::map<PlaceKey, ValueBits> _values;
};

TEST(ValueColumn, IsEmptyAtFirst) {
  ValueColumn column;
  EXPECT_EQ(column.size(), 0U);
  EXPECT_EQ(column.countNumbers(), 0U);
  EXPECT_EQ(column.sum().get(), 0);
  EXPECT_EQ(column.get(3), noValueBits);
  EXPECT_EQ(column.set(3, noValueBits), noValueBits);
  EXPECT_TRUE(column.list(0, {0, 0, 1, 100}).empty());
}

TEST(ValueColumn, FollowsRandomEditsToTheLastBitOfItsSum) {
  using Draw = std::function<double(std::mt19937&)>;
  auto const between = [](int least, int most, double unit) {
    return [=](std::mt19937& random) {
      return std::uniform_int_distribution<int>(least, most)(random) * unit;
    };
  };
  struct Case {
    char const* name;
    Draw draw;
  };
  Case const cases[] = {
      {"whole", between(-1'000, 1'000, 1)},
      {"cents", between(-1'000, 1'000, 0.01)},
      {"whole numbers about 2^53", between(8, 16, std::ldexp(1, 50))},
      {"whole and small, with a sum beyond 2^53", between(1'000, 1'024, std::ldexp(1, 30))},
      {"of all sizes",
       [](std::mt19937& random) {
         return std::ldexp(1 + static_cast<double>(random() % 7),
                           static_cast<int>(random() % 200) - 100) *
                (random() % 2 == 0 ? 1 : -1);
       }},
  };
  for (Case const& each : cases) {
    SCOPED_TRACE(each.name);
    std::mt19937 random(5);
    ValueColumn column;
    PlainColumn plain;
    for (PlaceKey place = 0; place < 9'000; place += 3) {
      ValueBits const value = place % 7 == 0 ? someText : bitsOfNumber(each.draw(random));
      column.set(place, value);
      plain.set(place, value);
    }
    for (int edit = 0; edit < 6'000; ++edit) {
      // Many in few places, so that blocks overflow; sometimes a stretch becomes empty.
      PlaceKey const place = random() % (edit % 2 == 0 ? 9'500 : 1'500);
      bool const removes = random() % 3 == 0 || (edit > 4'000 && place < 3'000);
      ValueBits const value = removes ? noValueBits : bitsOfNumber(each.draw(random));
      ASSERT_EQ(column.set(place, value), plain.set(place, value));
      ASSERT_EQ(column.get(place), value);
      if (edit % 50 == 0) {
        ASSERT_NO_FATAL_FAILURE(plain.expectSame(column)) << "edit " << edit;
      }
    }
    std::vector<PlaceKey> places;
    for (auto const& entry : column.list(0, {0, 1'000, 1, 5'000})) {
      places.push_back(entry.place);
      ASSERT_EQ(plain.getValues().at(entry.place), entry.value);
    }
    std::vector<PlaceKey> expected;
    for (auto place = plain.getValues().lower_bound(1'000);
         place != plain.getValues().lower_bound(5'000); ++place) {
      expected.push_back(place->first);
    }
    EXPECT_EQ(places, expected);
  }
}

TEST(ValueColumn, SpecialNumbersComeAndGo) {
  ValueColumn column;
  PlainColumn plain;
  PlaceKey const places = 3'000;
  for (PlaceKey place = 0; place < places; ++place) {
    column.set(place, bitsOfNumber(1));
    plain.set(place, bitsOfNumber(1));
  }
  for (double const special : {columnInfinity, -columnInfinity, columnNaN, -0.0, 0.1, 1e300, 5.0}) {
    for (PlaceKey const place : {PlaceKey{0}, PlaceKey{1'500}, places - 1}) {
      column.set(place, bitsOfNumber(special));
      plain.set(place, bitsOfNumber(special));
      ASSERT_NO_FATAL_FAILURE(plain.expectSame(column)) << special;
    }
  }
}

TEST(ValueColumn, LosesItsBlocksFromTheFirstToTheLast) {
  ValueColumn column;
  PlainColumn plain;
  for (PlaceKey place = 0; place < 4'000; ++place) {
    column.set(place, bitsOfNumber(0.1));
    plain.set(place, bitsOfNumber(0.1));
  }
  for (PlaceKey place = 0; place < 4'000; ++place) {
    column.set(place, noValueBits);
    plain.set(place, noValueBits);
    if (place % 256 == 0) {
      ASSERT_NO_FATAL_FAILURE(plain.expectSame(column)) << place;
    }
  }
  ASSERT_NO_FATAL_FAILURE(plain.expectSame(column));
  column.set(8, bitsOfNumber(0.25));
  EXPECT_EQ(column.sum().get(), 0.25);
}

TEST(ValueColumn, TakesTwelveBytesForAValue) {
  ValueColumn column;
  constexpr std::size_t count = 100'000;
  for (PlaceKey place = 0; place < count; ++place) {
    column.set(place, bitsOfNumber(1));
  }
  EXPECT_LT(column.countBytes(), 13 * count);
  EXPECT_GE(column.countBytes(), 12 * count);
}

TEST(ValueColumn, HoldsPlacesThatLieFarApart) {
  ValueColumn column;
  PlainColumn plain;
  std::mt19937 random(3);
  for (int edit = 0; edit < 20'000; ++edit) {
    PlaceKey const place = placeKeyOf(
        random() % 3, positionKeyOf(random() % 8 * 149'000 + random() % 300, random() % 2));
    ValueBits const value = random() % 3 == 0 ? noValueBits : bitsOfNumber(0.1);
    ASSERT_EQ(column.set(place, value), plain.set(place, value));
  }
  ASSERT_NO_FATAL_FAILURE(plain.expectSame(column));
  auto known = plain.getValues().begin();
  for (std::size_t range = 0; range < 3; ++range) {
    for (auto const& entry : column.list(range, wholeColumnSheet)) {
      ASSERT_EQ(entry.place, (known++)->first);
    }
  }
  EXPECT_EQ(known, plain.getValues().end());
}

TEST(ValueColumn, ListsTheValuesOfAnAreaUpToALimit) {
  ValueColumn column;
  for (unsigned long row = 0; row < 3'000; ++row) {
    for (unsigned long inColumn = 4; inColumn < 7; ++inColumn) {
      column.set(placeKeyOf(1, positionKeyOf(row, inColumn)), bitsOfNumber(1));
    }
  }
  auto const listed = column.list(1, {7, 5, 2'000, 16'384});
  ASSERT_EQ(listed.size(), 2U * 1'993);
  EXPECT_EQ(listed.front().place, placeKeyOf(1, positionKeyOf(7, 5)));
  EXPECT_EQ(listed.back().place, placeKeyOf(1, positionKeyOf(1'999, 6)));
  EXPECT_TRUE(column.list(0, wholeColumnSheet).empty()) << "of another range";
  EXPECT_EQ(column.list(1, wholeColumnSheet, 10).size(), 11U) << "enough to see that they are more";
  EXPECT_EQ(column.list(1, {0, 4, 3'000, 5}, 3'000).size(), 3'000U);
}

/// Two ranges, of which the values lie in one or several columns from a first one on. With whole
/// numbers no sum depends on the order of the values.
class EditedPlaces {
public:
  EditedPlaces(std::uint32_t seed, unsigned long columnCount, double unit = 0.1)
      : _random(seed),
        _unit(unit),
        _ranges{{0, 3, rows, 3 + columnCount}, {0, 200, DOM::Table::rowCount, 200 + columnCount}} {
    for (std::size_t range = 0; range < 2; ++range) {
      for (unsigned long row = 0; row < rows; row += 1 + _random() % 2) {
        for (unsigned long column = 0; column < columnCount; ++column) {
          set(placeKeyOf(range, positionKeyOf(row, _ranges[range].firstColumn + column)));
        }
      }
    }
  }

  /// Follows edits, and sets a value.
  void edit(SheetMoves const& moves) {
    _plain.move(moves, _column);
    _column.moveRows(moves.rows);
    _column.moveColumns(moves.columns, _ranges);
    for (TableRange& range : _ranges) {
      LineInterval const columns = moves.columns.move(columnIntervalOf(range));
      range.firstColumn = columns.first;
      range.endColumn = columns.end;
    }
    for (int count = 0; count < 3; ++count) {
      set(drawPlace());
    }
    ASSERT_NO_FATAL_FAILURE(_plain.expectSame(_column));
    ASSERT_NO_FATAL_FAILURE(expectSameList());
    ASSERT_NO_FATAL_FAILURE(expectSameSearch());
  }

  void expectSame() const {
    for (auto const& [place, value] : _plain.getValues()) {
      ASSERT_EQ(_column.get(place), value);
    }
    EXPECT_LT(_column.countBytes(), 32 * _column.size()) << "blocks do not fall to pieces";
  }

  [[nodiscard]] TableRange const& getRange(std::size_t index) const { return _ranges[index]; }
  [[nodiscard]] ValueColumn const& getColumn() const { return _column; }

  static constexpr unsigned long rows = 4'000;

private:
  [[nodiscard]] PlaceKey drawPlace() {
    std::size_t const range = _random() % 2;
    unsigned long const width = _ranges[range].endColumn - _ranges[range].firstColumn;
    return placeKeyOf(
        range, positionKeyOf(_random() % rows, _ranges[range].firstColumn + _random() % width));
  }

  void set(PlaceKey place) {
    ValueBits const value = bitsOfNumber(static_cast<double>(_random() % 100) * _unit);
    ASSERT_EQ(_column.set(place, value), _plain.set(place, value));
  }

  /// An area between two places of a range, in the order of places.
  void expectSameList() {
    PlaceKey const one = drawPlace();
    PlaceKey const other = placeKeyOf(rangeOfPlace(one), positionOfPlace(drawPlace()));
    auto const rowsOfArea = std::minmax({rowOf(one), rowOf(other)});
    auto const columnsOfArea = std::minmax({columnOf(one), columnOf(other)});
    TableRange const area{rowsOfArea.first, columnsOfArea.first, rowsOfArea.second + 1,
                          columnsOfArea.second + 1};
    std::vector<std::pair<PlaceKey, ValueBits>> expected;
    for (auto const& [place, value] : _plain.getValues()) {
      if (rangeOfPlace(place) == rangeOfPlace(one) &&
          area.contains(rowOf(place), columnOf(place))) {
        expected.emplace_back(place, value);
      }
    }
    std::vector<std::pair<PlaceKey, ValueBits>> listed;
    for (auto const& entry : _column.list(rangeOfPlace(one), area)) {
      listed.emplace_back(entry.place, entry.value);
    }
    ASSERT_EQ(listed, expected);
  }

  void expectSameSearch() {
    PlaceKey const from = drawPlace();
    double const wanted = static_cast<double>(_random() % 100) * _unit;
    auto const test = [wanted](ValueBits bits) { return bits == bitsOfNumber(wanted); };
    auto expected = _plain.getValues().lower_bound(from);
    while (expected != _plain.getValues().end() && !test(expected->second)) {
      ++expected;
    }
    auto const found = _column.findFirst(from, test);
    ASSERT_EQ(found.has_value(), expected != _plain.getValues().end());
    ASSERT_TRUE(!found || found->place == expected->first);
  }

  static unsigned long rowOf(PlaceKey place) { return rowOfKey(positionOfPlace(place)); }
  static unsigned long columnOf(PlaceKey place) { return columnOfKey(positionOfPlace(place)); }

  std::mt19937 _random;
  double _unit;
  std::vector<TableRange> _ranges;
  ValueColumn _column;
  PlainColumn _plain;
};

TEST(ValueColumn, FollowsEditsOfRows) {
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    EditedPlaces places(seed, 1);
    for (int edit = 0; edit < 80; ++edit) {
      unsigned long const first = random() % EditedPlaces::rows;
      unsigned long const count = 1 + random() % (edit % 9 == 0 ? 1'000 : 3);
      auto const kind = static_cast<AxisEdit::Kind>(seed < 3 ? random() % 2 : random() % 3);
      SheetMoves moves;
      moves.rows.add({kind, first, count, random() % (2 * EditedPlaces::rows)});
      ASSERT_NO_FATAL_FAILURE(places.edit(moves)) << "edit " << edit;
    }
    ASSERT_NO_FATAL_FAILURE(places.expectSame());
  }
}

TEST(ValueColumn, FollowsEditsOfColumns) {
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    EditedPlaces places(seed, 5, seed % 2 == 0 ? 1 : 0.1);
    for (int edit = 0; edit < 12; ++edit) {
      // Columns are inserted before a range or inside, moved about inside, some of them together,
      // and deleted before it.
      TableRange const& range = places.getRange(random() % 2);
      unsigned long const width = range.endColumn - range.firstColumn;
      unsigned long const inside = range.firstColumn + 1 + random() % (width - 2);
      SheetMoves moves;
      switch (random() % (seed < 3 ? 2 : 4)) {
        case 0:
          moves.columns.add({AxisEdit::Kind::Insert, inside, 1 + random() % 3});
          break;
        case 1:
          moves.columns.add({AxisEdit::Kind::Delete, range.firstColumn - 1, 1});
          moves.columns.add({AxisEdit::Kind::Insert, random() % 2, 2});
          break;
        case 2:
          moves.columns.add({AxisEdit::Kind::Move, inside, 1, range.firstColumn + 1});
          break;
        default:
          for (int part = 0; part < 3; ++part) {
            unsigned long const first = range.firstColumn + 1 + random() % (width - 3);
            moves.columns.add({AxisEdit::Kind::Move, first, 1 + random() % 2,
                               range.firstColumn + 1 + random() % (width - 1)});
          }
      }
      ASSERT_NO_FATAL_FAILURE(places.edit(moves)) << "edit " << edit;
    }
    ASSERT_NO_FATAL_FAILURE(places.expectSame());
  }
}

TEST(ValueColumn, MovesColumnsOfRowsThatSpanSeveralBlocks) {
  std::mt19937 random(4);
  for (int round = 0; round < 8; ++round) {
    SCOPED_TRACE(round);
    ValueColumn column;
    PlainColumn plain;
    for (unsigned long row = 0; row < 5; ++row) {
      for (unsigned long inRow = row == 2 ? 3'990 : 7; inRow < 4'000; inRow += 1 + random() % 2) {
        PlaceKey const place = placeKeyOf(0, positionKeyOf(row, inRow));
        ValueBits const value = bitsOfNumber(static_cast<double>(random() % 100) * 0.1);
        column.set(place, value);
        plain.set(place, value);
      }
    }
    SheetMoves moves;
    for (int part = 0; part <= round % 3; ++part) {
      moves.columns.add(
          {AxisEdit::Kind::Move, random() % 4'000, 1 + random() % 900, random() % 4'000});
    }
    plain.move(moves, column);
    column.moveColumns(moves.columns, {wholeColumnSheet});
    ASSERT_NO_FATAL_FAILURE(plain.expectSame(column));
    auto known = plain.getValues().begin();
    for (auto const& entry : column.list(0, wholeColumnSheet)) {
      ASSERT_EQ(std::pair(entry.place, entry.value), std::pair(known->first, known->second));
      ++known;
    }
  }
}

TEST(ValueColumn, PutsManyColumnsInOrderOfWhichNoneIsWhereItWas) {
  std::mt19937 random(6);
  constexpr unsigned long width = 300;
  ValueColumn column;
  PlainColumn plain;
  for (PlaceKey row = 0; row < 40; ++row) {
    for (unsigned long inRow = 0; inRow < width; ++inRow) {
      PlaceKey const place = placeKeyOf(0, positionKeyOf(row, inRow));
      ValueBits const value = bitsOfNumber(static_cast<double>(random() % 100) * 0.1);
      column.set(place, value);
      plain.set(place, value);
    }
  }
  SheetMoves moves;
  for (int count = 0; count < 2'000; ++count) {
    moves.columns.add({AxisEdit::Kind::Move, random() % width, 1, random() % width});
  }
  plain.move(moves, column);
  column.moveColumns(moves.columns, {wholeColumnSheet});
  ASSERT_NO_FATAL_FAILURE(plain.expectSame(column));
  for (auto const& [place, value] : plain.getValues()) {
    ASSERT_EQ(column.get(place), value);
  }
}

TEST(ValueColumn, PutsValuesInOrderOnlyForASumThatDependsOnIt) {
  ValueColumn column;
  std::vector<TableRange> const ranges{{0, 0, 3'000, 4}};
  for (unsigned long row = 0; row < 3'000; ++row) {
    for (unsigned long inColumn = 0; inColumn < 4; ++inColumn) {
      column.set(placeKeyOf(0, positionKeyOf(row, inColumn)), bitsOfNumber(1));
    }
  }
  std::size_t const bytes = column.countBytes();
  LineMoves moves(DOM::Table::columnCount);
  moves.add({AxisEdit::Kind::Move, 3, 1, 1});
  column.moveColumns(moves, ranges);
  EXPECT_EQ(column.sum().get(), 12'000);
  EXPECT_EQ(column.countBytes(), bytes);
  // One after the other they give a half; with the half amid them, nothing.
  column.set(placeKeyOf(0, positionKeyOf(7, 0)), bitsOfNumber(0x1p60));
  column.set(placeKeyOf(0, positionKeyOf(7, 1)), bitsOfNumber(-0x1p60));
  column.set(placeKeyOf(0, positionKeyOf(7, 2)), bitsOfNumber(0.5));
  for (unsigned long row = 0; row < 3'000; ++row) {
    for (unsigned long inColumn = row == 7 ? 3 : 0; inColumn < 4; ++inColumn) {
      column.set(placeKeyOf(0, positionKeyOf(row, inColumn)), noValueBits);
    }
  }
  EXPECT_EQ(column.sum().get(), 0.5);
}

TEST(ValueColumn, KeepsTheOrderOfCellsWhereValuesComeIntoInsertedColumns) {
  struct Place {
    PlaceKey place;
    ValueBits value;
  };
  // One after the other they give a half and a quarter, in another order less.
  std::vector<Place> places{{1, bitsOfNumber(0x1p60)},
                            {2, bitsOfNumber(-0x1p60)},
                            {3, bitsOfNumber(0.5)},
                            {4, bitsOfNumber(0.25)}};
  auto const isSmall = [](ValueBits bits) {
    return std::bit_cast<double>(bits) == 0.5 || std::bit_cast<double>(bits) == 0.25;
  };
  auto const isBefore = [](Place const& a, Place const& b) { return a.place < b.place; };
  do {
    ValueColumn column;
    PlainColumn plain;
    LineMoves moves(DOM::Table::columnCount);
    moves.add({AxisEdit::Kind::Insert, 2, 1});
    moves.add({AxisEdit::Kind::Insert, 3, 1});
    column.moveColumns(moves, {wholeColumnSheet});
    for (auto const& [place, value] : places) {
      column.set(place, value);
      plain.set(place, value);
    }
    for (PlaceKey from = 0; from < 6; ++from) {
      auto const found = column.findFirst(from, isSmall);
      ASSERT_EQ(found ? found->place : 5, from <= 3 ? 3 : from <= 4 ? 4 : 5);
    }
    ASSERT_EQ(column.list(0, wholeColumnSheet).front().place, 1U);
    ASSERT_NO_FATAL_FAILURE(plain.expectSame(column));
  } while (std::ranges::next_permutation(places, isBefore).found);
}

TEST(ValueColumn, MovesColumnsOfRowsThatLieFarApart) {
  ValueColumn column;
  std::vector<TableRange> const ranges{wholeColumnSheet};
  // Just near enough for one block, until the second one moves to the right.
  constexpr unsigned long apart = 1UL << 17U;
  column.set(placeKeyOf(0, positionKeyOf(0, 9)), bitsOfNumber(0.1));
  column.set(placeKeyOf(0, positionKeyOf(apart, 4)), bitsOfNumber(0.2));
  LineMoves moves(DOM::Table::columnCount);
  moves.add({AxisEdit::Kind::Move, 4, 1, 16'384});
  column.moveColumns(moves, ranges);
  EXPECT_EQ(column.sum().get(), 0.1 + 0.2);
  EXPECT_EQ(column.get(placeKeyOf(0, positionKeyOf(0, 8))), bitsOfNumber(0.1));
  EXPECT_EQ(column.get(placeKeyOf(0, positionKeyOf(apart, 16'383))), bitsOfNumber(0.2));
  EXPECT_EQ(column.list(0, wholeColumnSheet).size(), 2U);
}

TEST(CellKeys, AscendRowByRow) {
  EXPECT_LT(positionKeyOf(7, 16'383), positionKeyOf(8, 0));
  EXPECT_EQ(positionKeyOf(7, 16'384), positionKeyOf(8, 0));
  EXPECT_LT(positionOfPlace(placeKeyOf(3, positionKeyOf(1'048'575, 16'383))), placeKeyOf(1, 0));
  EXPECT_EQ(positionOfPlace(placeKeyOf(3, positionKeyOf(9, 5))), positionKeyOf(9, 5));
  EXPECT_EQ(rowOfKey(positionKeyOf(1'048'575, 16'383)), 1'048'575U);
  EXPECT_EQ(columnOfKey(positionKeyOf(1'048'575, 16'383)), 16'383U);
}

TEST(CellKeys, NumbersHaveBitsThatNoOtherValueHas) {
  for (double const number :
       {0.0, -0.0, 1.5, -columnInfinity, columnInfinity, columnNaN, -columnNaN}) {
    EXPECT_TRUE(isNumberBits(bitsOfNumber(number))) << number;
  }
  EXPECT_EQ(bitsOfNumber(-0.0), bitsOfNumber(0.0));
  EXPECT_EQ(bitsOfNumber(columnNaN), bitsOfNumber(-columnNaN));
  EXPECT_FALSE(isNumberBits(someText));
  EXPECT_FALSE(isNumberBits(noValueBits));
  EXPECT_FALSE(isNumberBits(FormulaModel::ValueKey::ofBoolean(false).bits()));
  EXPECT_FALSE(
      isNumberBits(FormulaModel::ValueKey::ofError(FormulaModel::FormulaErrorCode::Null).bits()));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
