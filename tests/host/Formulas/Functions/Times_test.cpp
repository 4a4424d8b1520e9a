#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

TEST(Times, TakeTimesApart) {
  FormulaDocument document;
  document.set("B1", "empty");
  expectResults(document, {
                              {"HOUR(0.75)", "18"},
                              {"HOUR(45292.5)", "12"},
                              {"HOUR(\"3:45 PM\")", "15"},
                              {"HOUR(B1)", "0"},
                              {"HOUR(-0.1)", "#NUM!"},
                              {"HOUR(1E300)", "#NUM!"},
                              {"HOUR(\"x\")", "#VALUE!"},
                              {"HOUR(0.999999)", "0"},
                              {"MINUTE(\"12:45:00\")", "45"},
                              {"MINUTE(0.5+59.6/86400)", "1"},
                              {"MINUTE(NA())", "#N/A"},
                              {"SECOND(\"4:48:18 PM\")", "18"},
                              {"SECOND(\"4:48\")", "0"},
                              {"SECOND(59.4/86400)", "59"},
                              {"SECOND(59.6/86400)", "0"},
                              {"SUM(HOUR({0.25,0.5}))", "18"},
                          });
}

TEST(Times, PutTimesTogether) {
  FormulaDocument document;
  expectResults(document, {
                              {"TIME(12,0,0)", "0.5"},
                              {"ROUND(TIME(16,48,10),7)", "0.7001157"},
                              {"TIME(27,0,0)", "0.125"},
                              {"TIME(0,750,0)*1440", "750"},
                              {"TIME(1,-30,0)*48", "1"},
                              {"TIME(12.9,0,0)", "0.5"},
                              {"TIME(-1,0,0)", "#NUM!"},
                              {"TIME(0,0,-1)", "#NUM!"},
                              {"TIME(32768,0,0)", "#NUM!"},
                              {"TIME(-1E300,0,0)", "#NUM!"},
                              {"TIME(\"x\",0,0)", "#VALUE!"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
