#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class MathTest : public ::testing::Test {
protected:
  MathTest() { document.setColumn("A1", {"1", "\"2\"", "TRUE", "empty", "4.5"}); }

  FormulaDocument document;
};

TEST_F(MathTest, ModHasTheSignOfTheDivisor) {
  expectResults(document, {
                              {"MOD(7,3)", "1"},
                              {"MOD(-7,3)", "2"},
                              {"MOD(7,-3)", "-2"},
                              {"MOD(-7,-3)", "-1"},
                              {"MOD(6,3)", "0"},
                              {"MOD(-6,3)", "0"},
                              {"MOD(46401,7)", "5"},
                              {"MOD(9007199254740991,10)", "1"},
                              {"MOD(1E300,7)<7", "TRUE"},
                              {"MOD(-0.5,1)", "0.5"},
                              {"MOD(5.5,2)", "1.5"},
                              {"MOD(1,0)", "#DIV/0!"},
                              {"MOD(\"7\",TRUE)", "0"},
                              {"MOD(\"x\",2)", "#VALUE!"},
                              {"MOD(Z9,2)", "0"},
                              {"MOD(#N/A,2)", "#N/A"},
                              {"SUM(MOD({5,6,7},3))", "3"},
                          });
}

TEST_F(MathTest, IntAndAbs) {
  expectResults(document, {
                              {"INT(2.7)", "2"},
                              {"INT(-2.1)", "-3"},
                              {"INT(2.3/0.1)", "23"},
                              {"INT(5)", "5"},
                              {"INT(\"a\")", "#VALUE!"},
                              {"INT(Z9)", "0"},
                              {"ABS(-3)", "3"},
                              {"ABS(3)", "3"},
                              {"ABS(TRUE)", "1"},
                              {"ABS(\"x\")", "#VALUE!"},
                              {"ABS(1/0)", "#DIV/0!"},
                              {"SUM(ABS({-1,2}))", "3"},
                          });
}

TEST_F(MathTest, Rounding) {
  expectResults(document, {
                              {"ROUND(2.5,0)", "3"},           {"ROUND(-2.5,0)", "-3"},
                              {"ROUND(1.005,2)", "1.01"},      {"ROUND(2.4999,0)", "2"},
                              {"ROUND(0.49999999999,0)", "0"}, {"ROUND(1234.5,-2)", "1200"},
                              {"ROUND(1250,-2)", "1300"},      {"ROUND(2.15,1)", "2.2"},
                              {"ROUND(5,-1)", "10"},           {"ROUND(5,-400)", "0"},
                              {"ROUND(5.5,400)", "5.5"},       {"ROUND(1.23456,2.9)", "1.23"},
                              {"ROUND(\"x\",1)", "#VALUE!"},   {"ROUND(1.5,)", "2"},
                              {"ROUNDUP(2.1,0)", "3"},         {"ROUNDUP(-2.1,0)", "-3"},
                              {"ROUNDUP(3,0)", "3"},           {"ROUNDUP(0.123,2)", "0.13"},
                              {"ROUNDUP(31415,-3)", "32000"},  {"ROUNDUP(1.1,1)", "1.1"},
                              {"ROUNDDOWN(2.9,0)", "2"},       {"ROUNDDOWN(-2.9,0)", "-2"},
                              {"ROUNDDOWN(1.15,2)", "1.15"},   {"ROUNDDOWN(31415,-3)", "31000"},
                              {"ROUNDDOWN(#N/A,1)", "#N/A"},
                          });
}

TEST_F(MathTest, FloorAndCeiling) {
  expectResults(document, {
                              {"FLOOR(7,2)", "6"},
                              {"FLOOR(-7,2)", "-8"},
                              {"FLOOR(-7,-2)", "-6"},
                              {"FLOOR(7,-2)", "#NUM!"},
                              {"FLOOR(2.5,0)", "#DIV/0!"},
                              {"FLOOR(0,0)", "0"},
                              {"FLOOR(6,2)", "6"},
                              {"FLOOR(0.7,0.1)", "0.7000000000000001"},
                              {"FLOOR(\"x\",1)", "#VALUE!"},
                              {"CEILING(7,2)", "8"},
                              {"CEILING(-7,2)", "-6"},
                              {"CEILING(-7,-2)", "-8"},
                              {"CEILING(7,-2)", "#NUM!"},
                              {"CEILING(5,0)", "0"},
                              {"CEILING(0,2)", "0"},
                              {"CEILING(6,2)", "6"},
                              {"CEILING(1/0,2)", "#DIV/0!"},
                          });
}

TEST_F(MathTest, SumTakesNumbersOfRangesAndConvertsSingleValues) {
  document.set("C1", "#NUM!");
  expectResults(document, {
                              {"SUM(1,2,3)", "6"},
                              {"SUM(A1:A5)", "5.5"},
                              {"SUM(A2)", "0"},
                              {"SUM(A3)", "0"},
                              {"SUM(\"2\",TRUE)", "3"},
                              {"SUM(\"x\")", "#VALUE!"},
                              {"SUM(1,,2)", "3"},
                              {"SUM(Z1:Z9)", "0"},
                              {"SUM(A1:C1)", "#NUM!"},
                              {"SUM(A:A)", "5.5"},
                              {"SUM((A1,A5,A1:A5))", "11"},
                              {"SUM({1,\"2\",TRUE})", "1"},
                              {"SUM(1E+308,1E+308)", "#NUM!"},
                              {"SUM(A1,1/0)", "#DIV/0!"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
