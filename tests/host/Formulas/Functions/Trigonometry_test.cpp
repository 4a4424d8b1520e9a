#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

TEST(Trigonometry, MeasuresAngles) {
  FormulaDocument document;
  expectResults(document, {
                              {"SIN(0)", "0"},
                              {"ROUND(SIN(PI()/6),12)", "0.5"},
                              {"ROUND(COS(1.047),7)", "0.5001711"},
                              {"ROUND(COS(PI()),12)", "-1"},
                              {"ROUND(TAN(0.785),5)", "0.9992"},
                              {"ROUND(COT(30),3)", "-0.156"},
                              {"COT(0)", "#DIV/0!"},
                              {"ROUND(SEC(PI()/3),12)", "2"},
                              {"ROUND(CSC(15),3)", "1.538"},
                              {"CSC(0)", "#DIV/0!"},
                              {"SIN(\"x\")", "#VALUE!"},
                              {"SIN(TRUE)=SIN(1)", "TRUE"},
                              {"ROUND(SUM(SIN(PI()*{0,0.5,1})),12)", "1"},
                          });
}

TEST(Trigonometry, FindsAnglesOfValues) {
  FormulaDocument document;
  expectResults(document, {
                              {"ROUND(ASIN(-0.5),9)", "-0.523598776"},
                              {"ASIN(1.01)", "#NUM!"},
                              {"ROUND(ACOS(-0.5),9)", "2.094395102"},
                              {"ACOS(2)", "#NUM!"},
                              {"ROUND(ATAN(1),9)", "0.785398163"},
                              {"ROUND(ATAN2(1,1),9)", "0.785398163"},
                              {"ROUND(ATAN2(-1,-1),8)", "-2.35619449"},
                              {"ROUND(ATAN2(0,5),6)", "1.570796"},
                              {"ATAN2(0,0)", "#DIV/0!"},
                              {"ROUND(ACOT(2),4)", "0.4636"},
                              {"ROUND(ACOT(-1),6)", "2.356194"},
                              {"ROUND(DEGREES(PI()),10)", "180"},
                              {"ROUND(RADIANS(270),6)", "4.712389"},
                              {"DEGREES(1E308)", "#NUM!"},
                          });
}

TEST(Trigonometry, KnowsHyperbolicFunctions) {
  FormulaDocument document;
  expectResults(document, {
                              {"ROUND(SINH(1),9)", "1.175201194"},
                              {"SINH(1000)", "#NUM!"},
                              {"ROUND(COSH(4),6)", "27.308233"},
                              {"ROUND(TANH(-2),6)", "-0.964028"},
                              {"TANH(1E300)", "1"},
                              {"ROUND(COTH(2),4)", "1.0373"},
                              {"COTH(0)", "#DIV/0!"},
                              {"ROUND(SECH(45),3)", "0"},
                              {"ROUND(CSCH(1.5),4)", "0.4696"},
                              {"CSCH(0)", "#DIV/0!"},
                              {"ROUND(ASINH(-2.5),8)", "-1.64723115"},
                              {"ROUND(ACOSH(10),7)", "2.9932228"},
                              {"ACOSH(1)", "0"},
                              {"ACOSH(0.5)", "#NUM!"},
                              {"ROUND(ATANH(0.76159416),6)", "1"},
                              {"ATANH(1)", "#NUM!"},
                              {"ATANH(-1)", "#NUM!"},
                              {"ROUND(ACOTH(6),3)", "0.168"},
                              {"ACOTH(1)", "#NUM!"},
                              {"ACOTH(0)", "#NUM!"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
