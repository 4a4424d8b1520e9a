#include "FormulaModel/FormulaValue.h"

#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

namespace Zorv::FormulaModel {
namespace {

TEST(FormulaValue, TheAlternativesAreInTheOrderOfTheContract) {
  EXPECT_EQ(FormulaValue().which(), 0);
  EXPECT_EQ(FormulaValue(FormulaEmpty()).which(), FormulaValueKind::Empty);
  EXPECT_EQ(FormulaValue(FormulaNumber()).which(), FormulaValueKind::Number);
  EXPECT_EQ(FormulaValue(FormulaString()).which(), FormulaValueKind::String);
  EXPECT_EQ(FormulaValue(FormulaBoolean()).which(), FormulaValueKind::Boolean);
  EXPECT_EQ(FormulaValue(FormulaError()).which(), FormulaValueKind::Error);
  EXPECT_EQ(FormulaValueKind::Error, 4);
}

TEST(FormulaValue, IsSmallAndMovesWithoutThrowing) {
  EXPECT_LE(sizeof(FormulaValue), 40U);
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<FormulaValue>);
  EXPECT_TRUE((std::is_same_v<Zorv::FormulaValue, FormulaValue>));
}

TEST(FormulaValue, TextsMoveInsteadOfBeingCopied) {
  FormulaValue value = FormulaString{std::string(100, 'x')};
  char const* const bytes = boost::get<FormulaString>(value).value.data();
  FormulaValue const moved = std::move(value);
  EXPECT_EQ(boost::get<FormulaString>(moved).value.data(), bytes);
}

}  // namespace
}  // namespace Zorv::FormulaModel
