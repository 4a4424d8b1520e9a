#include "Formulas/NumberComparison.h"

#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/FoldExpr.h"
#include "Formulas/ParseExpr.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

std::optional<NumberComparison> find(std::string_view formula) {
  return NumberComparison::find(parseExpr(formula));
}

TEST(NumberComparison, IsAFormulaThatComparesOneCellWithANumber) {
  for (char const* const formula : {"A1=2", "A1<>2", "A1<2", "A1<=2", "A1>2", "A1>=2", "2>A1",
                                    "$B7>=0.5", "B$7=0", "$C$3<1E+300"}) {
    EXPECT_TRUE(find(formula)) << formula;
  }
  for (char const* const formula :
       {"A1+2", "A1&2", "A1", "2", "2>3", "A1>B1", "A1>-2", "A1>\"2\"", "A1>TRUE", "A1:A2>2",
        "Other!A1>2", "A1>2>1", "(A1>2)+1", "-A1>2", "Name>2", "List[One]>2", "TRUE>2"}) {
    EXPECT_FALSE(find(formula)) << formula;
  }
}

TEST(NumberComparison, NamesTheCell) {
  auto const comparison = find("2>$B7");
  ASSERT_TRUE(comparison);
  EXPECT_EQ(comparison->getCell().firstRow, 6U);
  EXPECT_EQ(comparison->getCell().firstColumn, 1U);
  EXPECT_TRUE(comparison->getCell().firstRowIsRelative);
  EXPECT_FALSE(comparison->getCell().firstColumnIsRelative);
}

TEST(NumberComparison, HoldsWhereTheFormulaIsTrue) {
  FormulaDocument document;
  Context const context(&document.sheet(), RowIndex(0), ColumnIndex(0), boost::none, DOM::RowID(0),
                        DOM::ColumnID(0));
  EvaluationSession session;
  double const numbers[] = {-3,  0,   std::nextafter(0.3, 0), 0.3, std::nextafter(0.3, 1),
                            0.1, 1e9, 0.3 * (1 + 0x1p-48),    -0.3};
  for (char const* const formula :
       {"A1=0.3", "A1<>0.3", "A1<0.3", "A1<=0.3", "A1>0.3", "A1>=0.3", "0.3=A1", "0.3<>A1",
        "0.3<A1", "0.3<=A1", "0.3>A1", "0.3>=A1"}) {
    auto const comparison = find(formula);
    ASSERT_TRUE(comparison) << formula;
    for (double const number : numbers) {
      document.sheet().table.setValue(0, 0, FormulaModel::FormulaNumber{FloatNumber(number)});
      RuntimeDependenciesResolver resolver;
      auto const result =
          calcShiftedExpr(parseExpr(formula), 0, 0, context, document, resolver, session);
      EXPECT_EQ(describe(result), comparison->holds(number) ? "TRUE" : "FALSE")
          << formula << " for " << number;
    }
  }
}

TEST(NumberComparison, DiffersFromAnotherBetweenTheirNumbersAndForTheLastBitsOfThese) {
  auto const different = find("A1>=2")->findDifferent(*find("A1>=5"));
  ASSERT_TRUE(different);
  EXPECT_LT(different->first, std::nextafter(2.0, 0));
  EXPECT_GT(different->first, 1.9999999);
  EXPECT_GT(different->second, std::nextafter(5.0, 6));
  EXPECT_LT(different->second, 5.0000001);
  EXPECT_EQ(find("A1>=5")->findDifferent(*find("A1>=2")), different);
}

TEST(NumberComparison, HasTheLastBitsOfNegativeNumbersBetweenItsBounds) {
  FormulaDocument document;
  Context const context(&document.sheet(), RowIndex(0), ColumnIndex(0), boost::none, DOM::RowID(0),
                        DOM::ColumnID(0));
  EvaluationSession session;
  document.setColumn("B1", {"-7", "-6"});
  auto const first = foldExpr(parseExpr("A1=MIN($B$1:$B$2)"), context, document, session);
  auto const second = foldExpr(parseExpr("A1=MAX($B$1:$B$2)"), context, document, session);
  ASSERT_TRUE(first && second);
  auto const different =
      NumberComparison::find(*first)->findDifferent(*NumberComparison::find(*second));
  ASSERT_TRUE(different);
  EXPECT_LT(different->first, std::nextafter(-7.0, -8));
  EXPECT_GT(different->second, std::nextafter(-6.0, 0));
}

TEST(NumberComparison, HasNoBoundsTowardsOneThatDiffersInMoreThanTheNumber) {
  for (char const* const other : {"A1>2", "B1>=2", "A2>=2", "$A1>=2", "5>=A1"}) {
    EXPECT_FALSE(find("A1>=5")->findDifferent(*find(other))) << other;
  }
}

}  // namespace
}  // namespace Zorv::Formulas
