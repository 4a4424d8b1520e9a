#include "ConditionalFormatters/Following/CndFrmt_ValueColumn.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "FormulaModel/ValueKey.h"

namespace Zorv::ConditionalFormatters {
namespace {

constexpr double columnNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double columnInfinity = std::numeric_limits<double>::infinity();
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

  /// Moves values to other rows; those that are gone are removed here and from a column.
  void moveRows(RowMoves const& moves, ValueColumn& column) {
    std::map<PlaceKey, ValueBits> const before = std::exchange(_values, {});
    for (auto const& [place, value] : before) {
      auto const shift = moves.runOf(rowOfKey(positionOfPlace(place))).shift;
      if (shift) {
        _values.emplace(place + (PlaceKey{*shift} << columnKeyBits), value);
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
  EXPECT_TRUE(column.list(0, 100).empty());
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
      column.append(place, value);
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
    for (auto const& entry : column.list(1'000, 5'000)) {
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
    column.append(place, bitsOfNumber(1));
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
    column.append(place, bitsOfNumber(0.1));
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
    column.append(place, bitsOfNumber(1));
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
  auto const listed = column.list(0, ~PlaceKey{0});
  auto known = plain.getValues().begin();
  for (auto const& entry : listed) {
    ASSERT_EQ(entry.place, (known++)->first);
  }
  EXPECT_EQ(known, plain.getValues().end());
}

TEST(ValueColumn, FollowsEditsOfRows) {
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    ValueColumn column;
    PlainColumn plain;
    constexpr unsigned long rows = 6'000;
    for (std::size_t range = 0; range < 2; ++range) {
      for (unsigned long row = 0; row < rows; row += 1 + random() % 2) {
        ValueBits const value = bitsOfNumber(static_cast<double>(random() % 100) * 0.1);
        column.append(placeKeyOf(range, positionKeyOf(row, 3)), value);
        plain.set(placeKeyOf(range, positionKeyOf(row, 3)), value);
      }
    }
    for (int edit = 0; edit < 120; ++edit) {
      unsigned long const first = random() % rows;
      unsigned long const count = 1 + random() % (edit % 9 == 0 ? 2'000 : 3);
      auto const kind = static_cast<RowEdit::Kind>(seed < 3 ? random() % 2 : random() % 3);
      RowMoves moves;
      moves.add({kind, first, count, random() % (2 * rows)});
      plain.moveRows(moves, column);
      column.moveRows(moves);
      PlaceKey const place = placeKeyOf(random() % 2, positionKeyOf(random() % rows, 3));
      ASSERT_EQ(column.set(place, bitsOfNumber(0.7)), plain.set(place, bitsOfNumber(0.7)));
      ASSERT_NO_FATAL_FAILURE(plain.expectSame(column)) << "edit " << edit;
    }
    for (auto const& [place, value] : plain.getValues()) {
      ASSERT_EQ(column.get(place), value);
    }
    EXPECT_LT(column.countBytes(), 32 * column.size()) << "blocks do not fall to pieces";
  }
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
