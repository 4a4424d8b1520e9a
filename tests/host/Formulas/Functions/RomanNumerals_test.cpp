#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

TEST(RomanNumerals, AreWrittenInFiveForms) {
  FormulaDocument document;
  expectResults(document, {
                              {"ROMAN(499,0)", "\"CDXCIX\""},   {"ROMAN(499,1)", "\"LDVLIV\""},
                              {"ROMAN(499,2)", "\"XDIX\""},     {"ROMAN(499,3)", "\"VDIV\""},
                              {"ROMAN(499,4)", "\"ID\""},       {"ROMAN(499,TRUE)", "\"CDXCIX\""},
                              {"ROMAN(499,FALSE)", "\"ID\""},   {"ROMAN(1999)", "\"MCMXCIX\""},
                              {"ROMAN(1999,1)", "\"MLMVLIV\""}, {"ROMAN(1999,2)", "\"MXMIX\""},
                              {"ROMAN(1999,3)", "\"MVMIV\""},   {"ROMAN(1999,4)", "\"MIM\""},
                              {"ROMAN(3999)", "\"MMMCMXCIX\""}, {"ROMAN(0)", "\"\""},
                              {"ROMAN(4000)", "#VALUE!"},       {"ROMAN(-1)", "#VALUE!"},
                              {"ROMAN(1E300)", "#VALUE!"},      {"ROMAN(499,5)", "#VALUE!"},
                              {"ROMAN(499,\"x\")", "#VALUE!"},  {"ROMAN(NA())", "#N/A"},
                          });
}

TEST(RomanNumerals, AreRead) {
  FormulaDocument document;
  expectResults(document, {
                              {"ARABIC(\"LVII\")", "57"},
                              {"ARABIC(\"mcmxii\")", "1912"},
                              {"ARABIC(\" MCMXCIX \")", "1999"},
                              {"ARABIC(\"-XL\")", "-40"},
                              {"ARABIC(\"\")", "0"},
                              {"ARABIC(\"-\")", "#VALUE!"},
                              {"ARABIC(\"ABC\")", "#VALUE!"},
                              {"ARABIC(REPT(\"M\",255))", "255000"},
                              {"ARABIC(REPT(\"M\",256))", "#VALUE!"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
