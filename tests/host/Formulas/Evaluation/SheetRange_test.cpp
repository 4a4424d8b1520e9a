#include "Formulas/Evaluation/SheetRange.h"

#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

/// Four sheets with a number in A1, a power of ten each; a text and a truth value in column B.
class SheetRangeTest : public ::testing::Test {
protected:
  SheetRangeTest() {
    document.addSheet("Sheet2");
    document.addSheet("My Sheet");
    document.addSheet("Last");
    double number = 1.0;
    for (std::size_t index = 0; index < document.getTableCount(); ++index) {
      document.sheet(index).table.setValue(0, 0, FormulaModel::FormulaNumber{FloatNumber(number)});
      number *= 10.0;
    }
    document.sheet(1).table.setValue(0, 1, FormulaModel::FormulaString{"text"});
    document.sheet(2).table.setValue(1, 1, FormulaModel::FormulaBoolean{false});
  }

  FormulaDocument document;
};

TEST_F(SheetRangeTest, FunctionsTakeTheCellsOfEachSheet) {
  expectResults(document, {
                              {"SUM(Sheet1:Last!A1)", "1111"},
                              {"SUM(Sheet2:Last!$A$1)", "1110"},
                              {"SUM('Sheet2:My Sheet'!A1:B2)", "110"},
                              {"SUM(Sheet2:Sheet2!A1)", "10"},
                              {"AVERAGE(Sheet1:Sheet2!A:A)", "5.5"},
                              {"COUNT(Sheet1:Last!A1:B2)", "4"},
                              {"COUNTA(Sheet1:Last!A1:B2)", "6"},
                              {"MAX(Sheet1:Last!A1)-MIN(Sheet1:Last!A1)", "999"},
                              {"PRODUCT(Sheet1:Last!1:1)", "1000000"},
                              {"MEDIAN(Sheet1:Last!A1)", "55"},
                              {"LARGE(Sheet1:Last!A1,2)", "100"},
                              {"SMALL(Sheet1:Last!A1,2)", "10"},
                              {"RANK(100,Sheet1:Last!A1)", "2"},
                              {"VAR(Sheet1:Sheet2!A1)", "40.5"},
                              {"AND(Sheet1:Last!A1)", "TRUE"},
                              {"OR(Sheet1:Last!B2)", "FALSE"},
                              {"TEXTJOIN(\"-\",TRUE,Sheet1:Last!A1:B1)", "\"1-10-text-100-1000\""},
                              {"SUM(Sheet1:Last!A1,Last!A1)", "2111"},
                              {"SHEETS(Sheet2:Last!A1)", "3"},
                          });
}

TEST_F(SheetRangeTest, GoesFromOneSheetToTheOtherInEitherOrderAndCase) {
  expectResults(document, {
                              {"SUM(Last:Sheet1!A1)", "1111"},
                              {"SUM(sheet2:LAST!A1)", "1110"},
                          });
}

TEST_F(SheetRangeTest, IsNoSingleValue) {
  expectResults(document, {
                              {"1+Sheet1:Last!A1", "#VALUE!"},
                              {"ABS(Sheet1:Last!A1)", "#VALUE!"},
                              {"IF(Sheet1:Last!A1,1,2)", "#VALUE!"},
                              {"COUNTIF(Sheet1:Last!A1,1)", "#VALUE!"},
                              {"VLOOKUP(1,Sheet1:Last!A1:B2,1)", "#VALUE!"},
                              {"INDIRECT(\"Sheet1:Last!A1\")", "#REF!"},
                          });
}

TEST_F(SheetRangeTest, NeedsBothSheets) {
  expectResults(document, {
                              {"SUM(Sheet1:Gone!A1)", "#REF!"},
                              {"SUM(Gone:Last!A1)", "#REF!"},
                              {"SUM([1]Sheet1:Last!A1)", "#REF!"},
                              {"SUM(#REF!A1)", "#REF!"},
                              {"Sheet1:Last!Name", "#REF!"},
                          });
}

TEST_F(SheetRangeTest, MovesWithTheCell) {
  for (std::size_t index = 0; index < document.getTableCount(); ++index) {
    document.sheet(index).table.setValue(4, 2, FormulaModel::FormulaNumber{FloatNumber(7.0)});
  }
  document.define("Here", "SUM(Sheet2:Last!A1)");
  EXPECT_EQ(document.calc("Here", "C5"), "21");
}

}  // namespace

}  // namespace Zorv::Formulas
