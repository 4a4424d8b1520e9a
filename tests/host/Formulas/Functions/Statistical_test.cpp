#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class StatisticalTest : public ::testing::Test {
protected:
  StatisticalTest() {
    document.setColumn("A1", {"3", "1", "\"7\"", "TRUE", "empty", "\"\"", "2"});
    document.set("B1", "#DIV/0!");
    document.set("B2", "5");
  }

  FormulaDocument document;
};

TEST_F(StatisticalTest, Counts) {
  expectResults(document, {
                              {"COUNT(A1:A7)", "3"},
                              {"COUNT(A:A)", "3"},
                              {"COUNT(A3)", "0"},
                              {"COUNT(\"7\",TRUE,\"x\",)", "3"},
                              {"COUNT(1,2,1/0)", "2"},
                              {"COUNT(B1:B2)", "1"},
                              {"COUNT({1,\"2\",TRUE})", "1"},
                              {"COUNT(Z1:Z9)", "0"},
                              {"COUNTA(A1:A7)", "6"},
                              {"COUNTA(A5)", "0"},
                              {"COUNTA(A:B)", "8"},
                              {"COUNTA(1,\"\",)", "3"},
                              {"COUNTA(B1,1/0)", "2"},
                              {"COUNTA(Z9)", "0"},
                              {"COUNTBLANK(A1:A7)", "2"},
                              {"COUNTBLANK(A1:A10)", "5"},
                              {"COUNTBLANK(A:A)", "1048571"},
                              {"COUNTBLANK(A1)", "0"},
                              {"COUNTBLANK(B1:B3)", "1"},
                              {"COUNTBLANK(5)", "#VALUE!"},
                              {"COUNTBLANK(NoSuchName)", "#NAME?"},
                          });
}

TEST_F(StatisticalTest, AverageMinimumMaximum) {
  expectResults(document, {
                              {"AVERAGE(A1:A7)", "2"},
                              {"AVERAGE(1,2,\"6\")", "3"},
                              {"AVERAGE(2,)", "1"},
                              {"AVERAGE(A3:A6)", "#DIV/0!"},
                              {"AVERAGE(B1:B2)", "#DIV/0!"},
                              {"AVERAGE(\"x\")", "#VALUE!"},
                              {"MIN(A1:A7)", "1"},
                              {"MIN(A1:A7,-4)", "-4"},
                              {"MIN(A3:A6)", "0"},
                              {"MIN(TRUE,5)", "1"},
                              {"MIN(B:B)", "#DIV/0!"},
                              {"MAX(A1:A7)", "3"},
                              {"MAX(-3,-2)", "-2"},
                              {"MAX(Z1:Z2)", "0"},
                              {"MAX({1,9,4})", "9"},
                              {"MAX(\"x\",1)", "#VALUE!"},
                          });
}

TEST_F(StatisticalTest, MedianAndRanks) {
  expectResults(document, {
                              {"MEDIAN(A1:A7)", "2"},
                              {"MEDIAN(1,2,3,10)", "2.5"},
                              {"MEDIAN({5})", "5"},
                              {"MEDIAN(A3:A6)", "#NUM!"},
                              {"MEDIAN(B1:B2)", "#DIV/0!"},
                              {"LARGE(A1:A7,1)", "3"},
                              {"LARGE(A1:A7,3)", "1"},
                              {"LARGE(A1:A7,4)", "#NUM!"},
                              {"LARGE(A1:A7,0)", "#NUM!"},
                              {"LARGE(A1:A7,1.1)", "2"},
                              {"LARGE(A3:A6,1)", "#NUM!"},
                              {"LARGE(B1:B2,1)", "#DIV/0!"},
                              {"LARGE(A1:A7,\"x\")", "#VALUE!"},
                              {"SUM(LARGE(A1:A7,{1,2}))", "5"},
                              {"SMALL(A1:A7,1)", "1"},
                              {"SMALL(A1:A7,3)", "3"},
                              {"SMALL({4,4,1},2)", "4"},
                              {"SMALL(A1:A7,-1)", "#NUM!"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
