#include "Formulas/FormulaTracer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"
#include "OfficeUtils/Clock.h"
#include "Utils/WorkBudget.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

using testing::Contains;
using testing::HasSubstr;

class FormulaTracerTest : public testing::Test {
protected:
  static constexpr int rows = 6;

  FormulaTracerTest() {
    document.setColumn("A1", {"1", "2", "3", "4", "-5", "2"});
    document.setColumn("B1", {"\"x\"", "\"y\"", "empty", "#DIV/0!", "\"x\"", "TRUE"});
    document.define("Rate", "Sheet1!$A$3");
    document.define("Column", "SUM(Sheet1!$A$1:$A$6)");
  }

  [[nodiscard]] Context contextAt(int row) {
    return {&document.sheet(), RowIndex(static_cast<unsigned long>(row)),
            ColumnIndex(0),    boost::none,
            DOM::RowID(0),     DOM::ColumnID(0)};
  }

  /// Everything that a trace tells, a line for each step.
  static std::vector<std::string> linesOf(ExprTrace const& trace) {
    std::vector<std::string> lines{trace.text + (trace.isCut ? " cut" : "") +
                                   (trace.failure ? " failed" : "")};
    for (TraceStep const& step : trace.steps) {
      TracedValue const& value = step.value;
      std::string line = std::to_string(step.depth) + ' ' + step.text + ": kind " +
                         std::to_string(static_cast<int>(value.kind)) + ' ' +
                         describe(value.value) + (value.isDate ? " date " : " ") +
                         std::to_string(value.rows) + 'x' + std::to_string(value.columns);
      for (FormulaValue const& element : value.firstValues) {
        line += ' ' + describe(element);
      }
      lines.push_back(line + (value.reference ? " reference" : ""));
    }
    return lines;
  }

  FormulaDocument document;
  EvaluationSession session;
};

TEST_F(FormulaTracerTest, TracesManyCellsAsEachByItself) {
  OfficeUtils::ScopedClock const clock(OfficeUtils::Clock::TimePoint{});
  char const* const formulas[] = {
      "A1>AVERAGE($A$1:$A$6)",
      "IF(A1>2,SUM($A$1:$A$6),MAX($A$1:$A$3))+A1",
      "AND(A1>SUM($A$1:$A$6),COUNTA($B$1:$B$6)>1)",
      "A1=MAX(IF($A$1:$A$6<3,$A$1:$A$6))",
      "SUMPRODUCT(($A$1:$A$6>1)*$A$1:$A$6)*A1+SUMPRODUCT($A$1:$A$6*A1)",
      "$A$1+A1*ABS(SUM($A$1,$A$1:$A$6))",
      "IF(A1>0,$A$1,0)+SUM($A$1:$A$2,$A$1)",
      "INDEX($A$1:$A$6,MATCH(\"y\",$B$1:$B$6,0))=A1",
      "SUM($A$1:INDEX($A$1:$A$6,COUNTA($B$1:$B$6)))+A1",
      "A1&INDEX($B$1:$B$6,MATCH(2,$A$1:$A$6,0))&CONCATENATE($B$1,LEFT($B$2,1))",
      "A1+SUM($B$1:$B$6)",
      "A1+SUM(SEQUENCE(3))+MAX(SEQUENCE(2)*A1)",
      "MAP($A$1:$A$2,LAMBDA(x,x+SUM($A$1:$A$6)+A1))",
      "LET(t,SUM($A$1:$A$6),f,LAMBDA(x,x+t+MAX($A$1:$A$6)),f(A1)+f(1))",
      "A1>Rate+Column+SUM($A$1:$A$6)",
      "DATE(2026,1,SUM($A$1:$A$2))+A1>TODAY()",
      "DATE(2026,MIN($A$1:$A$4),1)+SUM($A$1:$A$2)-A1",
      "ROW()+ROWS($A$1:$A$6)+SUM($A$1:$A$6)*COLUMN()",
      "@$A$1:$A$6+SUM($A$1:$A$6)",
      "COUNTIF($A$1:$A$6,A1)+COUNTIF($A$1:$A$6,2)",
      "A1+ROWS(SEQUENCE(1048576,16384))+SUM($A$1:$A$6)",
      "SUM($A$1:$A$6)+A1+ROWS(SEQUENCE(1048576,16384))",
      "IF(A1>1,SUM($A$1:$A$6)+ROWS(SEQUENCE(1048576,16384)),A1)",
      "SUM($A$1:$A$6)",
      "Missing($A$1)+SUM($A$1:$A$6)",
  };
  for (char const* const formula : formulas) {
    auto const expr = parseExpr(formula);
    for (auto const& limits : {TraceLimits(), TraceLimits{.steps = 3}, TraceLimits{.depth = 1}}) {
      FormulaTracer tracer(expr, document, limits);
      for (int visit = 0; visit < 2 * rows; ++visit) {
        int const row = visit % rows;
        auto const shared = linesOf(tracer.trace(0, row, contextAt(row), session));
        EvaluationSession fresh;
        auto const own = linesOf(traceExpr(expr, 0, row, contextAt(row), document, fresh, limits));
        EXPECT_EQ(shared, own) << formula << " in row " << row + 1;
      }
    }
  }
}

