// What keeps one evaluation, and all of a session, from taking without end.

#include <cstdint>
#include <stop_token>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/FoldExpr.h"
#include "Formulas/Limits/StepMeter.h"
#include "Formulas/LookupCache.h"
#include "Formulas/ParseExpr.h"
#include "Utils/WorkBudget.h"
#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"
#include "support/Sanitized.h"

namespace Zorv::Formulas {
namespace {

class EvaluationLimits : public ::testing::Test {
protected:
  /// A column A of numbers and a column B of texts, 2,000 of each.
  EvaluationLimits() {
    for (unsigned long row = 0; row < 2000; ++row) {
      document.sheet().table.setValue(row, 0,
                                      FormulaModel::FormulaNumber{FloatNumber(double(row % 7))});
      document.sheet().table.setValue(row, 1, FormulaModel::FormulaString{std::string(400, 'a')});
    }
  }

  CalcResult calcIn(EvaluationSession& session, std::string_view formula) {
    RuntimeDependenciesResolver resolver;
    return calcShiftedExpr(parseExpr(formula), 0, 0, context, document, resolver, session);
  }

  /// The steps that a formula takes.
  std::uint64_t countSteps(std::string_view formula) {
    WorkBudget budget({});
    EvaluationSession session;
    session.setBudget(&budget);
    static_cast<void>(calcIn(session, formula));
    return budget.getSteps();
  }

