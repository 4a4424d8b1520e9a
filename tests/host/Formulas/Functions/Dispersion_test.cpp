#include <string>

#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

/// A: breaking strengths; B: numbers of which one is text-like, with a truth value, a gap and an
/// empty text; C: an error; D: nothing.
class DispersionTest : public ::testing::Test {
protected:
  DispersionTest() {
    document.setColumn(
        "A1", {"1345", "1301", "1368", "1322", "1310", "1370", "1318", "1350", "1303", "1299"});
    document.setColumn("B1", {"10", "\"7\"", "TRUE", "empty", "\"\"", "4"});
    document.setColumn("C1", {"1", "#DIV/0!", "#N/A"});
  }

  FormulaDocument document;
};

TEST_F(DispersionTest, VariancesOfSamplesAndPopulations) {
  expectResults(document, {
                              {"ROUND(STDEV(A1:A10),6)", "27.463916"},
                              {"ROUND(STDEV.S(A1:A10),6)", "27.463916"},
                              {"ROUND(STDEVP(A1:A10),6)", "26.054558"},
                              {"ROUND(STDEV.P(A1:A10),6)", "26.054558"},
                              {"ROUND(VAR(A1:A10),6)", "754.266667"},
                              {"ROUND(VAR.S(A1:A10),6)", "754.266667"},
                              {"ROUND(VARP(A1:A10),6)", "678.84"},
                              {"ROUND(VAR.P(A1:A10),6)", "678.84"},
                              {"VAR(B1:B6)", "18"},
                              {"VARP(B1:B6)", "9"},
                              {"VAR(1,2,3)", "1"},
                              {"VAR(1,\"3\")", "2"},
                              {"VAR(1,TRUE)", "0"},
                              {"VAR({1,\"x\",3})", "2"},
                              {"VAR(A1:A10*0)", "0"},
                              {"STDEV(0.1,0.1,0.1)", "0"},
                              {"VAR(A:A)=VAR(A1:A10)", "TRUE"},
                              {"VAR(1E10,1E10+1,1E10+2)", "1"},
                          });
}

TEST_F(DispersionTest, TooFewNumbersDivideByZero) {
  expectResults(document, {
                              {"VAR(1)", "#DIV/0!"},
                              {"STDEV(1)", "#DIV/0!"},
                              {"VARP(1)", "0"},
                              {"STDEVP(1)", "0"},
                              {"VAR(D1:D9)", "#DIV/0!"},
                              {"VARP(D1:D9)", "#DIV/0!"},
                              {"STDEV.P(D1:D9)", "#DIV/0!"},
                              {"VARA(D1:D9)", "#DIV/0!"},
                              {"AVERAGEA(D1:D9)", "#DIV/0!"},
                              {"SKEW(1,2)", "#DIV/0!"},
                              {"SKEW(2,2,2)", "#DIV/0!"},
                              {"KURT(1,2,3)", "#DIV/0!"},
                              {"KURT(2,2,2,2)", "#DIV/0!"},
                          });
}

TEST_F(DispersionTest, ErrorsAndWrongKindsPassThrough) {
  for (std::string const name :
       {"STDEV", "STDEVP", "STDEV.S", "STDEV.P", "STDEVA",   "STDEVPA", "VAR",
        "VARP",  "VAR.S",  "VAR.P",   "VARA",    "VARPA",    "AVEDEV",  "DEVSQ",
        "SKEW",  "KURT",   "GEOMEAN", "HARMEAN", "AVERAGEA", "MAXA",    "MINA"}) {
    EXPECT_EQ(document.calc(name + "(C1:C3)"), "#DIV/0!") << name;
    EXPECT_EQ(document.calc(name + "(1,2,#REF!,4)"), "#REF!") << name;
    EXPECT_EQ(document.calc(name + "(1,2,\"x\",4)"), "#VALUE!") << name;
  }
}

