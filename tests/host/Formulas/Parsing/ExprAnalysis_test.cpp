#include "Formulas/Parsing/ExprAnalysis.h"

#include <string>

#include <gtest/gtest.h>

#include "Formulas/Functions/BuiltinFunctions.h"
#include "Formulas/Parsing/ParseFormula.h"

namespace Zorv::Formulas {

namespace {

/// The names of the invariant calls of a formula, with an asterisk for those by element.
std::string findCalls(std::string_view formula) {
  auto const expr = parseFormula(formula, builtinFunctions());
  auto const& parts = expr.getParts();
  std::string names;
  for (InnerCall const& call : findInvariantCalls(parts, builtinFunctions())) {
    names += parts.texts[parts.nodes[call.node].index] + (call.isByElement ? "* " : " ");
  }
  return names;
}

TEST(ExprAnalysis, FindsCallsThatAreTheSameForEveryCell) {
  EXPECT_EQ(findCalls("A1>AVERAGE($A$1:$A$9)"), "AVERAGE ");
  EXPECT_EQ(findCalls("SUM($A$1:$A$9)+MAX($B$1:$B$9)"), "MAX SUM ");
  EXPECT_EQ(findCalls("SUM(LEN($A$1:$A$9)*A1)"), "LEN* ");
}

TEST(ExprAnalysis, OfNestedCallsTheOutermostIsFound) {
  EXPECT_EQ(findCalls("ROUND(AVERAGE($A$1:$A$9),2)"), "ROUND ");
  EXPECT_EQ(findCalls("ROUND(AVERAGE($A$1:$A$9),A1)"), "AVERAGE ");
}

TEST(ExprAnalysis, CallsOfCallsAreFoundWithoutARange) {
  EXPECT_EQ(findCalls("A1>ABS(A1)+SUM(SEQUENCE(9)*2)"), "SUM ");
  EXPECT_EQ(findCalls("SUM(SEQUENCE(A1))"), "");
}

TEST(ExprAnalysis, CallsThatMayDifferAreLeftOut) {
  EXPECT_EQ(findCalls("SUM(A1:A9)"), "");
  EXPECT_EQ(findCalls("SUM($A$1:$A$9,RAND())"), "");
  EXPECT_EQ(findCalls("ABS($A$1:$A$9)"), "");
  EXPECT_EQ(findCalls("SUM(Name)"), "");
  EXPECT_EQ(findCalls("LET(x,A1,SUM($A$1:$A$9*x))"), "");
  EXPECT_EQ(findCalls("PI()"), "");
  EXPECT_EQ(findCalls("ABS($A$1)"), "");
}

}  // namespace

}  // namespace Zorv::Formulas
