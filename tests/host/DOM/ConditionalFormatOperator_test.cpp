#include "DOM/ConditionalFormatOperator.h"

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <boost/optional/optional_io.hpp>
#include <boost/variant/get.hpp>

namespace Zorv::DOM {
namespace {

using FormulaSyntaxTree::Expr;

Expr constant(double value) {
  return Expr::constant(FormulaModel::FormulaNumber{FloatNumber(value)});
}

TEST(ConditionalFormatOperator, TheAlternativesAreInTheOrderOfTheContract) {
  auto const which = [](ConditionalFormatOperator const& condition) { return condition.which(); };
  EXPECT_EQ(which(NullaryConditionalFormatOperator(NullaryConditionalFormatType::Blanks)), 0);
  EXPECT_EQ(which(UnaryConditionalFormatOperator(UnaryConditionalFormatType::Equal, {})), 1);
  EXPECT_EQ(which(BinaryConditionalFormatOperator(BinaryConditionalFormatType::Between, {}, {})),
            2);
  EXPECT_EQ(which(TextConditionalFormatOperator(TextConditionalFormatType::Contains, "x")), 3);
  EXPECT_EQ(
      which(TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Top, 1, false)), 4);
  EXPECT_EQ(which(AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above)),
            5);
  EXPECT_EQ(which(UniquenessConditionalFormatOperator{}), 6);
}

TEST(ConditionalFormatOperator, TheKindsHaveTheNumbersOfTheContract) {
  EXPECT_EQ(static_cast<int>(NullaryConditionalFormatType::NoErrors), 3);
  EXPECT_EQ(static_cast<int>(NullaryConditionalFormatType::Last7Days), 7);
  EXPECT_EQ(static_cast<int>(NullaryConditionalFormatType::NextMonth), 13);
  EXPECT_EQ(static_cast<int>(UnaryConditionalFormatType::Greater), 2);
  EXPECT_EQ(static_cast<int>(UnaryConditionalFormatType::FormulaIsTrue), 6);
  EXPECT_EQ(static_cast<int>(BinaryConditionalFormatType::NotBetween), 1);
  EXPECT_EQ(static_cast<int>(TextConditionalFormatType::EndsWith), 3);
  EXPECT_EQ(static_cast<int>(TopBottomConditionalFormatType::Bottom), 1);
  EXPECT_EQ(static_cast<int>(AboveAverageConditionalFormatType::EqualOrBelow), 3);
  EXPECT_EQ(static_cast<int>(UniquenessType::Unique), 1);
}

TEST(ConditionalFormatOperator, AKindOutOfRangeIsKept) {
  NullaryConditionalFormatOperator const condition(static_cast<NullaryConditionalFormatType>(200));
  EXPECT_EQ(static_cast<int>(condition.getType()), 200);
}

TEST(ConditionalFormatOperator, KeepsItsFormulasInOrder) {
  BinaryConditionalFormatOperator const between(BinaryConditionalFormatType::Between, constant(1),
                                                constant(2));
  EXPECT_EQ(between.getFirstArgument(), constant(1));
  EXPECT_EQ(between.getSecondArgument(), constant(2));
  UnaryConditionalFormatOperator const greater(UnaryConditionalFormatType::Greater, constant(3));
  EXPECT_EQ(greater.getArgument(), constant(3));
}

TEST(ConditionalFormatOperator, ATextIsLiteralOrAFormula) {
  TextConditionalFormatOperator const literal(TextConditionalFormatType::Contains, "ell");
  EXPECT_EQ(literal.getArgument().which(), 0);
  EXPECT_EQ(boost::get<std::string>(literal.getArgument()), "ell");

  TextConditionalFormatOperator const formula(TextConditionalFormatType::EndsWith,
                                              std::make_unique<Expr>(constant(4)));
  EXPECT_EQ(formula.getArgument().which(), 1);
  EXPECT_EQ(*boost::get<std::unique_ptr<Expr>>(formula.getArgument()), constant(4));
}

TEST(ConditionalFormatOperator, NumbersOfTheRecordsAreKept) {
  TopBottomConditionalFormatOperator const top(TopBottomConditionalFormatType::Top, 4'000'000'000U,
                                               true);
  EXPECT_EQ(top.getValue(), 4'000'000'000U);
  EXPECT_TRUE(top.getUsePercent());
  EXPECT_FALSE(
      AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above).getStdDev());
  EXPECT_EQ(AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above, 0U)
                .getStdDev(),
            boost::optional<std::uint32_t>(0U));
}

}  // namespace
}  // namespace Zorv::DOM
