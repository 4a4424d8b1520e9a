#include "Formulas/TraceExpr.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/ParseExpr.h"
#include "OfficeUtils/Clock.h"
#include "Utils/WorkBudget.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = TracedValue::Kind;

class TraceExprTest : public testing::Test {
protected:
  TraceExprTest() {
    document.setColumn("A1", {"1", "2", "3", "4"});
    document.setColumn("B1", {"\"x\"", "\"y\"", "empty", "#DIV/0!"});
  }

  /// Traces a formula that is written for the first cell, at a cell of the column A.
  ExprTrace trace(std::string_view formula, int row = 0, TraceLimits const& limits = {}) {
    Context const context(&document.sheet(), RowIndex(static_cast<unsigned long>(row)),
                          ColumnIndex(0), boost::none, DOM::RowID(0), DOM::ColumnID(0));
    return traceExpr(parseExpr(formula), 0, row, context, document, session, limits);
  }

  static std::string describeTraced(TracedValue const& value) {
    switch (value.kind) {
      case Kind::Single:
        return describe(value.value);
      case Kind::Ranges:
        return std::to_string(value.rangeCount) + " ranges";
      case Kind::Function:
        return "function";
      default:
        break;
    }
    std::string text = std::to_string(value.rows) + "x" + std::to_string(value.columns) +
                       (value.kind == Kind::Array ? " array" : " range");
    for (FormulaValue const& element : value.firstValues) {
      text += ' ' + describe(element);
    }
    return text;
  }

  std::vector<std::string> stepsOf(ExprTrace const& traced) {
    std::vector<std::string> steps;
    for (TraceStep const& step : traced.steps) {
      steps.push_back(step.text + ": " + describeTraced(step.value));
    }
    return steps;
  }
  std::vector<std::string> steps(std::string_view formula, int row = 0) {
    return stepsOf(trace(formula, row));
  }

  FormulaDocument document;
  EvaluationSession session;
};

TEST_F(TraceExprTest, TellsSubExpressionsInTheOrderOfEvaluation) {
  EXPECT_THAT(steps("AND(A1<3,B1<>\"\")"),
              ElementsAre("A1: 1", "A1<3: TRUE", "B1: \"x\"", "B1<>\"\": TRUE",
                          "AND(A1<3,B1<>\"\"): TRUE"));
}

TEST_F(TraceExprTest, ShowsTheFormulaAtThePlaceOfTheEvaluation) {
  auto const traced = trace("A1+A$1*2", 2);
  EXPECT_EQ(traced.text, "A3+A$1*2");
  EXPECT_THAT(stepsOf(traced), ElementsAre("A3: 3", "A$1: 1", "A$1*2: 2", "A3+A$1*2: 5"));
  EXPECT_EQ(traced.failure, nullptr);
}

TEST_F(TraceExprTest, LeavesOutWhatIsNotEvaluated) {
  EXPECT_THAT(steps("IF(A1>0,A2,A3/0)"),
              ElementsAre("A1: 1", "A1>0: TRUE", "A2: 2", "IF(A1>0,A2,A3/0): 2"));
  EXPECT_THAT(steps("IFERROR(A1,A2)"), ElementsAre("A1: 1", "IFERROR(A1,A2): 1"));
  EXPECT_THAT(steps("IFERROR(B4,A2)"), ElementsAre("B4: #DIV/0!", "A2: 2", "IFERROR(B4,A2): 2"));
  EXPECT_THAT(steps("CHOOSE(A2,A1,A3,A4)"),
              ElementsAre("A2: 2", "A3: 3", "CHOOSE(A2,A1,A3,A4): 3"));
  EXPECT_THAT(steps("IFS(A1>1,A1,A2>1,A3)"),
              ElementsAre("A1: 1", "A1>1: FALSE", "A2: 2", "A2>1: TRUE", "A3: 3",
                          "IFS(A1>1,A1,A2>1,A3): 3"));
}

TEST_F(TraceExprTest, SumsUpRangesAndArrays) {
  EXPECT_THAT(stepsOf(trace("SUM(A1:B9)", 0, {.firstValues = 3})),
              ElementsAre("A1:B9: 9x2 range 1 \"x\" 2", "SUM(A1:B9): #DIV/0!"));
  EXPECT_THAT(steps("SUM((A1:A2,A4))"), ElementsAre("A1:A2: 2x1 range 1 2", "A4: 4",
                                                    "(A1:A2,A4): 2 ranges", "SUM((A1:A2,A4)): 7"));
  EXPECT_THAT(
      steps("SUMPRODUCT(A1:A3*2)"),
      ElementsAre("A1:A3: 3x1 range 1 2 3", "A1:A3*2: 3x1 array 2 4 6", "SUMPRODUCT(A1:A3*2): 12"));
  auto const range = trace("COUNT(A1:B9)").steps.front().value.reference;
  ASSERT_TRUE(range);
  EXPECT_EQ(range->range, (TableRange{0, 0, 9, 2}));
}

