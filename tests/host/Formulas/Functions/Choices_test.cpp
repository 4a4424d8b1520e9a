#include <string>

#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class ChoicesTest : public ::testing::Test {
protected:
  ChoicesTest() {
    document.setColumn("A1", {"1", "2", "3", "\"x\"", "#N/A"});
    document.setColumn("B1", {"10", "20", "30"});
  }

  FormulaDocument document;
};

TEST_F(ChoicesTest, IfsTakesTheFirstConditionThatHolds) {
  expectResults(document, {
                              {"IFS(TRUE,1,TRUE,2)", "1"},
                              {"IFS(FALSE,1,2>1,\"b\")", "\"b\""},
                              {"IFS(0,1,A2,2)", "2"},
                              {"IFS(\"true\",1)", "1"},
                              {"IFS(FALSE,1)", "#N/A"},
                              {"IFS(C1,1)", "#N/A"},
                              {"IFS(TRUE,)", "0"},
                              {"IFS(A5,1,TRUE,2)", "#N/A"},
                              {"IFS(TRUE,1,A5,2)", "1"},
                              {"IFS(TRUE,1,1/0,2)", "1"},
                              {"IFS(\"maybe\",1,TRUE,2)", "#VALUE!"},
                              {"IFS(TRUE,B1:B3)", "[0!0,1:3,2]"},
                              {"SUM(IFS(TRUE,B1:B3))", "60"},
                              {"_xlfn.IFS(TRUE,7)", "7"},
                          });
}

TEST_F(ChoicesTest, IfsChoosesForEachElement) {
  EXPECT_EQ(document.calcArray("IFS(A1:A3=1,\"one\",A1:A3=2,B1:B3,TRUE,0)"), "{\"one\";20;0}");
  EXPECT_EQ(document.calcArray("IFS(FALSE,1,A1:A5>2,A1:A5)"), "{#N/A;#N/A;3;\"x\";#N/A}");
  EXPECT_EQ(document.calc("SUM(IFS({1,0,1},{1,2,4},TRUE,100))"), "105");
}

TEST_F(ChoicesTest, SwitchTakesTheResultOfTheEqualValue) {
  expectResults(document, {
                              {"SWITCH(2,1,\"a\",2,\"b\",3,\"c\")", "\"b\""},
                              {"SWITCH(\"B\",\"a\",1,\"b\",2)", "2"},
                              {"SWITCH(9,1,\"a\",\"none\")", "\"none\""},
                              {"SWITCH(9,1,\"a\",2,\"b\")", "#N/A"},
                              {"SWITCH(9,1,\"a\",)", "0"},
                              {"SWITCH(\"1\",1,\"number\",\"text\")", "\"text\""},
                              {"SWITCH(TRUE,A1>1,\"x\",A2>1,\"y\")", "\"y\""},
                              {"SWITCH(C1,0,\"zero\",\"other\")", "\"zero\""},
                              {"SWITCH(A5,1,2,3)", "#N/A"},
                              {"SWITCH(1,A5,2,3)", "#N/A"},
                              {"SWITCH(1,1,5,A5,2)", "5"},
                              {"SWITCH(1,1,B1:B3)", "[0!0,1:3,2]"},
                          });
}

TEST_F(ChoicesTest, SwitchChoosesForEachElement) {
  EXPECT_EQ(document.calcArray("SWITCH(A1:A3,1,\"a\",3,B1:B3,\"-\")"), "{\"a\";\"-\";30}");
  EXPECT_EQ(document.calcArray("SWITCH(2,A1:A3,\"hit\",\"-\")"), "{\"-\";\"hit\";\"-\"}");
  EXPECT_EQ(document.calcArray("SWITCH({7,2},1,\"a\",2,\"b\")"), "{#N/A,\"b\"}");
}

TEST_F(ChoicesTest, ChooseTakesTheChoiceOfANumber) {
  expectResults(document, {
                              {"CHOOSE(1,\"a\",\"b\")", "\"a\""},
                              {"CHOOSE(2,\"a\",\"b\")", "\"b\""},
                              {"CHOOSE(2.9,\"a\",\"b\")", "\"b\""},
                              {"CHOOSE(\"2\",\"a\",\"b\")", "\"b\""},
                              {"CHOOSE(TRUE,\"a\",\"b\")", "\"a\""},
                              {"CHOOSE(1,,2)", "0"},
                              {"CHOOSE(0,1,2)", "#VALUE!"},
                              {"CHOOSE(0.9,1,2)", "#VALUE!"},
                              {"CHOOSE(3,1,2)", "#VALUE!"},
                              {"CHOOSE(-1,1,2)", "#VALUE!"},
                              {"CHOOSE(1E300,1,2)", "#VALUE!"},
                              {"CHOOSE(\"x\",1,2)", "#VALUE!"},
                              {"CHOOSE(A5,1,2)", "#N/A"},
                              {"CHOOSE(1,5,1/0)", "5"},
                              {"CHOOSE(2,5,1/0)", "#DIV/0!"},
                              {"CHOOSE(2,A1:A3,B1:B3)", "[0!0,1:3,2]"},
                              {"SUM(A1:CHOOSE(2,A2,A3))", "6"},
                          });
  EXPECT_EQ(document.calcArray("CHOOSE({1,2},A1:A3,B1:B3)"), "{1,10;2,20;3,30}");
  EXPECT_EQ(document.calcArray("CHOOSE({1,4},\"a\",\"b\")"), "{\"a\",#VALUE!}");
}

TEST_F(ChoicesTest, LetNamesValues) {
  expectResults(document, {
                              {"LET(x,2,x*x)", "4"},
                              {"LET(x,2,y,x+1,x*y)", "6"},
                              {"LET(x,A1:A3,SUM(x))", "6"},
                              {"LET(_xlpm.x,2,_xlpm.X+1)", "3"},
                              {"LET(x,1/0,1)", "1"},
                              {"LET(x,1/0,x)", "#DIV/0!"},
                              {"LET(1,2,3)", "#NAME?"},
                              // Cells and columns are no names, with a prefix they are.
                              {"LET(A2,5,A2)", "#NAME?"},
                              {"LET(_xlpm.A2,5,_xlpm.a2+A2)", "7"},
                              {"LET(a,5,a*2)", "10"},
                              {"LET(a,5,b,6,COLUMNS(a:b))", "2"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
