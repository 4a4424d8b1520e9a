#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

TEST(Powers, RaisesAndTakesRoots) {
  FormulaDocument document;
  document.set("B1", "empty");
  expectResults(document, {
                              {"POWER(5,2)", "25"},
                              {"ROUND(POWER(98.6,3.2),3)", "2401077.222"},
                              {"ROUND(POWER(4,5/4),9)", "5.656854249"},
                              {"POWER(2,-1)", "0.5"},
                              {"POWER(0,0)", "#NUM!"},
                              {"POWER(0,-1)", "#DIV/0!"},
                              {"POWER(-8,1/3)", "#NUM!"},
                              {"POWER(-8,3)", "-512"},
                              {"POWER(10,400)", "#NUM!"},
                              {"POWER(B1,2)", "0"},
                              {"POWER(\"x\",2)", "#VALUE!"},
                              {"POWER(1/0,2)", "#DIV/0!"},
                              {"SUM(POWER({1,2,3},2))", "14"},
                              {"SQRT(16)", "4"},
                              {"SQRT(0)", "0"},
                              {"SQRT(-16)", "#NUM!"},
                              {"SQRT(\"16\")", "4"},
                              {"SQRT(TRUE)", "1"},
                              {"SQRT(\"\")", "#VALUE!"},
                              {"ROUND(SQRTPI(2),6)", "2.506628"},
                              {"SQRTPI(-1)", "#NUM!"},
                          });
}

TEST(Powers, TakesLogarithms) {
  FormulaDocument document;
  expectResults(document, {
                              {"EXP(0)", "1"},
                              {"ROUND(EXP(1),8)", "2.71828183"},
                              {"EXP(710)", "#NUM!"},
                              {"EXP(-1000)", "0"},
                              {"ROUND(LN(86),7)", "4.4543473"},
                              {"LN(EXP(3))", "3"},
                              {"LN(0)", "#NUM!"},
                              {"LN(-1)", "#NUM!"},
                              {"LOG(10)", "1"},
                              {"LOG(8,2)", "3"},
                              {"ROUND(LOG(86,2.7182818),7)", "4.4543473"},
                              {"LOG(1000,10)", "3"},
                              {"LOG(0,2)", "#NUM!"},
                              {"LOG(8,0)", "#NUM!"},
                              {"LOG(8,-2)", "#NUM!"},
                              {"LOG(8,1)", "#DIV/0!"},
                              {"LOG10(1E5)", "5"},
                              {"LOG10(0)", "#NUM!"},
                              {"LOG10(\"a\")", "#VALUE!"},
                              {"ROUND(PI(),9)", "3.141592654"},
                              {"SIGN(10)", "1"},
                              {"SIGN(4-4)", "0"},
                              {"SIGN(-0.00001)", "-1"},
                              {"SIGN(NA())", "#N/A"},
                          });
}

TEST(Powers, CountsArrangements) {
  FormulaDocument document;
  document.setColumn("A1", {"2", "3", "\"4\"", "empty", "4"});
  expectResults(document, {
                              {"FACT(5)", "120"},
                              {"FACT(1.9)", "1"},
                              {"FACT(0)", "1"},
                              {"FACT(20)=2432902008176640000", "TRUE"},
                              {"FACT(-1)", "#NUM!"},
                              {"FACT(170)>7E306", "TRUE"},
                              {"FACT(171)", "#NUM!"},
                              {"FACT(1E300)", "#NUM!"},
                              {"FACTDOUBLE(6)", "48"},
                              {"FACTDOUBLE(7)", "105"},
                              {"FACTDOUBLE(0)", "1"},
                              {"FACTDOUBLE(-1)", "1"},
                              {"FACTDOUBLE(-2)", "#NUM!"},
                              {"FACTDOUBLE(1E9)", "#NUM!"},
                              {"COMBIN(8,2)", "28"},
                              {"COMBIN(8.9,2.9)", "28"},
                              {"COMBIN(0,0)", "1"},
                              {"COMBIN(5,5)", "1"},
                              {"COMBIN(52,5)", "2598960"},
                              {"COMBIN(1E15,1)", "1000000000000000"},
                              {"COMBIN(2,3)", "#NUM!"},
                              {"COMBIN(-1,0)", "#NUM!"},
                              {"COMBIN(2,-1)", "#NUM!"},
                              {"COMBIN(1E15,5E14)", "#NUM!"},
                              {"COMBINA(4,3)", "20"},
                              {"COMBINA(10,3)", "220"},
                              {"COMBINA(2,3)", "4"},
                              {"COMBINA(0,0)", "1"},
                              {"COMBINA(0,1)", "#NUM!"},
                              {"COMBINA(-1,1)", "#NUM!"},
                              {"MULTINOMIAL(2,3,4)", "1260"},
                              {"MULTINOMIAL(A1:A5)", "1260"},
                              {"MULTINOMIAL(2,-3)", "#NUM!"},
                              {"MULTINOMIAL(\"x\")", "#VALUE!"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
