#include "ConditionalFormatters/Following/CndFrmt_ValueClasses.h"

#include <map>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

TEST(ValueClasses, NameTheOnlyOtherCellOfAClass) {
  ValueClasses classes;
  ValueBits const one = bitsOfNumber(1);
  EXPECT_EQ(classes.add(one, 10).count, 0U);
  auto others = classes.add(one, 20);
  EXPECT_EQ(others.count, 1U);
  EXPECT_EQ(others.only, 10U);
  EXPECT_EQ(classes.add(one, 30).count, 2U);
  EXPECT_EQ(classes.add(bitsOfNumber(2), 40).count, 0U);
  EXPECT_EQ(classes.remove(one, 10).count, 2U);
  others = classes.remove(one, 30);
  EXPECT_EQ(others.count, 1U);
  EXPECT_EQ(others.only, 20U);
  EXPECT_EQ(classes.remove(one, 20).count, 0U);
  EXPECT_EQ(classes.add(one, 50).count, 0U);
}

TEST(ValueClasses, ACellThatIsAddedTwiceIsItsOwnOther) {
  ValueClasses classes;
  ValueBits const one = bitsOfNumber(1);
  EXPECT_EQ(classes.add(one, 10).count, 0U);
  EXPECT_EQ(classes.add(one, 10).only, 10U);
  EXPECT_EQ(classes.add(one, 20).count, 2U);
  EXPECT_EQ(classes.remove(one, 10).count, 2U);
  auto const others = classes.remove(one, 10);
  EXPECT_EQ(others.count, 1U);
  EXPECT_EQ(others.only, 20U);
}

TEST(ValueClasses, FollowRandomEdits) {
  std::mt19937 random(9);
  ValueClasses classes;
  std::map<ValueBits, std::multiset<PositionKey>> plain;
  std::vector<std::pair<ValueBits, PositionKey>> cells;
  for (int edit = 0; edit < 60'000; ++edit) {
    // Grows over several sizes of the tables, and then shrinks to nothing.
    if (cells.empty() || random() % 10 < (edit < 35'000 ? 8U : 2U)) {
      ValueBits const value = bitsOfNumber(static_cast<double>(random() % 20'000));
      PositionKey const cell = positionKeyOf(random() % 1'048'576, random() % 16'384);
      auto& same = plain[value];
      auto const others = classes.add(value, cell);
      ASSERT_EQ(others.count, same.size());
      ASSERT_TRUE(others.count != 1 || others.only == *same.begin());
      same.insert(cell);
      cells.emplace_back(value, cell);
    } else {
      std::swap(cells[random() % cells.size()], cells.back());
      auto const [value, cell] = cells.back();
      auto& same = plain[value];
      same.erase(same.find(cell));
      auto const others = classes.remove(value, cell);
      ASSERT_EQ(others.count, same.size());
      ASSERT_TRUE(others.count != 1 || others.only == *same.begin());
      cells.pop_back();
    }
  }
}

TEST(ValueClasses, TakeTwentyToFortyBytesForAClass) {
  ValueClasses classes;
  constexpr std::size_t count = 200'000;
  for (std::size_t index = 0; index < count; ++index) {
    classes.add(bitsOfNumber(static_cast<double>(index)), index);
  }
  EXPECT_LT(classes.countBytes(), 44 * count);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
