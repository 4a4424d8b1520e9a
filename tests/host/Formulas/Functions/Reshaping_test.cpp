#include <string>

#include <gtest/gtest.h>

#include "Formulas/EvaluationLimitError.h"
#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class ReshapingTest : public ::testing::Test {
protected:
  ReshapingTest() {
    document.setColumn("A1", {"3", "1", "2"});
    document.setColumn("B1", {"\"c\"", "\"a\"", "\"b\""});
    document.setColumn("D1", {"\"b\"", "2", "TRUE", "\"A\"", "#N/A", "empty", "-1"});
  }

  void expectArrays(std::initializer_list<FormulaCase> const& cases) {
    for (FormulaCase const& test : cases) {
      EXPECT_EQ(document.calcArray(test.formula), test.result) << test.formula;
    }
  }

  FormulaDocument document;
};

TEST_F(ReshapingTest, TransposeTurnsRowsIntoColumns) {
  expectArrays({
      {"TRANSPOSE({1,2;3,4;5,6})", "{1,3,5;2,4,6}"},
      {"TRANSPOSE(A1:B3)", "{3,1,2;\"c\",\"a\",\"b\"}"},
      {"TRANSPOSE(A1:A4)", "{3,1,2,empty}"},
      {"TRANSPOSE(7)", "7"},
      {"TRANSPOSE(#N/A)", "#N/A"},
      {"TRANSPOSE((A1,B2))", "#VALUE!"},
      {"SUM(TRANSPOSE(A1:A3)*A1:A3)", "36"},
  });
}

TEST_F(ReshapingTest, FilterKeepsChosenRowsOrColumns) {
  expectArrays({
      {"FILTER(A1:B3,A1:A3>1)", "{3,\"c\";2,\"b\"}"},
      {"FILTER(A1:B3,{0,1})", "{\"c\";\"a\";\"b\"}"},
      {"FILTER(A1:A3,B1:B3=\"A\")", "1"},
      {"FILTER(A1:A3,A1:A3>9)", "#CALC!"},
      {"FILTER(A1:A3,A1:A3>9,)", "#CALC!"},
      {"FILTER(A1:A3,A1:A3>9,\"none\")", "\"none\""},
      {"FILTER(A1:A3,A1:A3>1,1/0)", "{3;2}"},
      {"FILTER(A1:A3,{1;0})", "#VALUE!"},
      {"FILTER(A1:A3,{1;\"x\";0})", "#VALUE!"},
      {"FILTER(A1:A3,{1;#N/A;0})", "#N/A"},
      {"FILTER(#NUM!,{1;0})", "#NUM!"},
      {"FILTER(A1:A3,#REF!)", "#REF!"},
      {"FILTER({1,2,3},{1,0,1})", "{1,3}"},
      {"SUM(FILTER(A:A,A:A>1))", "5"},
      {"ROWS(FILTER(A:A,A:A=0))", "1048573"},
  });
}

TEST_F(ReshapingTest, UniqueKeepsEachLineOnce) {
  expectArrays({
      {"UNIQUE({1;2;1;3;2})", "{1;2;3}"},
      {"UNIQUE({1;2;1;3;2},FALSE,TRUE)", "3"},
      {"UNIQUE({\"a\";\"A\";\"b\"})", "{\"a\";\"b\"}"},
      {"UNIQUE({1;\"1\"})", "{1;\"1\"}"},
      {"UNIQUE({1,2;1,2;1,3})", "{1,2;1,3}"},
      {"UNIQUE({1,2,1},TRUE)", "{1,2}"},
      {"UNIQUE({1,2,1})", "{1,2,1}"},
      {"UNIQUE({1;1},,TRUE)", "#CALC!"},
      {"UNIQUE({#N/A;1;#N/A;#REF!})", "{#N/A;1;#REF!}"},
      {"UNIQUE(7)", "7"},
      {"UNIQUE(#NUM!)", "#NUM!"},
      {"UNIQUE(A:A)", "{3;1;2;empty}"},
      {"UNIQUE(A:A,FALSE,TRUE)", "{3;1;2}"},
  });
}

TEST_F(ReshapingTest, SortPutsLinesInOrder) {
  expectArrays({
      {"SORT(A1:A3)", "{1;2;3}"},
      {"SORT(A1:A3,1,-1)", "{3;2;1}"},
      {"SORT(A1:A3,,-1)", "{3;2;1}"},
      {"SORT(A1:B3,2)", "{1,\"a\";2,\"b\";3,\"c\"}"},
      {"SORT({3,1,2},1,1,TRUE)", "{1,2,3}"},
      {"SORT({3,1,2})", "{3,1,2}"},
      {"SORT({1,2;1,1;0,9},{1,2})", "{0,9;1,1;1,2}"},
      {"SORT({1,2;1,1;0,9},{1,2},{-1,1})", "{1,1;1,2;0,9}"},
      {"SORT(D1:D7)", "{-1;2;\"A\";\"b\";TRUE;#N/A;empty}"},
      {"SORT(D1:D7,1,-1)", "{#N/A;TRUE;\"b\";\"A\";2;-1;empty}"},
      {"SORT({2,\"x\";1,\"y\";2,\"z\"})", "{1,\"y\";2,\"x\";2,\"z\"}"},
      {"SORT(A1:A3,2)", "#VALUE!"},
      {"SORT(A1:A3,0)", "#VALUE!"},
      {"SORT(A1:A3,1E300)", "#VALUE!"},
      {"SORT(A1:A3,1,2)", "#VALUE!"},
      {"SORT(A1:A3,1,{1,1})", "#VALUE!"},
      {"SORT(A1:A3,#NUM!)", "#NUM!"},
      {"SORT(#REF!)", "#REF!"},
      {"SORT(7)", "7"},
      {"INDEX(SORT(A:A),1)", "1"},
  });
}

