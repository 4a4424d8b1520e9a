#include "Formulas/WriteExpr.h"

#include <string>

#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"
#include "Formulas/ShiftExpr.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

TEST(WriteExpr, WritesWhatIsReadAsTheSameFormula) {
  char const* const formulas[] = {
      "1", "-1", "--1", "1.5", "1E+20", "0.1", "\"a\"", "\"say \"\"so\"\"\"", "\"\"", "TRUE",
      "FALSE", "#N/A", "#REF!", "{1,2;3,4}", "{-1,\"a\",TRUE,#N/A}",
      // References.
      "A1", "$B$7", "A$1:$C9", "B2:A1", "A:C", "$A:B", "3:$5", "$A:$XFD", "XFD1048576", "Sheet1!A1",
      "'My sheet'!A1:B2", "'It''s'!A1", "#REF!A1", "[1]Sheet1!A1", "Jan:Mar!A1", "Rate",
      "Sheet1!Rate", "'My sheet'!A:A", "Sheet1!$3:$5", "Sales[Amount]", "Sales[]", "Sales[#All]",
      "Sales[[#Headers],[Amount]:[Total]]", "[@Amount]", "Sales[@]", "Sales[[#Data],[#Totals]]",
      "Sales[[#Headers],[#Data],[A]]", "Sales[[#Headers],[#This Row],[A]]", "Sales[Total Amount]",
      "Sales['#Items]", "Sales[a'[b]",
      // Operators and what they bind.
      "1+2*3", "(1+2)*3", "1-(2-3)", "1-2-3", "2^3^2", "2^(3^2)", "-2^2", "-(2^2)", "(-2)^2",
      "2^-1", "5%", "5%%", "(-5)%", "-5%", "(1+2)%", "A1&B1=C1", "(A1=B1)=C1", "A1=(B1=C1)",
      "A1<>\"\"", "A1<=B1", "A1>=B1", "+A1", "A1&(B1&C1)", "1/(2*3)", "A1:B2 B1:C3", "Rate (2)",
      "Rate (#REF!)", "A:A 1:1", "A1:(A1:A9)", "INDEX(A1:A9,2):(A1):B2", "(A1,B2)",
      "SUM((A1,B2),C3)", "(A1,B2) A1:C3", "A1:INDEX(B1:B9,2)", "@A1:A9", "A1#", "@A1#", "-@A1:A3",
      "@Sales[Amount]", "(A1:A3 A2:A4):B7",
      // Names that would be cells, columns, rows or sheets beside a colon without parentheses.
      "NU:(c)", "Rate:NU:(c)", "NU:(T(1))", "NU:(c#)", "NU:(c[x])", "NU:(1):(2)", "A1:(ABCD1)",
      "(ABCD1):A1", "(@ABCD1):A1", "Jan:(Mar!Rate)", "A1:(B1!Rate)", "LET(c,A1,NU:(c))",
      "NU:(1.5):Rate",
      // Calls.
      "TODAY()", "IF(A1,,2)", "IF(A1>1,\"yes\",SUM(B1:B3))", "NOSUCHFUNCTION(1,A1)", "LET(x,5,x+1)",
      "LET(x,5,y,x*2,x+y)", "LAMBDA(x,x+1)(2)", "LET(f,LAMBDA(a,b,a*b),f(2,3))",
      "LAMBDA(x,LAMBDA(y,x+y))(1)(2)"};
  for (std::string const formula : formulas) {
    auto const expr = parseExpr(formula);
    EXPECT_EQ(parseExpr(writeExpr(expr)), expr) << formula << " became " << writeExpr(expr);
  }
}

TEST(WriteExpr, LeavesOutWhatChangesNothing) {
  struct Case {
    char const* formula;
    char const* text;
  };
  for (Case const& c :
       {Case{"= and( ((A1)) > 1 , B1 )", "AND(A1>1,B1)"}, Case{"(1*2)+(3)", "1*2+3"},
        Case{"_xlfn.LET(_xlpm.x,5,_xlpm.x)", "LET(x,5,x)"},
        Case{"Sales[[Amount]]", "Sales[Amount]"}, Case{"1e5", "100000"}, Case{"(A1:B2)", "A1:B2"},
        Case{"-(-1)", "--1"}, Case{"((A1,B1))", "(A1,B1)"}}) {
    EXPECT_EQ(writeExpr(parseExpr(c.formula)), c.text) << c.formula;
  }
}

TEST(WriteExpr, KeepsPrefixesBeforeWhatIsNoName) {
  struct Case {
    char const* formula;
    char const* text;
  };
  for (Case const& c : {Case{"_xlfn.03TE(1)", "_XLFN.03TE(1)"}, Case{"_xlfn..X(1)", "_XLFN..X(1)"},
                        Case{"_xlws._xlfn._xlfn.FOO(1)", "FOO(1)"},
                        Case{"LET(_xlpm.1x,5,_xlpm.1x)", "LET(_xlpm.1x,5,_xlpm.1x)"},
                        Case{"LET(_xlpm._xlpm.x,5,x)", "LET(x,5,x)"}}) {
    auto const written = writeExpr(parseExpr(c.formula));
    EXPECT_EQ(written, c.text) << c.formula;
    EXPECT_EQ(writeExpr(parseExpr(written)), written) << c.formula;
  }
}

TEST(WriteExpr, CallsFunctionsThatLocalNamesHide) {
  struct Case {
    char const* formula;
    char const* text;
  };
  for (Case const& c : {Case{"LET(sum,1,_xlfn.SUM(sum,2))", "LET(sum,1,_xlfn.SUM(sum,2))"},
                        Case{"LET(x,,Sheet1!X())", "LET(x,,_xlfn.X())"},
                        Case{"LET(x,1,_xlfn.x,2,Sheet1!X())", "LET(x,1,_xlfn.x,2,_xlfn._xlfn.X())"},
                        Case{"LET(f,LAMBDA(x,x),f(2))", "LET(f,LAMBDA(x,x),f(2))"}}) {
    EXPECT_EQ(writeExpr(parseExpr(c.formula)), c.text);
    EXPECT_EQ(writeExpr(parseExpr(c.text)), c.text);
  }
}

TEST(WriteExpr, ShowsAFormulaAtAnotherCell) {
  FormulaDocument document;
  auto const shifted = shiftExpr(parseExpr("AND(D4<TODAY(),$D4<>\"\",A$1:B9)"), document.sheet(), 2,
                                 3, FormulaModel::DocTableIndex(0), true);
  EXPECT_EQ(writeExpr(*shifted), "AND(F7<TODAY(),$D7<>\"\",C$1:D12)");
}

TEST(WriteExpr, GoesAlongLongChainsWithoutRecursion) {
  std::string chain = "A1";
  while (chain.size() < 8000) {
    chain += "+A1";
  }
  EXPECT_EQ(writeExpr(parseExpr(chain)), chain);
}

TEST(WriteExpr, WritesNothingForTheEmptyFormula) {
  EXPECT_EQ(writeExpr(DOM::FormulaSyntaxTree::Expr()), "");
}

}  // namespace
}  // namespace Zorv::Formulas
