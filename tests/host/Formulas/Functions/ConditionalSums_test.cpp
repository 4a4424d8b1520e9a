#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class ConditionalSumsTest : public ::testing::Test {
protected:
  ConditionalSumsTest() {
    document.setColumn("A1", {"\"apple\"", "\"Pear\"", "\"apple pie\"", "5", "\"\"", "empty"});
    document.setColumn("B1", {"1", "2", "4", "8", "16", "32"});
    document.setColumn("C1", {"10", "\"10\"", "TRUE", "#N/A"});
    document.set("D1", "#NUM!");
    document.set("E1", "\">3\"");
  }

  FormulaDocument document;
};

TEST_F(ConditionalSumsTest, CountIf) {
  expectResults(document, {
                              {"COUNTIF(A1:A8,\"APPLE\")", "1"},
                              {"COUNTIF(A1:A8,\"apple*\")", "2"},
                              {"COUNTIF(A1:A8,\"=pear\")", "1"},
                              {"COUNTIF(A1:A8,5)", "1"},
                              {"COUNTIF(A1:A8,\"\")", "4"},
                              {"COUNTIF(A1:A8,\"=\")", "3"},
                              {"COUNTIF(A1:A8,\"<>\")", "5"},
                              {"COUNTIF(A1:A8,\"<>apple\")", "7"},
                              {"COUNTIF(A:A,\"<>apple\")", "1048575"},
                              {"COUNTIF(B:B,\">3\")", "4"},
                              {"COUNTIF(B:B,E1)", "4"},
                              {"COUNTIF(B1:B6,Z9)", "0"},
                              {"COUNTIF(C1:C4,10)", "2"},
                              {"COUNTIF(C1:C4,\"10\")", "2"},
                              {"COUNTIF(C1:C4,\">5\")", "1"},
                              {"COUNTIF(C1:C4,TRUE)", "1"},
                              {"COUNTIF(C1:C4,\"true\")", "1"},
                              {"COUNTIF(C1:C4,\"#N/A\")", "1"},
                              {"COUNTIF(C1:C4,NA())", "1"},
                              {"COUNTIF({1,2},1)", "#VALUE!"},
                              {"COUNTIF(NoSuchName,1)", "#NAME?"},
                              {"SUM(COUNTIF(A1:A8,{\"apple\",\"pear\"}))", "2"},
                              {"SUM(COUNTIF(B1:B6,B1:B6))", "6"},
                          });
}

TEST_F(ConditionalSumsTest, CountIfsTakesAllConditions) {
  expectResults(document, {
                              {"COUNTIFS(A1:A6,\"a*\",B1:B6,\">1\")", "1"},
                              {"COUNTIFS(B1:B6,\">1\",A1:A6,\"a*\")", "1"},
                              {"COUNTIFS(B1:B6,\"<>2\",A1:A6,\"<>5\")", "4"},
                              {"COUNTIFS(B1:B8,\"<>2\",A1:A8,\"<>5\")", "6"},
                              {"COUNTIFS(A1:A8,\"\",B1:B8,\"\")", "2"},
                              {"COUNTIFS(A1:A6,\"*\",B1:B5,1)", "#VALUE!"},
                              {"COUNTIFS(B1:B6,\">3\")", "4"},
                          });
}

TEST_F(ConditionalSumsTest, SumIf) {
  expectResults(document, {
                              {"SUMIF(B1:B6,\">3\")", "60"},
                              {"SUMIF(A1:A6,\"apple*\",B1:B6)", "5"},
                              {"SUMIF(A1:A6,\"apple*\",B1)", "5"},
                              {"SUMIF(A:A,\"pear\",B:B)", "2"},
                              {"SUMIF(A1:A6,\"\",B1:B6)", "48"},
                              {"SUMIF(A1:A6,\"none\",B1:B6)", "0"},
                              {"SUMIF(A1:A6,5,B1:B2)", "8"},
                              {"SUMIF(A1:A6,\"apple\",D1)", "#NUM!"},
                              {"SUMIF(A1:A6,\"pear\",D1)", "0"},
                              {"SUMIF(A1:A6,\"apple\",C1)", "10"},
                              {"SUMIF(5,5)", "#VALUE!"},
                              {"SUMIF(A1:A6,\"x\",5)", "#VALUE!"},
                          });
}

TEST_F(ConditionalSumsTest, SumIfsAndItsKin) {
  expectResults(document, {
                              {"SUMIFS(B1:B6,A1:A6,\"a*\",B1:B6,\"<3\")", "1"},
                              {"SUMIFS(B1:B6,A1:A6,\"*\")", "23"},
                              {"SUMIFS(B1:B6,A1:A5,\"*\")", "#VALUE!"},
                              {"SUMIFS(5,A1:A6,\"*\")", "#VALUE!"},
                              {"AVERAGEIF(B1:B6,\">3\")", "15"},
                              {"AVERAGEIF(A1:A6,\"a*\",B1:B6)", "2.5"},
                              {"AVERAGEIF(B1:B6,\">99\")", "#DIV/0!"},
                              {"AVERAGEIFS(B1:B6,A1:A6,\"a*\")", "2.5"},
                              {"AVERAGEIFS(B1:B6,A1:A6,\"none\")", "#DIV/0!"},
                              {"MAXIFS(B1:B6,A1:A6,\"a*\")", "4"},
                              {"MAXIFS(B1:B6,A1:A6,\"none\")", "0"},
                              {"MINIFS(B1:B6,A1:A6,\"a*\")", "1"},
                              {"MINIFS(B1:B6,B1:B6,\">4\",B1:B6,\"<20\")", "8"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