TEST_F(DispersionTest, ResultsAreNeverInfinite) {
  for (std::string const name :
       {"STDEV", "STDEVP", "VAR", "VARP", "DEVSQ", "SKEW", "KURT", "AVERAGEA", "AVEDEV"}) {
    EXPECT_EQ(document.calc(name + "(1E308,-1E308,1.7E308,1.7E308)").substr(0, 1), "#") << name;
  }
}

TEST_F(DispersionTest, TheFormsForAllValuesCountTextsAndTruths) {
  // B counts as 10, 0, 1, 0, 4.
  expectResults(document, {
                              {"AVERAGEA(B1:B6)", "3"},
                              {"VARPA(B1:B6)", "14.4"},
                              {"VARA(B1:B6)", "18"},
                              {"ROUND(STDEVA(B1:B6)^2,9)", "18"},
                              {"ROUND(STDEVPA(B1:B6)^2,9)", "14.4"},
                              {"MAXA(B1:B6)", "10"},
                              {"MINA(B1:B6)", "0"},
                              {"MAXA(B2:B3)", "1"},
                              {"MAXA(D1:D9)", "0"},
                              {"MINA(D1:D9)", "0"},
                              {"MINA(5,7)", "5"},
                              {"MAXA(-5,TRUE)", "1"},
                              {"AVERAGEA(1,\"3\")", "2"},
                              {"AVERAGEA({1,\"x\",TRUE,2})", "1"},
                          });
}

TEST_F(DispersionTest, DistancesFromTheMean) {
  expectResults(document, {
                              {"ROUND(AVEDEV(4,5,6,7,5,4,3),9)", "1.020408163"},
                              {"AVEDEV(7)", "0"},
                              {"AVEDEV(D1:D9)", "#NUM!"},
                              {"DEVSQ(4,5,8,7,11,4,3)", "48"},
                              {"DEVSQ(7)", "0"},
                              {"DEVSQ(D1:D9)", "#NUM!"},
                              {"ROUND(SKEW(3,4,5,2,3,4,5,6,4,7),9)", "0.359543071"},
                              {"ROUND(KURT(3,4,5,2,3,4,5,6,4,7),9)", "-0.151799637"},
                          });
}

TEST_F(DispersionTest, MeansOfPositiveNumbers) {
  expectResults(document, {
                              {"ROUND(GEOMEAN(4,5,8,7,11,4,3),9)", "5.47698697"},
                              {"ROUND(HARMEAN(4,5,8,7,11,4,3),9)", "5.028375962"},
                              {"ROUND(GEOMEAN(1E300,1E300)/1E300,9)", "1"},
                              {"GEOMEAN(1,0)", "#NUM!"},
                              {"GEOMEAN(1,-1)", "#NUM!"},
                              {"GEOMEAN(D1:D9)", "#NUM!"},
                              {"HARMEAN(1,0)", "#NUM!"},
                              {"HARMEAN(1,-1)", "#NUM!"},
                              {"HARMEAN(D1:D9)", "#NUM!"},
                          });
}

TEST_F(DispersionTest, TrimmedMeansLeaveBothEndsOut) {
  expectResults(document, {
                              {"ROUND(TRIMMEAN({4,5,6,7,2,3,4,5,1,2,3},0.2),6)", "3.777778"},
                              {"TRIMMEAN({1,2,3,100},0)", "26.5"},
                              {"TRIMMEAN({1,2,3,100},0.49)", "26.5"},
                              {"TRIMMEAN({1,2,3,100},0.5)", "2.5"},
                              {"TRIMMEAN({1,2,3,100},0.99)", "2.5"},
                              {"TRIMMEAN({1,2,3},1)", "#NUM!"},
                              {"TRIMMEAN({1,2,3},-0.1)", "#NUM!"},
                              {"TRIMMEAN(D1:D9,0.1)", "#NUM!"},
                              {"TRIMMEAN(C1:C3,0.1)", "#DIV/0!"},
                              {"TRIMMEAN({1,2,3},\"x\")", "#VALUE!"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
