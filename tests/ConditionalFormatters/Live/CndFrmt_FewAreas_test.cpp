#include "ConditionalFormatters/Live/CndFrmt_FewAreas.h"

#include <algorithm>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

using Areas = std::vector<TableRange>;

bool isHeld(Areas const& areas, unsigned long row, unsigned long column) {
  return std::ranges::any_of(areas,
                             [&](TableRange const& area) { return area.contains(row, column); });
}

TEST(FewAreas, AreExactWhereFewSuffice) {
  EXPECT_EQ(joinIntoFew({}, 4), Areas());
  EXPECT_EQ(joinIntoFew({{3, 3, 3, 9}}, 4), Areas());
  EXPECT_EQ(joinIntoFew({{0, 0, 2, 2}, {2, 0, 5, 2}, {1, 0, 3, 1}}, 4), (Areas{{0, 0, 5, 2}}));
  EXPECT_EQ(joinIntoFew({{0, 1, 9, 2}, {3, 0, 4, 5}}, 4),
            (Areas{{0, 1, 3, 2}, {3, 0, 4, 5}, {4, 1, 9, 2}}));
}

TEST(FewAreas, AreOneAreaWhereManyCellsLieOneBelowTheOther) {
  Areas cells;
  for (unsigned long row = 0; row < 40; ++row) {
    cells.push_back({row, 0, row + 1, 1});
  }
  EXPECT_EQ(joinIntoFew(cells, 3), (Areas{{0, 0, 40, 1}}));
}

TEST(FewAreas, GoOnThroughBandsThatOnlyOthersCross) {
  EXPECT_EQ(joinIntoFew({{0, 0, 9, 1}, {4, 3, 5, 4}}, 4), (Areas{{0, 0, 9, 1}, {4, 3, 5, 4}}));
}

TEST(FewAreas, LeaveOutWhatWouldEncloseTheMost) {
  Areas const corners = {{0, 0, 1, 1}, {2, 0, 3, 1}, {1'000'000, 0, 1'000'001, 1}};
  EXPECT_EQ(joinIntoFew(corners, 2), (Areas{{0, 0, 3, 1}, {1'000'000, 0, 1'000'001, 1}}));
  EXPECT_EQ(joinIntoFew(corners, 1), (Areas{{0, 0, 1'000'001, 1}}));
  // Positions that are in the areas are not enclosed, however large these are.
  EXPECT_EQ(joinIntoFew({{0, 0, 10, 10}, {11, 0, 12, 1}, {60, 0, 61, 1}}, 2),
            (Areas{{0, 0, 12, 10}, {60, 0, 61, 1}}));
}

TEST(FewAreas, HoldEveryPositionAndAreDisjoint) {
  constexpr unsigned long size = 12;
  std::mt19937 random(7);
  auto const draw = [&](unsigned long end) {
    return std::uniform_int_distribution<unsigned long>(0, end - 1)(random);
  };
  for (int round = 0; round < 300; ++round) {
    Areas areas;
    for (unsigned long count = draw(round % 2 == 0 ? 9 : 40); count > 0; --count) {
      unsigned long const row = draw(size);
      unsigned long const column = draw(size);
      areas.push_back({row, column, row + draw(5), column + draw(5)});
    }
    std::size_t const most = 1 + draw(20);
    Areas const few = joinIntoFew(areas, most);
    EXPECT_LE(few.size(), most);
    bool isExact = true;
    for (unsigned long row = 0; row < size + 5; ++row) {
      for (unsigned long column = 0; column < size + 5; ++column) {
        auto const holders = std::ranges::count_if(
            few, [&](TableRange const& area) { return area.contains(row, column); });
        EXPECT_LE(holders, 1);
        EXPECT_TRUE(holders == 1 || !isHeld(areas, row, column)) << "round " << round;
        isExact = isExact && (holders == 1) == isHeld(areas, row, column);
      }
    }
    EXPECT_TRUE(isExact || joinIntoFew(areas, 1000).size() > most) << "round " << round;
  }
}

TEST(FewAreas, AreTheWidthOfAllThatLiesInTheirRows) {
  // Two columns of cells, the left one begins above; and a long area that ends between.
  Areas areas = {{0, 2, 40, 3}};
  for (unsigned long row = 10; row < 90; row += 2) {
    areas.push_back({row, 0, row + 1, 1});
    areas.push_back({row + 10, 7, row + 11, 8});
  }
  Areas const few = joinIntoFew(areas, 3);
  EXPECT_EQ(few, (Areas{{0, 2, 10, 3}, {10, 0, 89, 8}, {90, 7, 99, 8}}));
}

TEST(FewAreas, HoldManyCrossingStrips) {
  Areas strips;
  for (unsigned long strip = 0; strip < 1000; ++strip) {
    strips.push_back({2 * strip, 0, 2 * strip + 1, 5000});
    strips.push_back({0, 2 * strip, 5000, 2 * strip + 1});
  }
  Areas const few = joinIntoFew(strips, 16);
  EXPECT_LE(few.size(), 16U);
  EXPECT_TRUE(isHeld(few, 0, 4999));
  EXPECT_TRUE(isHeld(few, 4999, 1998));
  EXPECT_FALSE(isHeld(few, 4999, 4999));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
