#include <string>

#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class ReferenceInformationTest : public ::testing::Test {
protected:
  ReferenceInformationTest() {
    document.setColumn("A1", {"7", "\"text\"", "TRUE", "#DIV/0!", "empty"});
    document.sheet().table.obtainCell(0, 0).hasFormula = true;
    document.sheet().table.obtainCell(4, 0).hasFormula = true;
    document.addSheet("Other one");
  }

  FormulaDocument document;
};

TEST_F(ReferenceInformationTest, IsrefTellsReferences) {
  expectResults(document, {
                              {"ISREF(A1)", "TRUE"},
                              {"ISREF(A1:B9)", "TRUE"},
                              {"ISREF((A1,B2))", "TRUE"},
                              {"ISREF(INDIRECT(\"B2\"))", "TRUE"},
                              {"ISREF(INDIRECT(\"no reference\"))", "FALSE"},
                              {"ISREF(7)", "FALSE"},
                              {"ISREF(A1+1)", "FALSE"},
                              {"ISREF({1,2})", "FALSE"},
                              {"ISREF(#REF!)", "FALSE"},
                          });
}

TEST_F(ReferenceInformationTest, IsformulaTellsCellsWithFormulas) {
  expectResults(document, {
                              {"ISFORMULA(A1)", "TRUE"},
                              {"ISFORMULA(A2)", "FALSE"},
                              {"ISFORMULA(A5)", "TRUE"},
                              {"ISFORMULA(Z99)", "FALSE"},
                              {"ISFORMULA(7)", "#VALUE!"},
                              {"ISFORMULA(#NAME?)", "#NAME?"},
                              {"SUM(--ISFORMULA(A1:B5))", "2"},
                              {"SUM(--ISFORMULA(A:A))", "2"},
                          });
}

TEST_F(ReferenceInformationTest, SheetsHaveNumbers) {
  expectResults(document, {
                              {"SHEET()", "1"},
                              {"SHEET(A1)", "1"},
                              {"SHEET('Other one'!A1)", "2"},
                              {"SHEET(\"other ONE\")", "2"},
                              {"SHEET(\"no such\")", "#N/A"},
                              {"SHEET(7)", "#VALUE!"},
                              {"SHEET(#NUM!)", "#NUM!"},
                              {"SHEETS()", "2"},
                              {"SHEETS(A1:B2)", "1"},
                              {"SHEETS(7)", "#VALUE!"},
                          });
}

TEST_F(ReferenceInformationTest, SizesOfRangesAndArrays) {
  expectResults(document, {
                              {"ROWS(A1:B3)", "3"},
                              {"COLUMNS(A1:B3)", "2"},
                              {"ROWS(A:A)", "1048576"},
                              {"COLUMNS(1:1)", "16384"},
                              {"ROWS({1,2;3,4;5,6})", "3"},
                              {"COLUMNS({1,2;3,4;5,6})", "2"},
                              {"ROWS(A1:A3*2)", "3"},
                              {"ROWS(7)", "1"},
                              {"COLUMNS(\"x\")", "1"},
                              {"ROWS(#REF!)", "#REF!"},
                              {"ROWS((A1,B2))", "#VALUE!"},
                              {"AREAS(A1:B3)", "1"},
                              {"AREAS((A1,B2,C3:D4))", "3"},
                              {"AREAS(7)", "#VALUE!"},
                              {"AREAS(#NAME?)", "#NAME?"},
                          });
}

TEST_F(ReferenceInformationTest, HyperlinksShowTheirText) {
  expectResults(document, {
                              {"HYPERLINK(\"http://example.com\",\"text\")", "\"text\""},
                              {"HYPERLINK(\"http://example.com\")", "\"http://example.com\""},
                              {"HYPERLINK(\"#A1\",7)", "7"},
                              {"HYPERLINK(#N/A,\"text\")", "#N/A"},
                          });
}

TEST_F(ReferenceInformationTest, TextsOfFormulasAreNotAvailable) {
  document.set("A1", "7");
  expectResults(document, {
                              {"FORMULATEXT(A1)", "#N/A"},
                              {"FORMULATEXT(7)", "#VALUE!"},
                              {"FORMULATEXT(#REF!)", "#REF!"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
