#include "DOM/ColumnSet.h"

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

bool hasColumn(ColumnSet set, unsigned long column) { return set.mayMeet({column, 1}); }

TEST(ColumnSet, IsEmptyAtFirst) {
  for (unsigned long column = 0; column < 130; ++column) {
    EXPECT_FALSE(hasColumn({}, column)) << column;
    EXPECT_FALSE(hasColumn({column, 0}, column)) << column;
  }
  EXPECT_FALSE(ColumnSet().mayMeet({0, 16'384}));
}

TEST(ColumnSet, HoldsNeighboursAndThoseEqualModulo64) {
  for (unsigned long const first : {0UL, 1UL, 62UL, 63UL, 64UL, 130UL, 16'320UL}) {
    for (unsigned long const count : {1UL, 2UL, 62UL, 63UL, 64UL, 65UL, 200UL, ~0UL}) {
      ColumnSet const set(first, count);
      for (unsigned long column = first; column < first + 64; ++column) {
        bool const held = column - first < count;
        EXPECT_EQ(hasColumn(set, column), held) << first << ", " << count << ", " << column;
        EXPECT_EQ(hasColumn(set, column % 64), held) << first << ", " << count << ", " << column;
        EXPECT_EQ(hasColumn(set, column + 128), held) << first << ", " << count << ", " << column;
      }
    }
  }
}

TEST(ColumnSet, GrowsByColumnsAndSets) {
  ColumnSet set;
  set.add(70);
  EXPECT_TRUE(hasColumn(set, 70));
  EXPECT_FALSE(hasColumn(set, 71));
  ColumnSet other(71, 2);
  other.add(set);
  EXPECT_TRUE(hasColumn(other, 70));
  EXPECT_TRUE(hasColumn(other, 72));
  EXPECT_FALSE(hasColumn(set, 72));
}

}  // namespace
}  // namespace Zorv::DOM
