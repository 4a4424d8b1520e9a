#include "analysis/Tidy/AlwaysError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"

namespace Zorv::Analysis {
namespace {

TEST(AlwaysError, IsAFormulaInWhichAnErrorReachesTheValue) {
  for (char const* formula :
       {"#REF!", "A1<>#REF!", "#REF!=A1", "AND(A1>1,B1<#REF!)", "1+1+#N/A+1", "NOT(#REF!>1)",
        "-#REF!", "(#REF!)", "A1&B1&#VALUE!", "and(TRUE,#REF!)"}) {
    EXPECT_TRUE(isAlwaysError(Formulas::parseExpr(formula))) << formula;
  }
}

TEST(AlwaysError, IsNoFormulaThatMayHandleTheError) {
  for (char const* formula :
       {"A1>1", "IFERROR(#REF!,TRUE)", "ISERROR(A1<>#REF!)", "OR(TRUE,#REF!)", "IF(A1,#REF!,TRUE)",
        "COUNTIF(A:A,#REF!)>0", "SUM(#REF!,1)>0", "\"#REF!\"=A1", "ISERROR(#REF!)=TRUE"}) {
    EXPECT_FALSE(isAlwaysError(Formulas::parseExpr(formula))) << formula;
  }
  EXPECT_FALSE(isAlwaysError(DOM::FormulaSyntaxTree::Expr()));
}

}  // namespace
}  // namespace Zorv::Analysis