TEST_F(ReshapingTest, SortByOrdersByWhatStandsBeside) {
  expectArrays({
      {"SORTBY(B1:B3,A1:A3)", "{\"a\";\"b\";\"c\"}"},
      {"SORTBY(B1:B3,A1:A3,-1)", "{\"c\";\"b\";\"a\"}"},
      {"SORTBY({1;2;3},{1;1;0},1,{1;2;3},-1)", "{3;2;1}"},
      {"SORTBY({1;2;3},{1;1;0},1,{1;2;3})", "{3;1;2}"},
      {"SORTBY({1,2,3},{3,2,1})", "{3,2,1}"},
      {"SORTBY({1;2;3},{1;2})", "#VALUE!"},
      {"SORTBY({1;2;3},{1;2;3},0)", "#VALUE!"},
      {"SORTBY({1,2;3,4},{2;1},1,{2,1})", "#VALUE!"},
      {"SORTBY({1;2;3},#N/A)", "#N/A"},
      {"SORTBY(#NUM!,{1;2})", "#NUM!"},
  });
}

TEST_F(ReshapingTest, SequenceCounts) {
  expectArrays({
      {"SEQUENCE(3)", "{1;2;3}"},
      {"SEQUENCE(2,3)", "{1,2,3;4,5,6}"},
      {"SEQUENCE(2,2,10,-5)", "{10,5;0,-5}"},
      {"SEQUENCE(3,,5)", "{5;6;7}"},
      {"SEQUENCE(,2)", "{1,2}"},
      {"SEQUENCE(1)", "1"},
      {"SEQUENCE(2.9)", "{1;2}"},
      {"SEQUENCE(0)", "#CALC!"},
      {"SEQUENCE(-1)", "#VALUE!"},
      {"SEQUENCE(2,1,1E308,1E308)", "{1e+308;#NUM!}"},
      {"SEQUENCE(\"x\")", "#VALUE!"},
      {"SEQUENCE(#N/A)", "#N/A"},
      {"ROWS(SEQUENCE(1048577))", "1048577"},
      {"COLUMNS(SEQUENCE(1,16385))", "16385"},
      {"MEDIAN(SEQUENCE(5000000))", "2500000.5"},
  });
  for (char const* const formula : {"SEQUENCE(1E300)", "SEQUENCE(1E300,1E300)", "SEQUENCE(1,1E18)",
                                    "SUM(SEQUENCE(1048576,16384))"}) {
    EXPECT_THROW(static_cast<void>(document.calc(formula)), EvaluationLimitError) << formula;
  }
}

TEST_F(ReshapingTest, TakeAndDropCutArrays) {
  expectArrays({
      {"TAKE({1,2;3,4;5,6},2)", "{1,2;3,4}"},
      {"TAKE({1,2;3,4;5,6},-1)", "{5,6}"},
      {"TAKE({1,2;3,4;5,6},,1)", "{1;3;5}"},
      {"TAKE({1,2;3,4;5,6},-2,-1)", "{4;6}"},
      {"TAKE({1,2;3,4},9)", "{1,2;3,4}"},
      {"TAKE({1,2;3,4},1E300)", "{1,2;3,4}"},
      {"TAKE({1,2;3,4},0)", "#CALC!"},
      {"TAKE({1,2;3,4},\"x\")", "#VALUE!"},
      {"TAKE(#NUM!,1)", "#NUM!"},
      {"DROP({1,2;3,4;5,6},1)", "{3,4;5,6}"},
      {"DROP({1,2;3,4;5,6},-1)", "{1,2;3,4}"},
      {"DROP({1,2;3,4;5,6},2,1)", "6"},
      {"DROP({1,2;3,4},0)", "{1,2;3,4}"},
      {"DROP({1,2;3,4},2)", "#CALC!"},
      {"DROP({1,2;3,4},-1E300)", "#CALC!"},
  });
  EXPECT_EQ(document.calc("TAKE(A1:B3,-2,1)"), "[0!1,0:3,1]");
  EXPECT_EQ(document.calc("DROP(A1:B3,1)"), "[0!1,0:3,2]");
}

}  // namespace

}  // namespace Zorv::Formulas
