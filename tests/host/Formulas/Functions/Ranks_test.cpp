#include <string>

#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

/// A: numbers in no order, one of them twice; B: other kinds among them; C: an error; D: nothing.
class RanksTest : public ::testing::Test {
protected:
  RanksTest() {
    document.setColumn("A1", {"7", "3.5", "3.5", "1", "2"});
    document.setColumn("B1", {"3", "\"9\"", "TRUE", "empty", "1", "2", "4"});
    document.setColumn("C1", {"1", "#DIV/0!", "2"});
  }

  FormulaDocument document;
};

TEST_F(RanksTest, RanksCountFromTheLargestOrTheSmallest) {
  expectResults(document, {
                              {"RANK(7,A1:A5)", "1"},         {"RANK(3.5,A1:A5,1)", "3"},
                              {"RANK(7,A1:A5,1)", "5"},       {"RANK(3.5,A1:A5)", "2"},
                              {"RANK(2,A1:A5)", "4"},         {"RANK(2,A1:A5,)", "4"},
                              {"RANK(2,A1:A5,-3)", "2"},      {"RANK.EQ(3.5,A1:A5)", "2"},
                              {"RANK.AVG(3.5,A1:A5)", "2.5"}, {"RANK.AVG(3.5,A1:A5,1)", "3.5"},
                              {"RANK.AVG(7,A1:A5)", "1"},     {"RANK(3,B1:B7)", "2"},
                              {"RANK(1,B:B)", "4"},           {"RANK(5,A1:A5)", "#N/A"},
                              {"RANK(9,B1:B7)", "#N/A"},      {"RANK(1,D1:D9)", "#N/A"},
                              {"RANK(1,C1:C3)", "#DIV/0!"},   {"RANK(\"x\",A1:A5)", "#VALUE!"},
                              {"RANK(#REF!,A1:A5)", "#REF!"},
                          });
  EXPECT_EQ(document.calcArray("RANK(A1:A5,A1:A5)"), "{1;2;2;5;4}");
}

TEST_F(RanksTest, PercentilesWithBothEnds) {
  expectResults(document, {
                              {"PERCENTILE({1,3,2,4},0.3)", "1.9"},
                              {"PERCENTILE.INC({1,3,2,4},0.3)", "1.9"},
                              {"PERCENTILE({1,3,2,4},0)", "1"},
                              {"PERCENTILE({1,3,2,4},1)", "4"},
                              {"PERCENTILE({1,3,2,4},\"0.5\")", "2.5"},
                              {"PERCENTILE(7,0.3)", "7"},
                              {"PERCENTILE(B1:B7,0.5)", "2.5"},
                              {"PERCENTILE({1,2},-0.1)", "#NUM!"},
                              {"PERCENTILE({1,2},1.1)", "#NUM!"},
                              {"PERCENTILE({1,2},1E300)", "#NUM!"},
                              {"PERCENTILE(D1:D9,0.5)", "#NUM!"},
                              {"PERCENTILE(C1:C3,0.5)", "#DIV/0!"},
                              {"PERCENTILE({1,2},\"x\")", "#VALUE!"},
                          });
  EXPECT_EQ(document.calcArray("PERCENTILE({1,3,2,4},{0,1})"), "{1,4}");
}

TEST_F(RanksTest, PercentilesWithoutTheEnds) {
  expectResults(document, {
                              {"PERCENTILE.EXC({6,7,15,36,39,40,41,42,43,47,49},0.25)", "15"},
                              {"PERCENTILE.EXC({1,2,3},0.25)", "1"},
                              {"PERCENTILE.EXC({1,2,3},0.75)", "3"},
                              {"PERCENTILE.EXC({1,2,3,4},0.3)", "1.5"},
                              {"PERCENTILE.EXC({1,2,3},0.2)", "#NUM!"},
                              {"PERCENTILE.EXC({1,2,3},0.8)", "#NUM!"},
                              {"PERCENTILE.EXC({1,2,3},0)", "#NUM!"},
                              {"PERCENTILE.EXC({1,2,3},1)", "#NUM!"},
                              {"PERCENTILE.EXC(D1:D9,0.5)", "#NUM!"},
                          });
}

TEST_F(RanksTest, Quartiles) {
  expectResults(document, {
                              {"QUARTILE({1,2,4,7,8,9,10,12},1)", "3.5"},
                              {"QUARTILE.INC({1,2,4,7,8,9,10,12},1)", "3.5"},
                              {"QUARTILE({1,2,4,7,8,9,10,12},0)", "1"},
                              {"QUARTILE({1,2,4,7,8,9,10,12},2)", "7.5"},
                              {"QUARTILE({1,2,4,7,8,9,10,12},4)", "12"},
                              {"QUARTILE({1,2,4,7,8,9,10,12},4.9)", "12"},
                              {"QUARTILE({1,2,4,7,8,9,10,12},5)", "#NUM!"},
                              {"QUARTILE({1,2,4,7,8,9,10,12},-1)", "#NUM!"},
                              {"QUARTILE(D1:D9,1)", "#NUM!"},
                              {"QUARTILE(C1:C3,1)", "#DIV/0!"},
                              {"QUARTILE.EXC({6,7,15,36,39,40,41,42,43,47,49},1)", "15"},
                              {"QUARTILE.EXC({6,7,15,36,39,40,41,42,43,47,49},3)", "43"},
                              {"QUARTILE.EXC({6,7,15,36},0)", "#NUM!"},
                              {"QUARTILE.EXC({6,7,15,36},4)", "#NUM!"},
                          });
}

