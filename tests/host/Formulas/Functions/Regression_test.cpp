#include <string>

#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

/// A and B: seven pairs, A the dependent one; C and D: pairs of which some are incomplete; E: an
/// error; F: nothing.
class RegressionTest : public ::testing::Test {
protected:
  RegressionTest() {
    document.setColumn("A1", {"2", "3", "9", "1", "8", "7", "5"});
    document.setColumn("B1", {"6", "5", "11", "7", "5", "4", "4"});
    document.setColumn("C1", {"1", "\"2\"", "2", "TRUE", "3", "5"});
    document.setColumn("D1", {"10", "99", "20", "99", "30"});
    document.setColumn("E1", {"1", "#DIV/0!", "3", "4", "5", "6", "7"});
  }

  FormulaDocument document;
};

TEST_F(RegressionTest, LinesThroughPairs) {
  expectResults(document, {
                              {"ROUND(SLOPE(A1:A7,B1:B7),9)", "0.305555556"},
                              {"ROUND(INTERCEPT(A1:A7,B1:B7),9)", "3.166666667"},
                              {"ROUND(RSQ(A1:A7,B1:B7),9)", "0.057950192"},
                              {"ROUND(STEYX(A1:A7,B1:B7),9)", "3.30571895"},
                              {"ROUND(FORECAST(30,{6,7,9,15,21},{20,28,31,38,40}),6)", "10.607253"},
                              {"FORECAST.LINEAR(4,{2,4,6},{1,2,3})", "8"},
                              {"STEYX({2,4,6},{1,2,3})", "0"},
                          });
}

TEST_F(RegressionTest, CorrelationAndCovariance) {
  expectResults(document, {
                              {"ROUND(CORREL({3,2,4,5,6},{9,7,12,15,17}),9)", "0.997054486"},
                              {"ROUND(PEARSON({9,7,5,3,1},{10,6,1,5,3}),6)", "0.699379"},
                              {"CORREL({1,2,3},{2,4,6})", "1"},
                              {"CORREL({1,2,3},{6,4,2})", "-1"},
                              {"ROUND(CORREL({1E150,2E150,3E150},{1E150,2E150,3E150}),9)", "1"},
                              {"COVAR({3,2,4,5,6},{9,7,12,15,17})", "5.2"},
                              {"COVARIANCE.P({3,2,4,5,6},{9,7,12,15,17})", "5.2"},
                              {"COVARIANCE.S({3,2,4,5,6},{9,7,12,15,17})", "6.5"},
                              {"CORREL({1E200,2E200,3E200},{1,2,3})", "#NUM!"},
                              {"SLOPE({1,2,3},{1E200,2E200,3E200})", "#NUM!"},
                              {"FORECAST(1,{1,2,3},{1E200,2E200,3E200})", "#NUM!"},
                          });
}

TEST_F(RegressionTest, OnlyPairsOfNumbersCount) {
  expectResults(document, {
                              {"SLOPE(D1:D6,C1:C6)", "10"},
                              {"CORREL(C1:C6,D1:D6)", "1"},
                              {"SLOPE(D:D,C:C)", "10"},
                              {"SLOPE({10;20;30},{1,2,3})", "10"},
                              {"SLOPE(A1:A3*10,A1:A3)", "10"},
                              {"ROUND(COVAR(A:A*1,B:B*1)*1048576/1000,3)", "0.221"},
                          });
}

TEST_F(RegressionTest, TooFewOrEqualNumbersDivideByZero) {
  expectResults(document, {
                              {"SLOPE({1,2},{3,3})", "#DIV/0!"},
                              {"INTERCEPT({1,2},{3,3})", "#DIV/0!"},
                              {"CORREL({1,2},{3,3})", "#DIV/0!"},
                              {"CORREL({3,3},{1,2})", "#DIV/0!"},
                              {"RSQ({3,3},{1,2})", "#DIV/0!"},
                              {"FORECAST(1,{1,2},{3,3})", "#DIV/0!"},
                              {"STEYX({1,2},{3,4})", "#DIV/0!"},
                              {"COVARIANCE.S({1},{2})", "#DIV/0!"},
                              {"COVAR({1},{2})", "0"},
                              {"COVAR(F1:F3,A1:A3)", "#DIV/0!"},
                              {"SLOPE(F1:F3,A1:A3)", "#DIV/0!"},
                          });
}

TEST_F(RegressionTest, WrongArgumentsAreErrors) {
  for (std::string const name : {"CORREL", "PEARSON", "RSQ", "SLOPE", "INTERCEPT", "STEYX", "COVAR",
                                 "COVARIANCE.P", "COVARIANCE.S"}) {
    EXPECT_EQ(document.calc(name + "(A1:A7,B1:B6)"), "#N/A") << name;
    EXPECT_EQ(document.calc(name + "(A1:A7,E1:E7)"), "#DIV/0!") << name;
    EXPECT_EQ(document.calc(name + "(E1:E7,A1:A7)"), "#DIV/0!") << name;
    EXPECT_EQ(document.calc(name + "(#REF!,A1:A7)"), "#REF!") << name;
    EXPECT_EQ(document.calc(name + "(A1:A7,#REF!)"), "#REF!") << name;
    EXPECT_EQ(document.calc(name + "(A1:A7,(B1,B2))"), "#VALUE!") << name;
  }
  EXPECT_EQ(document.calc("FORECAST(\"x\",A1:A7,B1:B7)"), "#VALUE!");
  EXPECT_EQ(document.calc("FORECAST(1,A1:A7,E1:E7)"), "#DIV/0!");
  EXPECT_EQ(document.calc("FORECAST(1,A1:A7,B1:B6)"), "#N/A");
}

}  // namespace

}  // namespace Zorv::Formulas
