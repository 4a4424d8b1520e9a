#include "Formulas/Evaluation/Lambda.h"

#include <gtest/gtest.h>

#include "Formulas/FormulaParseError.h"
#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"
#include "support/Sanitized.h"

namespace Zorv::Formulas {
namespace {

class LambdaTest : public ::testing::Test {
protected:
  LambdaTest() { document.setColumn("A1", {"1", "2", "4"}); }

  FormulaDocument document;
};

TEST_F(LambdaTest, IsCalledInPlace) {
  expectResults(document, {
                              {"LAMBDA(x,x+1)(1)", "2"},
                              {"_xlfn.LAMBDA(_xlpm.x,_xlpm.x+1)(1)*3", "6"},
                              {"LAMBDA(x,y,x&y)(\"a\",\"b\")", "\"ab\""},
                              {"LAMBDA(7)()", "7"},
                              {"(LAMBDA(x,x+1))(1)", "2"},
                              {"LAMBDA(x,LAMBDA(y,x-y))(5)(2)", "3"},
                              {"SUM(LAMBDA(r,r)(A1:A3))", "7"},
                              {"SUM(LAMBDA(r,r*2)(A1:A3))", "14"},
                              {"LAMBDA(x,IF(x>0,A1:A3,0))(1)", "[0!0,0:3,1]"},
                              {"LAMBDA(x,x)(#N/A)", "#N/A"},
                              {"LAMBDA(x,ISNUMBER(x))(\"1\")", "FALSE"},
                              {"LAMBDA(x,x&\"\")()", "#VALUE!"},
                              {"LAMBDA(x,x+1)(1,2)", "#VALUE!"},
                          });
}

TEST_F(LambdaTest, IsCalledByANameOfLet) {
  expectResults(document, {
                              {"LET(f,LAMBDA(x,x+1),f(1))", "2"},
                              {"LET(f,LAMBDA(x,x+1),f(f(f(1))))", "4"},
                              {"LET(a,10,f,LAMBDA(x,x+a),a,20,f(1))", "11"},
                              {"LET(f,LAMBDA(x,LET(y,x*2,y+x)),f(1)+f(10))", "33"},
                              {"LET(f,LAMBDA(x,x+1),g,LAMBDA(h,h(h(1))),g(f))", "3"},
                              {"LET(sum,LAMBDA(x,y,x*y),sum(3,4))", "12"},
                              {"LET(f,5,f(1))", "#VALUE!"},
                              {"LET(f,#N/A,f(1))", "#N/A"},
                              {"LET(f,LAMBDA(x,f(x)),f(1))", "#NAME?"},
                          });
}

TEST_F(LambdaTest, IsCalledByADefinedName) {
  document.define("Twice", "LAMBDA(x,x*2)");
  document.define("Factorial", "LAMBDA(n,IF(n<2,1,n*Factorial(n-1)))");
  document.define("Beside", "LAMBDA(x,Sheet1!XFD1+x)");
  document.define("Rate", "0.5");
  expectResults(document, {
                              {"Twice(4)", "8"},
                              {"twice(Twice(4))", "16"},
                              {"Factorial(10)", "3628800"},
                              {"Twice(A3)", "8"},
                              {"SUM(Twice(A1:A3))", "14"},
                              {"Rate(1)", "#VALUE!"},
                              {"NoSuch(1)", "#NAME?"},
                          });
  EXPECT_EQ(document.calc("Beside(1)", "B3"), "5");
}

TEST_F(LambdaTest, IsNoValue) {
  document.define("Twice", "LAMBDA(x,x*2)");
  expectResults(document, {
                              {"LAMBDA(x,x+1)", "#CALC!"},
                              {"Twice", "#CALC!"},
                              {"Twice+1", "#CALC!"},
                              {"SUM(Twice)", "#CALC!"},
                              {"COUNTA(Twice,1)", "2"},
                              {"ABS(Twice)", "#CALC!"},
                              {"IF(TRUE,Twice)", "#CALC!"},
                              {"IFERROR(Twice,1)", "1"},
                              {"Twice:A1", "#VALUE!"},
                              {"COUNTIF(Twice,1)", "#CALC!"},
                              {"LAMBDA(1,2)(3)", "#NAME?"},
                          });
  EXPECT_EQ(document.calcArray("Twice"), "#CALC!");
  EXPECT_EQ(document.calcArray("Twice&\"\""), "#CALC!");
}

TEST_F(LambdaTest, RecursionMeetsALimit) {
  document.define("Forever", "LAMBDA(n,Forever(n+1))");
  document.define("Wide", "LAMBDA(n,IF(n=0,1,Wide(n-1)+Wide(n-1)))");
  expectLimit(document, "Forever(1)", "nests deeper than");
  if (!TestSupport::sanitized) {
    expectLimit(document, "Wide(60)", "the formula");
  }
}

TEST_F(LambdaTest, OnlyWhatMayBeAFunctionIsCalled) {
  for (char const* const formula : {"1(2)", "\"a\"(1)", "SUM(1)(2)"}) {
    EXPECT_THROW(static_cast<void>(parseExpr(formula)), FormulaParseError) << formula;
  }
}

}  // namespace
}  // namespace Zorv::Formulas