  FormulaDocument document;
  Context context{&document.sheet(), RowIndex(0),   ColumnIndex(9),
                  boost::none,       DOM::RowID(0), DOM::ColumnID(0)};
};

struct Work {
  std::string_view formula;
  std::uint64_t leastSteps;
};

TEST_F(EvaluationLimits, WorkIsCountedWhereItIsDone) {
  constexpr Work works[] = {
      {"SUM(A:A)", 2000},
      {"SUM(A1:A2000*2)", 6000},
      {"SUMPRODUCT(A1:A2000,A1:A2000,A1:A2000)", 6000},
      {"LET(x,SEQUENCE(1000,1000),SUMPRODUCT(x,x,x,x,x))", 6'000'000},
      {"SUM((A:A,A:A,A:A,A:A,A:A,A:A,A:A,A:A))", 16'000},
      {"COUNT((A:A,A:A,A:A,A:A,A:A,A:A,A:A,A:A))", 16'000},
      {"COUNT((C:C,C:C,C:C,C:C,C:C,C:C,C:C,C:C))", 16'000},
      {"SUM(COUNTIF(A1:A2000,A1:A2000))", 4'000'000},
      {"COUNTIF(B1:B2000,\"*a*a*a*a*b\")", 800'000},
      {"COUNTIF(B1:B2000,\"*aaaaaaaaaaaaaaaaaaaaaaaaaaaaaab\")", 20'000'000},
      {"COUNTIFS(B1:B2000,\"*a*b\",A1:A2000,\">1\")", 800'000},
      {"SUMIF(B1:B2000,\"*a*b\",A1:A2000)", 800'000},
      {"COUNTIF(B1:B2000,5)", 600'000},
      {"IFERROR(MATCH(\"*a*a*a*a*b\",B1:B2000,0),0)", 800'000},
      {"IFERROR(XMATCH(\"*a*b\",B1:B2000,2),0)", 800'000},
      {"IFERROR(SEARCH(REPT(\"*a\",10)&\"b\",REPT(\"a\",30000)),0)", 30'000},
      {"IFERROR(SEARCH(\"*\"&REPT(\"a\",1000)&\"b\",REPT(\"a\",2000)),0)", 900'000},
      {"SUM(--(B1:B2000=B1))", 20'000},
      {"ROWS(SORT(SEQUENCE(100000,1,100000,-1)))", 900'000},
      {"ROWS(SORTBY(A1:A2000,B1:B2000))", 100'000},
      {"ROWS(UNIQUE(B1:B2000))", 100'000},
      {"MODE(A1:A2000)", 20'000},
      {"AGGREGATE(16,6,A1:A2000,0.5)", 20'000},
      {"TRIMMEAN(A1:A2000,0.1)", 20'000},
      {"SUM(FREQUENCY(A1:A2000,A1:A2000))", 20'000},
      {"MEDIAN(SEQUENCE(100000))", 200'000},
      {"CORREL(A1:A2000,A1:A2000)", 16'000},
      {"SUM(LEN(REPT(\"x\",SEQUENCE(1000))))", 500'000},
      {"SUM(LEN(SUBSTITUTE(B1:B2000,\"a\",\"\")))", 20'000},
      {"SUM(LEN(TEXT(SEQUENCE(1000),\"0.00\")))", 100'000},
      {"SUM(LEN(DOLLAR(SEQUENCE(100))))", 1'000'000},
      {"SUM(LEN(UPPER(B1:B2000)))", 800'000},
      {"SUM(COMBIN(SEQUENCE(1000),5))", 1'000'000},
      {"LEN(CONCAT(A1:A2000))", 60'000},
      {"LEN(TEXTJOIN(\",\",TRUE,A1:A2000))", 60'000},
      {"LET(f,LAMBDA(x,SUM(A1:A2000)+x),f(f(f(f(1)))))", 8000},
      {"SUM(ISFORMULA(A1:A2000)*1)", 8000},
  };
  for (Work const& work : works) {
    std::uint64_t const steps = countSteps(work.formula);
    EXPECT_GE(steps, work.leastSteps) << work.formula;
    EXPECT_LE(steps, work.leastSteps * 12 + 5000) << work.formula;
  }
}

TEST_F(EvaluationLimits, OneEvaluationTakesABoundedNumberOfSteps) {
  std::string formula = "LET(x,SEQUENCE(2000,1000),SUMPRODUCT(x";
  for (int i = 1; i < 255; ++i) {
    formula += ",x";
  }
  expectLimit(document, formula + "))", "500000000 steps");
}

TEST_F(EvaluationLimits, TheNextEvaluationStartsAnew) {
  if (TestSupport::sanitized) {
    GTEST_SKIP() << "as many steps as the limit allows take minutes";
  }
  EvaluationSession session;
  std::string const formula = "COUNTIF(B1:B2000,\"*" + std::string(30, 'a') + "b\")";
  std::uint64_t const enough = StepMeter::mostSteps / countSteps(formula) + 1;
  for (std::uint64_t i = 0; i < enough; ++i) {
    EXPECT_EQ(describe(calcIn(session, formula)), "0");
  }
}

TEST_F(EvaluationLimits, UnionsOfUnionsAreBounded) {
  std::string areas = "Sheet1!$A:$A";
  for (int i = 1; i < 100; ++i) {
    areas += ",Sheet1!$A:$A";
  }
  document.define("Many", areas);
  std::string unions = "Many";
  for (int i = 1; i < 100; ++i) {
    unions += ",Many";
  }
  document.define("More", unions);
  document.define("Most", "More,More,More,More,More,More,More");
  EXPECT_EQ(document.calc("AREAS(More)"), "10000");
  expectLimit(document, "SUM(Most)", "65536 areas");
  expectLimit(document, "SUM((More,More,More) (More,More,More))", "500000000 steps");
}

TEST_F(EvaluationLimits, ResultsThatAreTooLargeMeetALimit) {
  EXPECT_THROW(static_cast<void>(document.calcArray("A:E*1")), EvaluationLimitError);
}

TEST_F(EvaluationLimits, ASessionSpendsFromItsBudget) {
  LookupCache cache;
  WorkBudget budget({.steps = 100'000});
  EvaluationSession session(cache);
  session.setBudget(&budget);
  auto const evaluateOften = [&] {
    for (int i = 0; i < 100; ++i) {
      static_cast<void>(calcIn(session, "SUM(A1:A2000*1)"));
    }
  };
  EXPECT_THROW(evaluateOften(), WorkBudgetExceeded);
  EXPECT_THROW(static_cast<void>(calcIn(session, "SUM(A1:A2000*1)")), WorkBudgetExceeded)
      << "and goes on to do so";
}

TEST_F(EvaluationLimits, ARequestToStopEndsAnEvaluation) {
  std::stop_source stop;
  WorkBudget budget({}, stop.get_token());
  EvaluationSession session;
  session.setBudget(&budget);
  EXPECT_EQ(describe(calcIn(session, "SUM(SEQUENCE(10000)*0)")), "0");
  stop.request_stop();
  EXPECT_THROW(static_cast<void>(calcIn(session, "SUM(SEQUENCE(10000)*0)")), WorkStopped);
}

TEST_F(EvaluationLimits, BuildingAnIndexIsCounted) {
  LookupCache cache;
  WorkBudget budget({});
  EvaluationSession session(cache);
  session.setBudget(&budget);
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(describe(calcIn(session, "COUNTIF(A1:A2000,5)")), "285");
  }
  // Three walks at least, until the index pays, and then the index.
  EXPECT_GE(budget.getSteps(), 3 * 2000U + 16 * 2000U);
  EXPECT_LE(budget.getSteps(), 20 * 2000U + 64 * 2000U);
}

TEST_F(EvaluationLimits, FoldingLeavesAloneWhatMeetsALimit) {
  EvaluationSession session;
  EXPECT_FALSE(foldExpr(parseExpr("SUM($A:$XFD*1)+A1"), context, document, session).has_value());
  WorkBudget budget({.steps = 1000});
  EvaluationSession poor;
  poor.setBudget(&budget);
  EXPECT_THROW(static_cast<void>(foldExpr(parseExpr("SUM($A$1:$A$2000)"), context, document, poor)),
               WorkBudgetExceeded);
}

}  // namespace
}  // namespace Zorv::Formulas
