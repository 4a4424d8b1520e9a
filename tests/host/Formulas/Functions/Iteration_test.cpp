#include <initializer_list>

#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

class Iteration : public ::testing::Test {
protected:
  Iteration() {
    document.setColumn("A1", {"1", "2", "4"});
    document.setColumn("B1", {"10", "20", "40"});
    document.define("Twice", "LAMBDA(x,x*2)");
  }

  void expectArrays(std::initializer_list<FormulaCase> const& cases) {
    for (FormulaCase const& test : cases) {
      EXPECT_EQ(document.calcArray(test.formula), test.result) << test.formula;
    }
  }

  FormulaDocument document;
};

TEST_F(Iteration, MapCallsForEachElement) {
  expectArrays({
      {"MAP(A1:A3,LAMBDA(x,x+1))", "{2;3;5}"},
      {"MAP(A1:A3,B1:B3,LAMBDA(x,y,x+y))", "{11;22;44}"},
      {"MAP(A1:B2,Twice)", "{2,20;4,40}"},
      {"LET(f,Twice,MAP({1,2},f))", "{2,4}"},
      {"MAP(5,Twice)", "{10}"},
      {"MAP(A1:A3*2,Twice)", "{4;8;16}"},
      {"MAP(A1:A2,A1:A3,LAMBDA(x,y,x+y))", "{2;4;#N/A}"},
      {"MAP(A1:A3,LAMBDA(x,y,x))", "{#VALUE!;#VALUE!;#VALUE!}"},
      {"MAP(A1:A3,1)", "#VALUE!"},
      {"MAP(A1:A3,#N/A)", "#N/A"},
  });
  EXPECT_EQ(document.calc("SUM(MAP(A1:A3*2,Twice))"), "28");
}

TEST_F(Iteration, ReduceAndScanGoOnWithTheResult) {
  expectArrays({
      {"REDUCE(0,A1:B3,LAMBDA(a,x,a+x))", "77"},
      {"REDUCE(\"\",A1:B2,LAMBDA(a,x,a&x))", "\"110220\""},
      {"REDUCE(,A1:A3,LAMBDA(a,x,a+x))", "7"},
      {"REDUCE(1,5,LAMBDA(a,x,a+x))", "6"},
      {"REDUCE(#N/A,A1:A3,LAMBDA(a,x,a+x))", "#N/A"},
      {"REDUCE(0,A1:A3,Twice)", "#VALUE!"},
      {"REDUCE(0,A1:A3,0)", "#VALUE!"},
      {"SCAN(0,A1:A3,LAMBDA(a,x,a+x))", "{1;3;7}"},
      {"SCAN(1,A1:B2,LAMBDA(a,x,a*x))", "{1,10;20,400}"},
      {"SCAN(1,A1:B2,0)", "#VALUE!"},
  });
}

TEST_F(Iteration, LinesAreRowsOrColumns) {
  expectArrays({
      {"BYROW(A1:B3,LAMBDA(r,SUM(r)))", "{11;22;44}"},
      {"BYCOL(A1:B3,LAMBDA(c,MAX(c)))", "{4,40}"},
      {"BYROW({1,2;3,4}*2,LAMBDA(r,SUM(r)))", "{6;14}"},
      {"BYCOL({1,2;3,4},LAMBDA(c,SUM(c*c)))", "{10,20}"},
      {"BYROW(A1:B2,Twice)", "{2;4}"},
      {"BYROW(A1:B2,1)", "#VALUE!"},
      {"BYCOL(#N/A,Twice)", "#N/A"},
  });
}

TEST_F(Iteration, MakeArrayCallsForEachPosition) {
  expectArrays({
      {"MAKEARRAY(2,3,LAMBDA(r,c,r*10+c))", "{11,12,13;21,22,23}"},
      {"MAKEARRAY(1.9,1,LAMBDA(r,c,r))", "{1}"},
      {"MAKEARRAY(0,1,LAMBDA(r,c,r))", "#VALUE!"},
      {"MAKEARRAY(1,-1,LAMBDA(r,c,r))", "#VALUE!"},
      {"MAKEARRAY(1,1,5)", "#VALUE!"},
  });
  expectLimit(document, "MAKEARRAY(1E9,1E9,LAMBDA(r,c,r))", "33554432 values");
  expectLimit(document,
              "REDUCE(0,SEQUENCE(1000,1000)+SEQUENCE(1000),LAMBDA(a,x,SUM(SEQUENCE(99))))",
              "the formula");
}

}  // namespace
}  // namespace Zorv::Formulas