TEST_F(TraceExprTest, TellsTheNamesOfLetAndTheBodiesOfFunctions) {
  EXPECT_THAT(steps("LET(x,A2,x*x+1)"),
              ElementsAre("A2: 2", "x: 2", "x*x: 4", "x*x+1: 5", "LET(x,A2,x*x+1): 5"));
  EXPECT_THAT(steps("LAMBDA(a,a+1)(A3)"),
              ElementsAre("A3: 3", "a: 3", "a+1: 4", "LAMBDA(a,a+1)(A3): 4"));
  EXPECT_THAT(steps("SUM(MAP(A1:A2,LAMBDA(a,a*10)))"),
              ElementsAre("A1:A2: 2x1 range 1 2", "a: 1", "a*10: 10",
                          "MAP(A1:A2,LAMBDA(a,a*10)): 2x1 array 10 20",
                          "SUM(MAP(A1:A2,LAMBDA(a,a*10))): 30"));
}

TEST_F(TraceExprTest, TellsNeitherConstantsNorPlaces) {
  EXPECT_THAT(steps("TRUE"), IsEmpty());
  EXPECT_THAT(steps("-5%"), IsEmpty());
  EXPECT_THAT(steps("ROW(A3)+{1,2}"), ElementsAre("ROW(A3): 3", "ROW(A3)+{1,2}: 1x2 array 4 5"));
}

TEST_F(TraceExprTest, TellsTheFormulasOfDefinedNamesBelowThem) {
  document.define("Rate", "Sheet1!$A$3");
  EXPECT_THAT(steps("Rate*2"), ElementsAre("Sheet1!$A$3: 3", "Rate: 3", "Rate*2: 6"));
  document.define("Twice", "Sheet1!A1+Rate");
  auto const traced = trace("Twice>9", 1);
  EXPECT_THAT(stepsOf(traced), ElementsAre("Sheet1!A2: 2", "Sheet1!$A$3: 3", "Rate: 3",
                                           "Sheet1!A2+Rate: 5", "Twice: 5", "Twice>9: FALSE"));
  std::vector<std::uint32_t> depths;
  for (TraceStep const& step : traced.steps) {
    depths.push_back(step.depth);
  }
  EXPECT_THAT(depths, ElementsAre(3, 4, 3, 2, 1, 0));
}

TEST_F(TraceExprTest, TellsTheBodyOfANameThatIsCalled) {
  document.define("Next", "LAMBDA(x,x+1)");
  EXPECT_THAT(steps("Next(A3)*2"),
              ElementsAre("A3: 3", "x: 3", "x+1: 4", "NEXT(A3): 4", "NEXT(A3)*2: 8"));
}

TEST_F(TraceExprTest, CutsDefinedNamesThatLeadFurtherThanItsLimits) {
  document.define("One", "Sheet1!$A$1+Sheet1!$A$2");
  auto const traced = trace("One+1", 0, {.steps = 2});
  EXPECT_THAT(stepsOf(traced), ElementsAre("One: 3", "One+1: 4"));
  EXPECT_TRUE(traced.isCut);
}

TEST_F(TraceExprTest, TellsEqualSubExpressionsOnce) {
  EXPECT_THAT(steps("A2*A2"), ElementsAre("A2: 2", "A2*A2: 4"));
}

TEST_F(TraceExprTest, TellsWhatIsEvaluatedForEachElementOnce) {
  EXPECT_THAT(steps("LET(f,LAMBDA(row,column,row),SUM(MAKEARRAY(A1:A2,1,f)))", 9),
              testing::Not(testing::Contains(testing::StartsWith(": "))));
  EXPECT_THAT(steps("SUMPRODUCT(LEN(LET(f,LAMBDA(row,column,row),MAKEARRAY({1,2},1,f))))"),
              testing::Contains("f: function").Times(1));
}

TEST_F(TraceExprTest, TellsWhatStandsForADate) {
  OfficeUtils::ScopedClock const clock(OfficeUtils::Clock::TimePoint{});
  auto const traced = trace("AND(TODAY()+30>A1,DATE(2026,1,A2)-TODAY()>1,YEAR(TODAY())>1)");
  std::vector<std::string> dates;
  for (TraceStep const& step : traced.steps) {
    if (step.value.isDate) {
      dates.push_back(step.text);
    }
  }
  EXPECT_THAT(dates, ElementsAre("TODAY()", "TODAY()+30", "DATE(2026,1,A2)"));
}

