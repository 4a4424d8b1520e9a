#include "Utils/CellIndex.h"

#include <type_traits>

#include <gtest/gtest.h>
#include <boost/container_hash/hash.hpp>

#include "Utils/TaggedValue.h"

namespace Zorv {
namespace {

TEST(CellIndex, TakesTheRowFirst) {
  CellIndex const index(RowIndex(3), ColumnIndex(7));
  EXPECT_EQ(index.getRow().get(), 3UL);
  EXPECT_EQ(index.getColumn().get(), 7UL);
}

TEST(CellIndex, RowsAndColumnsAreNotInterchangeable) {
  EXPECT_FALSE((std::is_constructible_v<CellIndex, ColumnIndex, RowIndex>));
  EXPECT_FALSE((std::is_convertible_v<unsigned long, RowIndex>));
  EXPECT_FALSE((std::is_convertible_v<RowIndex, ColumnIndex>));
}

TEST(CellIndex, OrdersByRowThenColumn) {
  CellIndex const low(RowIndex(1), ColumnIndex(9));
  CellIndex const high(RowIndex(2), ColumnIndex(0));
  EXPECT_LT(low, high);
  EXPECT_EQ(low, CellIndex(RowIndex(1), ColumnIndex(9)));
}

TEST(TaggedValue, HashesAsItsNumberDoes) {
  EXPECT_EQ(boost::hash<RowIndex>()(RowIndex(5)), boost::hash<unsigned long>()(5UL));
}

}  // namespace
}  // namespace Zorv
