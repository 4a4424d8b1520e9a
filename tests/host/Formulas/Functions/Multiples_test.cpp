#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

TEST(Multiples, RoundsToWholeNumbers) {
  FormulaDocument document;
  document.set("B1", "empty");
  expectResults(document, {
                              {"TRUNC(8.9)", "8"},
                              {"TRUNC(-8.9)", "-8"},
                              {"TRUNC(0.45)", "0"},
                              {"TRUNC(3.14159,3)", "3.141"},
                              {"TRUNC(-1234,-2)", "-1200"},
                              {"TRUNC(\"a\")", "#VALUE!"},
                              {"TRUNC(B1)", "0"},
                              {"TRUNC(2.3/0.1)", "23"},
                              {"TRUNC(1E300,400)", "1e+300"},
                              {"EVEN(1.5)", "2"},
                              {"EVEN(3)", "4"},
                              {"EVEN(2)", "2"},
                              {"EVEN(-1)", "-2"},
                              {"EVEN(0)", "0"},
                              {"EVEN(TRUE)", "2"},
                              {"ODD(1.5)", "3"},
                              {"ODD(3)", "3"},
                              {"ODD(2)", "3"},
                              {"ODD(-1)", "-1"},
                              {"ODD(-2)", "-3"},
                              {"ODD(0)", "1"},
                              {"ODD(\"x\")", "#VALUE!"},
                          });
}

TEST(Multiples, RoundsToMultiples) {
  FormulaDocument document;
  expectResults(document, {
                              {"MROUND(10,3)", "9"},
                              {"MROUND(-10,-3)", "-9"},
                              {"ROUND(MROUND(1.3,0.2),10)", "1.4"},
                              {"MROUND(5,-2)", "#NUM!"},
                              {"MROUND(7.5,5)", "10"},
                              {"MROUND(5,0)", "0"},
                              {"MROUND(0,-2)", "0"},
                              {"CEILING.MATH(24.3,5)", "25"},
                              {"CEILING.MATH(6.7)", "7"},
                              {"CEILING.MATH(-8.1,2)", "-8"},
                              {"CEILING.MATH(-5.5,2,-1)", "-6"},
                              {"CEILING.MATH(-4.1,,1)", "-5"},
                              {"CEILING.MATH(24.3,-5)", "25"},
                              {"CEILING.MATH(24.3,0)", "0"},
                              {"_xlfn.CEILING.MATH(0.3)", "1"},
                              {"FLOOR.MATH(24.3,5)", "20"},
                              {"FLOOR.MATH(6.7)", "6"},
                              {"FLOOR.MATH(-8.1,2)", "-10"},
                              {"FLOOR.MATH(-5.5,2,-1)", "-4"},
                              {"FLOOR.MATH(-4.1,,1)", "-4"},
                              {"FLOOR.MATH(24.3,0)", "0"},
                              {"CEILING.PRECISE(4.3)", "5"},
                              {"CEILING.PRECISE(-4.3)", "-4"},
                              {"CEILING.PRECISE(4.3,2)", "6"},
                              {"CEILING.PRECISE(4.3,-2)", "6"},
                              {"CEILING.PRECISE(-4.3,2)", "-4"},
                              {"CEILING.PRECISE(4.3,0)", "0"},
                              {"ISO.CEILING(-4.3,-2)", "-4"},
                              {"FLOOR.PRECISE(-3.2,-1)", "-4"},
                              {"FLOOR.PRECISE(3.2,1)", "3"},
                              {"FLOOR.PRECISE(-3.2,1)", "-4"},
                              {"FLOOR.PRECISE(3.2,-1)", "3"},
                              {"FLOOR.PRECISE(3.2,0)", "0"},
                              {"FLOOR.PRECISE(\"x\")", "#VALUE!"},
                          });
}

TEST(Multiples, DividesWholeNumbers) {
  FormulaDocument document;
  document.setColumn("A1", {"24", "36", "\"7\"", "empty", "60"});
  document.set("B1", "#REF!");
  expectResults(document, {
                              {"QUOTIENT(5,2)", "2"},
                              {"QUOTIENT(-10,3)", "-3"},
                              {"QUOTIENT(4.5,3.1)", "1"},
                              {"QUOTIENT(4,0)", "#DIV/0!"},
                              {"QUOTIENT(1E308,1E-308)", "#NUM!"},
                              {"GCD(24,36)", "12"},
                              {"GCD(7.9,1)", "1"},
                              {"GCD(5,0)", "5"},
                              {"GCD(0,0)", "0"},
                              {"GCD(A1:A5)", "12"},
                              {"GCD(-2,4)", "#NUM!"},
                              {"GCD(1E20)", "#NUM!"},
                              {"GCD(\"x\")", "#VALUE!"},
                              {"GCD(4,B1)", "#REF!"},
                              {"LCM(5,2)", "10"},
                              {"LCM(24,36)", "72"},
                              {"LCM(A1:A5)", "360"},
                              {"LCM(5,0)", "0"},
                              {"LCM(-5)", "#NUM!"},
                              {"LCM(9007199254740881,9007199254740879)", "#NUM!"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
