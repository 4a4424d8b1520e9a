#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class DistributionsTest : public ::testing::Test {
protected:
  FormulaDocument document;
};

TEST_F(DistributionsTest, SharesAndDensities) {
  expectResults(document, {
                              {"ROUND(NORM.DIST(42,40,1.5,TRUE),9)", "0.90878878"},
                              {"ROUND(NORMDIST(42,40,1.5,1),9)", "0.90878878"},
                              {"ROUND(NORM.DIST(42,40,1.5,FALSE),9)", "0.10934005"},
                              {"ROUND(NORM.S.DIST(1.333333,TRUE),9)", "0.908788726"},
                              {"ROUND(NORM.S.DIST(1.333333,FALSE),9)", "0.164010148"},
                              {"ROUND(NORMSDIST(1.333333),9)", "0.908788726"},
                              {"NORMSDIST(0)", "0.5"},
                              {"NORMSDIST(40)", "1"},
                              {"NORMSDIST(-1E300)", "0"},
                              {"NORM.S.DIST(1E300,FALSE)", "0"},
                              {"NORM.DIST(1E308,-1E308,1,TRUE)", "1"},
                              {"NORM.DIST(1,1,1E-320,FALSE)", "#NUM!"},
                          });
}

TEST_F(DistributionsTest, QuantilesAreTheInverse) {
  expectResults(document, {
                              {"ROUND(NORM.INV(0.908789,40,1.5),6)", "42.000002"},
                              {"ROUND(NORMINV(0.908789,40,1.5),6)", "42.000002"},
                              {"ROUND(NORM.S.INV(0.9088),6)", "1.333402"},
                              {"ROUND(NORMSINV(0.975),9)", "1.959963985"},
                              {"NORMSINV(0.5)", "0"},
                              {"ROUND(NORMSINV(1E-300),6)", "-37.047096"},
                              {"ROUND(NORMSDIST(NORMSINV(0.1)),12)", "0.1"},
                              {"NORM.S.INV(0)", "#NUM!"},
                              {"NORM.S.INV(1)", "#NUM!"},
                              {"NORM.S.INV(-1)", "#NUM!"},
                              {"NORM.S.INV(1E300)", "#NUM!"},
                              {"NORM.INV(0.5,40,0)", "#NUM!"},
                              {"NORM.INV(0.9,1E308,1E308)", "#NUM!"},
                          });
}

TEST_F(DistributionsTest, StandardisedNumbers) {
  expectResults(document, {
                              {"ROUND(STANDARDIZE(42,40,1.5),9)", "1.333333333"},
                              {"STANDARDIZE(40,42,2)", "-1"},
                              {"STANDARDIZE(42,40,0)", "#NUM!"},
                              {"STANDARDIZE(42,40,-1)", "#NUM!"},
                              {"STANDARDIZE(1E308,-1E308,1)", "#NUM!"},
                          });
}

TEST_F(DistributionsTest, ConfidenceIsHalfAnInterval) {
  expectResults(document, {
                              {"ROUND(CONFIDENCE(0.05,2.5,50),9)", "0.692951912"},
                              {"ROUND(CONFIDENCE.NORM(0.05,2.5,50.9),9)", "0.692951912"},
                              {"CONFIDENCE.NORM(0,2.5,50)", "#NUM!"},
                              {"CONFIDENCE.NORM(1,2.5,50)", "#NUM!"},
                              {"CONFIDENCE.NORM(0.05,0,50)", "#NUM!"},
                              {"CONFIDENCE.NORM(0.05,2.5,0.5)", "#NUM!"},
                          });
}

TEST_F(DistributionsTest, ArgumentsAreConverted) {
  expectResults(document, {
                              {"NORM.DIST(40,40,0,TRUE)", "#NUM!"},
                              {"NORM.DIST(40,40,-1,TRUE)", "#NUM!"},
                              {"NORM.DIST(\"40\",40,1,TRUE)", "0.5"},
                              {"NORM.DIST(A1,0,1,TRUE)", "0.5"},
                              {"NORM.DIST(\"x\",40,1,TRUE)", "#VALUE!"},
                              {"NORM.DIST(40,40,1,\"x\")", "#VALUE!"},
                              {"NORM.DIST(#N/A,40,1,TRUE)", "#N/A"},
                              {"NORMSINV(\"x\")", "#VALUE!"},
                              {"STANDARDIZE(#REF!,1,1)", "#REF!"},
                          });
  EXPECT_EQ(document.calcArray("NORMSDIST({0,40})"), "{0.5,1}");
}

}  // namespace

}  // namespace Zorv::Formulas
