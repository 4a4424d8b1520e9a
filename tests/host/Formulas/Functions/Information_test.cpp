#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

TEST(Information, TellsTheKindsOfValues) {
  FormulaDocument document;
  document.setColumn("A1", {"empty", "1", "\"text\"", "TRUE", "#N/A", "#REF!", "\"\""});
  expectResults(document, {
                              {"ISBLANK(A1)", "TRUE"},
                              {"ISBLANK(Z99)", "TRUE"},
                              {"ISBLANK(A2)", "FALSE"},
                              {"ISBLANK(A7)", "FALSE"},
                              {"ISBLANK(A5)", "FALSE"},
                              {"ISBLANK(\"\")", "FALSE"},
                              {"ISNUMBER(A2)", "TRUE"},
                              {"ISNUMBER(A3)", "FALSE"},
                              {"ISNUMBER(A4)", "FALSE"},
                              {"ISNUMBER(A1)", "FALSE"},
                              {"ISNUMBER(\"1\")", "FALSE"},
                              {"ISNUMBER(A5)", "FALSE"},
                              {"ISTEXT(A3)", "TRUE"},
                              {"ISTEXT(A7)", "TRUE"},
                              {"ISTEXT(A2)", "FALSE"},
                              {"ISTEXT(A1)", "FALSE"},
                              {"ISNONTEXT(A3)", "FALSE"},
                              {"ISNONTEXT(A1)", "TRUE"},
                              {"ISNONTEXT(A5)", "TRUE"},
                              {"ISLOGICAL(A4)", "TRUE"},
                              {"ISLOGICAL(1=1)", "TRUE"},
                              {"ISLOGICAL(\"TRUE\")", "FALSE"},
                              {"ISERROR(A5)", "TRUE"},
                              {"ISERROR(1/0)", "TRUE"},
                              {"ISERROR(A3)", "FALSE"},
                              {"ISERR(A5)", "FALSE"},
                              {"ISERR(A6)", "TRUE"},
                              {"ISERR(1)", "FALSE"},
                              {"ISNA(A5)", "TRUE"},
                              {"ISNA(A6)", "FALSE"},
                              {"ISNA(NA())", "TRUE"},
                              {"NA()", "#N/A"},
                              {"SUM(--ISNUMBER(A1:A7))", "1"},
                              {"SUM(ISERROR(A1:A7)*1)", "2"},
                          });
  EXPECT_EQ(document.calc("ISTEXT(A1:A7)", "C3"), "TRUE");
  EXPECT_EQ(document.calc("ISERROR(A1:A7)", "C9"), "TRUE");
}

TEST(Information, TellsParity) {
  FormulaDocument document;
  document.set("A1", "empty");
  expectResults(document, {
                              {"ISEVEN(2)", "TRUE"},
                              {"ISEVEN(2.9)", "TRUE"},
                              {"ISEVEN(-3)", "FALSE"},
                              {"ISEVEN(0)", "TRUE"},
                              {"ISEVEN(A1)", "TRUE"},
                              {"ISEVEN(\"4\")", "TRUE"},
                              {"ISEVEN(\"x\")", "#VALUE!"},
                              {"ISODD(-3.5)", "TRUE"},
                              {"ISODD(4)", "FALSE"},
                              {"ISODD(1E+300)", "FALSE"},
                              {"ISODD(1/0)", "#DIV/0!"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
