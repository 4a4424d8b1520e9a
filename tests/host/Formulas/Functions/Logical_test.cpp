#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class LogicalTest : public ::testing::Test {
protected:
  LogicalTest() {
    document.setColumn("A1", {"TRUE", "FALSE", "\"text\"", "empty", "5", "0"});
    document.set("B1", "#N/A");
  }

  FormulaDocument document;
};

TEST_F(LogicalTest, AndOrXor) {
  expectResults(document, {
                              {"AND(TRUE,TRUE)", "TRUE"},   {"AND(TRUE,FALSE)", "FALSE"},
                              {"AND(1,2,3)", "TRUE"},       {"AND(1,0)", "FALSE"},
                              {"AND(\"true\")", "TRUE"},    {"AND(\"text\")", "#VALUE!"},
                              {"AND(TRUE,)", "FALSE"},      {"AND(A1:A6)", "FALSE"},
                              {"AND(A1,A5)", "TRUE"},       {"AND(A1,A3)", "TRUE"},
                              {"AND(A3:A4)", "#VALUE!"},    {"AND(Z1:Z9)", "#VALUE!"},
                              {"AND(FALSE,B1)", "#N/A"},    {"AND(TRUE,1/0)", "#DIV/0!"},
                              {"OR(FALSE,FALSE)", "FALSE"}, {"OR(FALSE,A1:A6)", "TRUE"},
                              {"OR(A2,A6)", "FALSE"},       {"OR(TRUE,B1)", "#N/A"},
                              {"OR(A3)", "#VALUE!"},        {"OR({FALSE,FALSE,1})", "TRUE"},
                              {"XOR(TRUE,TRUE)", "FALSE"},  {"XOR(TRUE,TRUE,TRUE)", "TRUE"},
                              {"XOR(A1:A6)", "FALSE"},      {"XOR(FALSE)", "FALSE"},
                              {"XOR(A3)", "#VALUE!"},
                          });
}

TEST_F(LogicalTest, NotAndConstants) {
  expectResults(document, {
                              {"NOT(TRUE)", "FALSE"},
                              {"NOT(0)", "TRUE"},
                              {"NOT(A4)", "TRUE"},
                              {"NOT(Z9)", "TRUE"},
                              {"NOT(\"FALSE\")", "TRUE"},
                              {"NOT(\"text\")", "#VALUE!"},
                              {"NOT(B1)", "#N/A"},
                              {"TRUE()", "TRUE"},
                              {"FALSE()", "FALSE"},
                          });
}

TEST_F(LogicalTest, IfEvaluatesTheChosenArgumentOnly) {
  expectResults(document, {
                              {"IF(TRUE,1,2)", "1"},
                              {"IF(FALSE,1,2)", "2"},
                              {"IF(A5>3,\"more\",\"less\")", "\"more\""},
                              {"IF(TRUE,1,1/0)", "1"},
                              {"IF(FALSE,1/0,2)", "2"},
                              {"IF(TRUE,5)", "5"},
                              {"IF(FALSE,5)", "FALSE"},
                              {"IF(TRUE)", "TRUE"},
                              {"IF(FALSE,5,)", "0"},
                              {"IF(TRUE,,2)", "0"},
                              {"IF(A4,1,2)", "2"},
                              {"IF(\"text\",1,2)", "#VALUE!"},
                              {"IF(\"TRUE\",1,2)", "1"},
                              {"IF(B1,1,2)", "#N/A"},
                              {"IF(TRUE,A4)", "empty"},
                              {"SUM(IF({TRUE,FALSE,TRUE},{1,2,3},10))", "14"},
                              {"SUM(IF({1,0},5))", "5"},
                              {"IF({#N/A,TRUE},1,2)", "#N/A"},
                          });
}

TEST_F(LogicalTest, IfErrorReplacesErrors) {
  expectResults(document, {
                              {"IFERROR(1/0,7)", "7"},
                              {"IFERROR(3,1/0)", "3"},
                              {"IFERROR(B1,\"none\")", "\"none\""},
                              {"IFERROR(\"text\",1)", "\"text\""},
                              {"IFERROR(A4,1)", "empty"},
                              {"IFERROR(1/0,)", "0"},
                              {"IFERROR(,1)", "0"},
                              {"IFERROR(1/0,1/0)", "#DIV/0!"},
                              {"SUM(IFERROR({1,#N/A,3},10))", "14"},
                              {"IFNA(#N/A,5)", "5"},
                              {"IFNA(1/0,5)", "#DIV/0!"},
                              {"IFNA(4,5)", "4"},
                          });
}

TEST_F(LogicalTest, LetGivesNames) {
  expectResults(document, {
                              {"LET(x,5,x+1)", "6"},
                              {"_xlfn.LET(_xlpm.x,2,_xlpm.y,_xlpm.x*3,_xlpm.x+_xlpm.y)", "8"},
                              {"LET(x,1,LET(x,2,x)+x)", "3"},
                              {"LET(x,1,y,LET(x,x+1,x*10),x+y)", "21"},
                              {"LET(X,3,x)", "3"},
                              {"LET(x,A1:A6,COUNTA(x))", "5"},
                              {"LET(x,5,x)+x", "#NAME?"},
                              {"LET(1,2,3)", "#NAME?"},
                              {"LET(x,1/0,1)", "1"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