TEST_F(TraceExprTest, ACellThatShowsADateIsOne) {
  DOM::SharedObjectFactory const factory;
  DOM::CellStyle style;
  style.setCellFormat(std::make_shared<DOM::CellFormat const>(DOM::CellFormat{"yyyy-mm-dd"}));
  document.sheet().table.obtainCell(0, 0).style = factory.create(std::move(style));
  auto const traced = trace("A1+A2");
  EXPECT_TRUE(traced.steps[0].value.isDate);
  EXPECT_FALSE(traced.steps[1].value.isDate);
  EXPECT_TRUE(traced.steps[2].value.isDate);
}

TEST_F(TraceExprTest, IsCutAtItsLimitsFromTheLeavesOn) {
  auto const few = trace("A1+A2*ABS(A3)", 0, {.steps = 3});
  EXPECT_THAT(stepsOf(few), ElementsAre("A1: 1", "A2*ABS(A3): 6", "A1+A2*ABS(A3): 7"));
  EXPECT_TRUE(few.isCut);
  auto const shallow = trace("A1+A2*ABS(A3)", 0, {.depth = 1});
  EXPECT_EQ(stepsOf(shallow), stepsOf(few));
  EXPECT_TRUE(shallow.isCut);
  EXPECT_FALSE(trace("A1+A2*ABS(A3)").isCut);
}

TEST_F(TraceExprTest, TellsTheStepsBeforeALimitOfTheEngine) {
  auto const traced = trace("A1+ROWS(SEQUENCE(1048576,16384))");
  ASSERT_NE(traced.failure, nullptr);
  EXPECT_THAT(stepsOf(traced), ElementsAre("A1: 1"));
}

TEST_F(TraceExprTest, EndsWithItsBudget) {
  WorkBudget budget({.steps = 10});
  EvaluationSession limited;
  limited.setBudget(&budget);
  Context const context(&document.sheet(), RowIndex(0), ColumnIndex(0), boost::none, DOM::RowID(0),
                        DOM::ColumnID(0));
  EXPECT_THROW(static_cast<void>(
                   traceExpr(parseExpr("SUM(SEQUENCE(9999))"), 0, 0, context, document, limited)),
               WorkEnded);
}

/// The observers change no value: the last step is what the plain formula gives.
TEST_F(TraceExprTest, TheWholeFormulaHasItsOwnValue) {
  char const* const formulas[] = {"A1+A2+A3+A4-A1*2",
                                  "IF(A1:A4>2,B1:B2,A1)",
                                  "VLOOKUP(A3,A1:B4,2,FALSE)",
                                  "SUM(A1:INDEX(A1:A4,3))",
                                  "COUNTIF(A1:A4,\">\"&A2)",
                                  "INDEX(A1:B4,A2,2)&OFFSET(A1,1,0)",
                                  "LET(x,A1:A4,SUM(x)+LET(y,A2,y*MAX(x)))",
                                  "SUM(A1:A3 A2:A4)",
                                  "SWITCH(A2,1,\"one\",2,\"two\")",
                                  "A1:A4",
                                  "REDUCE(0,A1:A4,LAMBDA(a,b,a+b))",
                                  "ISREF(A1)&ISREF(A1+1)&ISBLANK(B3)",
                                  "CEILING.MATH(-A3,2,A1)",
                                  "MAX(IF(A1:A4<3,A1:A4))",
                                  "INDIRECT(\"A\"&A2)",
                                  "@A1:A4+1",
                                  "-A1%"};
  for (char const* const formula : formulas) {
    for (int row = 0; row < 4; ++row) {
      Context const context(&document.sheet(), RowIndex(static_cast<unsigned long>(row)),
                            ColumnIndex(0), boost::none, DOM::RowID(0), DOM::ColumnID(0));
      RuntimeDependenciesResolver resolver;
      auto const plain = describe(
          calcShiftedExpr(parseExpr(formula), 0, row, context, document, resolver, session));
      auto const traced = trace(formula, row);
      ASSERT_FALSE(traced.steps.empty()) << formula;
      auto const& last = traced.steps.back().value;
      // Ranges and arrays are told before one value is taken from them.
      if (last.kind == Kind::Single) {
        EXPECT_EQ(describe(last.value), plain) << formula << " in row " << row + 1;
      } else if (last.kind == Kind::Array) {
        EXPECT_EQ(describe(last.firstValues.front()), plain) << formula << " in row " << row + 1;
      } else {
        EXPECT_EQ(last.kind, Kind::Range) << formula;
      }
    }
  }
}

}  // namespace
}  // namespace Zorv::Formulas