/// The steps that the engine takes for so many traces.
TEST_F(FormulaTracerTest, EvaluatesOnceWhatIsTheSameAtEveryCell) {
  struct Case {
    char const* formula;
    bool isShared;
  };
  Case const cases[] = {
      {"A1>SUMPRODUCT($A$1:$A$9000*2)", true},
      {"IF(A1>99,0,A1+SUM(LEN(INDEX($B$1:$B$9000,1)),SUMPRODUCT(LEN($B$1:$B$9000))))", true},
      {"A1>SUMPRODUCT($A$1:$A$9000*A1)", false},
      {"A1>SUMPRODUCT($A$1:$A$9000*RAND())", false},
  };
  for (int row = 0; row < 9'000; ++row) {
    document.sheet().table.setValue(static_cast<unsigned long>(row), 1,
                                    FormulaModel::FormulaString{"text"});
    document.sheet().table.setValue(static_cast<unsigned long>(row), 0,
                                    FormulaModel::FormulaNumber{FloatNumber(row)});
  }
  for (auto const& [formula, isShared] : cases) {
    auto const expr = parseExpr(formula);
    WorkBudget budget({});
    EvaluationSession counted;
    counted.setBudget(&budget);
    FormulaTracer tracer(expr, document);
    static_cast<void>(tracer.trace(0, 0, contextAt(0), counted));
    auto const first = budget.getSteps();
    EXPECT_GT(first, 9'000U) << formula;
    for (int row = 1; row <= 20; ++row) {
      static_cast<void>(tracer.trace(0, row, contextAt(row), counted));
    }
    auto const others = budget.getSteps() - first;
    EXPECT_EQ(others < first, isShared) << formula << ": " << first << ", then " << others;
  }
}

TEST_F(FormulaTracerTest, TracesNothingOfAnEmptyFormula) {
  DOM::FormulaSyntaxTree::Expr const empty;
  auto const trace = FormulaTracer(empty, document).trace(0, 0, contextAt(0), session);
  EXPECT_TRUE(trace.steps.empty());
  EXPECT_EQ(trace.text, "");
}

TEST_F(FormulaTracerTest, KeepsWhatIsKnownWhenItIsMoved) {
  auto const expr = parseExpr("A1&INDEX($B$1:$B$6,2)");
  FormulaTracer first(expr, document);
  static_cast<void>(first.trace(0, 0, contextAt(0), session));
  FormulaTracer second(std::move(first));
  EXPECT_THAT(linesOf(second.trace(0, 1, contextAt(1), session)), Contains(HasSubstr("\"2y\"")));
}

}  // namespace
}  // namespace Zorv::Formulas