TEST_F(RanksTest, SharesOfNumbersBelow) {
  expectResults(document, {
                              {"PERCENTRANK({13,12,11,8,4,3,2,1,1,1},2)", "0.333"},
                              {"PERCENTRANK({13,12,11,8,4,3,2,1,1,1},4)", "0.555"},
                              {"PERCENTRANK({13,12,11,8,4,3,2,1,1,1},8)", "0.666"},
                              {"PERCENTRANK({13,12,11,8,4,3,2,1,1,1},5)", "0.583"},
                              {"PERCENTRANK.INC({13,12,11,8,4,3,2,1,1,1},2,1)", "0.3"},
                              {"PERCENTRANK({1,2,3},1)", "0"},
                              {"PERCENTRANK({1,2,3},3)", "1"},
                              {"PERCENTRANK({1,2,3},4)", "#N/A"},
                              {"PERCENTRANK({1,2,3},0)", "#N/A"},
                              {"PERCENTRANK({5},5)", "1"},
                              {"PERCENTRANK({1,2,3},2,0)", "#NUM!"},
                              {"PERCENTRANK({1,2,3},2,1E300)", "0.5"},
                              {"PERCENTRANK(D1:D9,1)", "#NUM!"},
                              {"PERCENTRANK(C1:C3,1)", "#DIV/0!"},
                              {"PERCENTRANK.EXC({1,2,3,6,6,6,7,8,9},7)", "0.7"},
                              {"PERCENTRANK.EXC({1,2,3,6,6,6,7,8,9},5.43)", "0.381"},
                              {"PERCENTRANK.EXC({1,2,3,6,6,6,7,8,9},5.43,1)", "0.3"},
                              {"PERCENTRANK.EXC({1,2,3},9)", "#N/A"},
                          });
}

TEST_F(RanksTest, ModesAreTheMostFrequentNumbers) {
  expectResults(document, {
                              {"MODE(5.6,4,4,3,2,4)", "4"},
                              {"MODE.SNGL(1,2,2,1)", "1"},
                              {"MODE(3,2,2,1,3)", "3"},
                              {"MODE(A1:A5)", "3.5"},
                              {"MODE(1,2,3)", "#N/A"},
                              {"MODE(D1:D9)", "#N/A"},
                              {"MODE(C1:C3)", "#DIV/0!"},
                              {"MODE(1,\"x\")", "#VALUE!"},
                              {"MODE(TRUE,1)", "1"},
                              {"MODE({TRUE,1})", "#N/A"},
                          });
  EXPECT_EQ(document.calcArray("MODE.MULT({1,2,3,4,3,2,1,2,3,5,6,1})"), "{1;2;3}");
  EXPECT_EQ(document.calcArray("MODE.MULT({3,3,1})"), "{3}");
  EXPECT_EQ(document.calcArray("MODE.MULT({3,2,1})"), "#N/A");
}

TEST_F(RanksTest, FrequenciesCountUpToEachBound) {
  struct Case {
    std::string formula;
    std::string result;
  };
  Case const cases[] = {
      {"FREQUENCY({79,85,78,85,50,81,95,88,97},{70,79,89})", "{1;2;4;2}"},
      {"FREQUENCY({79,85,78,85,50,81,95,88,97},{89;70;79})", "{4;1;2;2}"},
      {"FREQUENCY({1,2,3},{2,2})", "{2;0;1}"},
      {"FREQUENCY({1,2,3},D1:D9)", "{3}"},
      {"FREQUENCY(D1:D9,{1,2})", "{0;0;0}"},
      {"FREQUENCY(B1:B7,{2})", "{2;2}"},
      {"FREQUENCY(C1:C3,{2})", "#DIV/0!"},
      {"FREQUENCY({1},C1:C3)", "#DIV/0!"},
      {"SUM(--(FREQUENCY({1,1,2,5},{1,1,2,5})>0))", "3"},
  };
  for (Case const& test : cases) {
    EXPECT_EQ(document.calcArray(test.formula), test.result) << test.formula;
  }
}

TEST_F(RanksTest, MoreNumbersThanAFormulaMayTakeMeetALimit) {
  expectLimit(document, "MODE((1:1048576)*1)", "33554432 values");
  expectLimit(document, "PERCENTILE((AA:BZ)*1,0.5)", "33554432 values");
  expectLimit(document, "PERCENTILE((AA:AR)*1,0.5)", "16777216 values");
  EXPECT_EQ(document.calc("MODE((A:A)*1)"), "0");
}

TEST_F(RanksTest, RanksOfLargeAndSmallMayBeArrays) {
  EXPECT_EQ(document.calcArray("LARGE(A1:A5,{1,2,4})"), "{7,3.5,2}");
  EXPECT_EQ(document.calc("SUM(SMALL(A1:A5,{1,2}))"), "3");
  EXPECT_EQ(document.calcArray("SMALL(A1:A5,{0;6})"), "{#NUM!;#NUM!}");
}

}  // namespace

}  // namespace Zorv::Formulas
