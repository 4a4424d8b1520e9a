#include "Formulas/FoldExpr.h"

#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

using DOM::FormulaSyntaxTree::Expr;

/// Two sheets, a list, and numbers of which the average is 2.5.
class FoldExprTest : public testing::Test {
protected:
  FoldExprTest() {
    document.setColumn("A1", {"1", "2", "3", "4"});
    document.setColumn("B1", {"\"x\"", "\"y\"", "empty", "#DIV/0!"});
    document.addSheet("Other").table.setValue(0, 0, FormulaModel::FormulaNumber{FloatNumber(9)});
    document.define("Fixed", "Sheet1!$A$1:$A$4");
    document.addList({.name = "List",
                      .table = FormulaModel::DocTableIndex(0),
                      .range = {0, 0, 4, 1},
                      .columnNames = {"One"}});
  }

  Context contextAt(unsigned long row) {
    return {&document.sheet(), RowIndex(row), ColumnIndex(0),
            boost::none,       DOM::RowID(0), DOM::ColumnID(0)};
  }

  std::optional<Expr> fold(std::string_view formula) {
    return foldExpr(parseExpr(formula), contextAt(2), document, session);
  }

  /// Result in another row of a formula that is written for the first one.
  std::string calcIn(unsigned long row, Expr const& expr) {
    RuntimeDependenciesResolver resolver;
    return describe(calcShiftedExpr(expr, 0, static_cast<int>(row), contextAt(row), document,
                                    resolver, session));
  }

  FormulaDocument document;
  EvaluationSession session;
};

TEST_F(FoldExprTest, TheResultEvaluatesAlikeAndReadsTheRangesNoMore) {
  char const* const formulas[] = {
      "A1-AVERAGE($A$1:$A$4)",
      "IF(A1=2,FALSE,A1-MAX($A$1:$A$4))",
      "A1+MAX($A$1:$A$4)*AVERAGE($A$1:$A$4)-1",
      "-SUM($A$1:$A$4)%+A1",
      "SUM(A1,COUNTIF($A$1:$A$4,\">9\"))",
      "SUMPRODUCT(A1*MAX($A$1:$A$4))",
      "SUMPRODUCT(A1*SUMPRODUCT($A$1:$A$4*1))",
      "A1&CONCAT($A$1:$B$2)&CONCAT($A$1:$A$2)",
      "A1-ROUND(AVERAGE($A$1:$A$4)+SUM($A$1:$A$4),0)",
      "A1&(SUM($A$1:$A$4)>10)",
      "A1&(CONCAT($A$1:$A$4)&\"!\"&-MAX($A$1:$A$4)%)",
      "A1-(SUM($A$1:$A$4)+IF(A1>2,SUM($A$1:$A$4)*2,1)^2)",
      "A1&OR(FALSE,SUM($A$1:$A$4)>10)",
      "LET(x,A1,x-SUM($A$1:$A$4))",
      "LET(x,SUM($A$1:$A$4),x+A1)",
      "A1+SUM(List[One])",
      "A1+SUM(($A$1:$A$2,$A$4))",
      "A1+SUM($A$1:$A$4 $A$2:$B$3)",
      "CHOOSE(2,A1,A1+SUM($A$1:$A$4),SUM($A$1:$A$3))",
  };
  for (char const* const formula : formulas) {
    Expr const expr = parseExpr(formula);
    auto const folded = fold(formula);
    ASSERT_TRUE(folded) << formula;
    for (unsigned long row = 0; row < 4; ++row) {
      EXPECT_EQ(calcIn(row, *folded), calcIn(row, expr)) << formula << " in row " << row + 1;
    }
    // In the first row only the calls over the whole range see this.
    std::string const before = calcIn(0, expr);
    document.setColumn("A2", {"20", "30", "40"});
    EXPECT_NE(calcIn(0, expr), before) << formula;
    EXPECT_EQ(calcIn(0, *folded), before) << formula;
    document.setColumn("A2", {"2", "3", "4"});
  }
}

TEST_F(FoldExprTest, AnErrorIsAValueToo) {
  auto const folded = fold("IFERROR(A1+SUM($B$1:$B$4),A1)");
  ASSERT_TRUE(folded);
  EXPECT_EQ(calcIn(1, *folded), "2");
  document.set("B4", "5");
  EXPECT_EQ(calcIn(1, *folded), "2");
  EXPECT_EQ(calcIn(1, parseExpr("IFERROR(A1+SUM($B$1:$B$4),A1)")), "7");
}

TEST_F(FoldExprTest, ACallOfAnotherSheetIsFolded) {
  auto const folded = fold("A1+SUM(Other!$A$1:$A$2)");
  ASSERT_TRUE(folded);
  EXPECT_EQ(calcIn(1, *folded), "11");
  EXPECT_FALSE(folded->getTraits().usesNames);
}

TEST_F(FoldExprTest, WhatIsLeftIsThePlainFormula) {
  auto const nodesOf = [](Expr const& expr) { return expr.getParts().nodes; };
  auto const folded = fold("A1>AVERAGE($A$1:$A$4)");
  ASSERT_TRUE(folded);
  EXPECT_EQ(nodesOf(*folded), nodesOf(parseExpr("A1>2.5")));
  EXPECT_EQ(folded->getTraits(), parseExpr("A1>2.5").getTraits());
  auto const withOperators = fold("A1>10-AVERAGE($A$1:$A$4)*2+SUM($A$1:$A$4)%");
  ASSERT_TRUE(withOperators);
  EXPECT_EQ(nodesOf(*withOperators), nodesOf(parseExpr("A1>5.1")));
  EXPECT_EQ(nodesOf(*fold("A1*2>AVERAGE($A$1:$A$4)")), nodesOf(parseExpr("A1*2>2.5")));
  auto const constant = fold("SUM($A$1:$A$4)");
  ASSERT_TRUE(constant);
  EXPECT_EQ(nodesOf(*constant), nodesOf(parseExpr("10")));
}

TEST_F(FoldExprTest, CallsThatVaryStay) {
  char const* const formulas[] = {
      "1",
      "A1",
      "A1>$A$1",
      "A1>SUM($A$1)",      // reads one cell
      "A1>SUM(A1:A3)",     // moves
      "A1>SUM($A$1:$A3)",  // grows
      "A1>MAX($A$1:$A$4,RAND())",
      "A1>SUM(OFFSET($A$1,0,0,3,1))",
      "A1>SUM(Fixed)",
      "A1>MAX($A$1:$A$4,ROW())",
      "A1>SUM($A$1:INDEX($A$1:$A$4,3))",
      "A1>ABS($A$1:$A$4)",  // takes the cell of the row
      "A1>SUM(@$A$1:$A$4,1)",
      "A1=INDEX($A$1:$A$4,2)",  // gives a reference
      "MATCH(A1,$A$1:$A$4,0)",
      "LET(x,$A$1:$A$4,SUM(x)+A1)",
  };
  for (char const* const formula : formulas) {
    EXPECT_FALSE(fold(formula)) << formula;
  }
}

}  // namespace
}  // namespace Zorv::Formulas
