#include "DOM/Cell.h"

#include <type_traits>

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

TEST(Cell, IsEmptyWithoutAStyleByDefault) {
  Cell const cell;
  EXPECT_EQ(cell.value.which(), FormulaModel::FormulaValueKind::Empty);
  EXPECT_EQ(cell.style, nullptr);
  EXPECT_FALSE(cell.hasFormula);
}

TEST(Cell, IsSmallAndMovesWithoutThrowing) {
  EXPECT_LE(sizeof(Cell), 56U);
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<Cell>);
}

}  // namespace
}  // namespace Zorv::DOM
