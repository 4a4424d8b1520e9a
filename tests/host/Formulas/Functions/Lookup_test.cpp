#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

TEST(Lookup, RowAndColumnTellPlaces) {
  FormulaDocument document;
  expectResults(document, {
                              {"ROW(A5)", "5"},
                              {"COLUMN(C5)", "3"},
                              {"ROW(B2:C4)", "2"},
                              {"COLUMN(B2:C4)", "2"},
                              {"SUM(ROW(B2:C4))", "9"},
                              {"SUM(COLUMN(B2:D4))", "9"},
                              {"SUM(ROW(A1:A3)*COLUMN(A1:B1))", "18"},
                              {"ROW(5)", "#VALUE!"},
                              {"COLUMN(\"A1\")", "#VALUE!"},
                              {"ROW(NoSuchName)", "#NAME?"},
                              {"ROW((A1,B2))", "#VALUE!"},
                          });
  EXPECT_EQ(document.calc("ROW()", "C7"), "7");
  EXPECT_EQ(document.calc("COLUMN()", "C7"), "3");
  EXPECT_EQ(document.calc("MOD(ROW(),2)=0", "C7"), "FALSE");
}

}  // namespace

}  // namespace Zorv::Formulas
