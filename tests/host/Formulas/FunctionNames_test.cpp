#include "Formulas/FunctionNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"

namespace Zorv::Formulas {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FunctionNames, ListsKnownAndUnknownFunctionsOnceEach) {
  auto const names =
      findFunctionNames(parseExpr("sum(1)+_xlfn.XOR(TRUE)+SUM(NoSuch(_xlfn._xlws.OTHER(),1))"));
  EXPECT_THAT(names.known, ElementsAre("SUM", "XOR"));
  EXPECT_THAT(names.unknown, ElementsAre("NOSUCH", "OTHER"));
}

TEST(FunctionNames, AFormulaWithoutCallsHasNone) {
  auto const names = findFunctionNames(parseExpr("A1&\"SUM(1)\""));
  EXPECT_THAT(names.known, IsEmpty());
  EXPECT_THAT(names.unknown, IsEmpty());
}

TEST(FunctionNames, CallsOfFunctionsThatFormulasMakeHaveNoName) {
  auto const names = findFunctionNames(parseExpr("LET(f,LAMBDA(x,x+1),f(2))"));
  EXPECT_THAT(names.known, ElementsAre("LAMBDA", "LET"));
  EXPECT_THAT(names.unknown, IsEmpty());
}

TEST(FunctionNames, OnlyCallsWithoutArgumentsAskForTheirPosition) {
  EXPECT_TRUE(asksPosition(parseExpr("1+ROW()")));
  EXPECT_TRUE(asksPosition(parseExpr("column()")));
  EXPECT_FALSE(asksPosition(parseExpr("ROW(A1)")));
  EXPECT_FALSE(asksPosition(parseExpr("TODAY()+A1")));
}

}  // namespace

}  // namespace Zorv::Formulas
