#include <string>

#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class AddressingTest : public ::testing::Test {
protected:
  AddressingTest() {
    document.setColumn("A1", {"1", "2", "3"});
    document.setColumn("B1", {"10", "20", "30"});
    document.setColumn("C1", {"100", "200", "300"});
    document.addSheet("It's");
    document.sheet(1).table.setValue(1, 1, FormulaModel::FormulaNumber{FloatNumber(77)});
    document.define("numbers", "$A$1:$A$3");
    document.define("seven", "7");
    document.define("itself", "INDIRECT(\"itself\")");
    document.addList({"Sales", FormulaModel::DocTableIndex(0), {0, 0, 3, 2}, 1, 0, {"Id", "Sum"}});
  }

  FormulaDocument document;
};

TEST_F(AddressingTest, IndexTakesCellsRowsAndColumns) {
  expectResults(document, {
                              {"INDEX(A1:C3,2,3)", "200"},
                              {"INDEX(A1:C3,2,0)", "[0!1,0:2,3]"},
                              {"INDEX(A1:C3,2)", "[0!1,0:2,3]"},
                              {"INDEX(A1:C3,,2)", "[0!0,1:3,2]"},
                              {"INDEX(A1:C3,0,0)", "[0!0,0:3,3]"},
                              {"INDEX(A1:A3,2)", "2"},
                              {"INDEX(A1:C1,2)", "10"},
                              {"INDEX(A1:C1,1,2)", "10"},
                              {"INDEX(A1:C3,2.9,3.9)", "200"},
                              {"INDEX(A1:C3,4,1)", "#REF!"},
                              {"INDEX(A1:C3,1,4)", "#REF!"},
                              {"INDEX(A1:C3,-1,1)", "#VALUE!"},
                              {"INDEX(A1:C3,1E300,1)", "#REF!"},
                              {"INDEX(A1:C3,\"x\",1)", "#VALUE!"},
                              {"INDEX(A:A,3)", "3"},
                              {"INDEX(A1:C3,9)", "#REF!"},
                              {"INDEX(#NUM!,1)", "#NUM!"},
                              {"INDEX(7,1)", "7"},
                              {"INDEX(7,2)", "#REF!"},
                              {"SUM(INDEX(A1:C3,0,2))", "60"},
                              {"SUM(A1:INDEX(A1:A3,2))", "3"},
                              {"SUM(INDEX(A1:A3*10,0))", "60"},
                              {"INDEX({1,2;3,4},2,1)", "3"},
                          });
  EXPECT_EQ(document.calcArray("INDEX({1,2;3,4},2,0)"), "{3,4}");
  EXPECT_EQ(document.calcArray("INDEX({1,2;3,4},0,2)"), "{2;4}");
  EXPECT_EQ(document.calcArray("INDEX(A1:A3,{3,1})"), "{3,1}");
}

TEST_F(AddressingTest, IndexSelectsOneOfSeveralAreas) {
  expectResults(document, {
                              {"INDEX((A1:A3,B1:B3),2,1,2)", "20"},
                              {"INDEX((A1:A3,B1:B3),2)", "2"},
                              {"INDEX((A1:A3,B1:B3),2,1,3)", "#REF!"},
                              {"INDEX((A1:A3,B1:B3),2,1,0)", "#REF!"},
                              {"INDEX(A1:A3,2,1,2)", "#REF!"},
                          });
}

TEST_F(AddressingTest, OffsetMovesAndResizes) {
  expectResults(document, {
                              {"OFFSET(A1,1,2)", "200"},
                              {"OFFSET(A1,0,0)", "1"},
                              {"OFFSET(A1:B2,1,1)", "[0!1,1:3,3]"},
                              {"OFFSET(A1,1,1,2,2)", "[0!1,1:3,3]"},
                              {"OFFSET(C3,0,0,-2,-2)", "[0!1,1:3,3]"},
                              {"OFFSET(A1:B2,1,1,,1)", "[0!1,1:3,2]"},
                              {"OFFSET(A1,,1)", "10"},
                              {"OFFSET(A1,1.9,0)", "2"},
                              {"OFFSET(C3,-1,-1)", "20"},
                              {"SUM(OFFSET(A1,0,0,3,2))", "66"},
                              {"OFFSET(A1,-1,0)", "#REF!"},
                              {"OFFSET(A1,0,-1)", "#REF!"},
                              {"OFFSET(A1,1048576,0)", "#REF!"},
                              {"OFFSET(A1,0,16384)", "#REF!"},
                              {"OFFSET(A1,1E300,0)", "#REF!"},
                              {"OFFSET(A1,0,0,0)", "#REF!"},
                              {"OFFSET(A1,0,0,1,0)", "#REF!"},
                              {"OFFSET(A1,0,0,1E300)", "#REF!"},
                              {"OFFSET(A1,0,0,-2)", "#REF!"},
                              {"OFFSET(A1,\"x\",0)", "#VALUE!"},
                              {"OFFSET(A1,0,0,\"x\")", "#VALUE!"},
                              {"OFFSET(7,0,0)", "#VALUE!"},
                              {"OFFSET(#NAME?,0,0)", "#NAME?"},
                              {"OFFSET('It''s'!A1,1,1)", "77"},
                          });
  EXPECT_EQ(document.calcArray("OFFSET(A1,{0;1;2},0)"), "{1;2;3}");
}

TEST_F(AddressingTest, IndirectReadsReferences) {
  expectResults(document, {
                              {"INDIRECT(\"B2\")", "20"},
                              {"INDIRECT(\"$b$2\")", "20"},
                              {"INDIRECT(\"B\"&2)", "20"},
                              {"INDIRECT(\"A1:B2\")", "[0!0,0:2,2]"},
                              {"INDIRECT(\"A:A\")", "[0!0,0:1048576,1]"},
                              {"INDIRECT(\"2:3\")", "[0!1,0:3,16384]"},
                              {"INDIRECT(\"'It''s'!B2\")", "77"},
                              {"INDIRECT(\"Sheet1!C3\")", "300"},
                              {"INDIRECT(\"numbers\")", "[0!0,0:3,1]"},
                              {"SUM(INDIRECT(\"Sales[Sum]\"))", "50"},
                              {"SUM(INDIRECT(\"B1:B\"&A2))", "30"},
                              {"INDIRECT(\"B2\",TRUE)", "20"},
                          });
}

TEST_F(AddressingTest, IndirectReadsR1C1) {
  expectResults(document, {
                              {"INDIRECT(\"R2C2\",FALSE)", "20"},
                              {"INDIRECT(\"r2c2\",)", "20"},
                              {"INDIRECT(\"R1C1:R2C2\",FALSE)", "[0!0,0:2,2]"},
                              {"INDIRECT(\"R2C2:R1C1\",FALSE)", "[0!0,0:2,2]"},
                              {"INDIRECT(\"R2\",FALSE)", "[0!1,0:2,16384]"},
                              {"INDIRECT(\"C2:C3\",FALSE)", "[0!0,1:1048576,3]"},
                              {"INDIRECT(\"'It''s'!R2C2\",FALSE)", "77"},
                              {"INDIRECT(\"Sheet1!R3C3\",FALSE)", "300"},
                              {"INDIRECT(\"R0C1\",FALSE)", "#REF!"},
                              {"INDIRECT(\"R1048577C1\",FALSE)", "#REF!"},
                              {"INDIRECT(\"R1C16385\",FALSE)", "#REF!"},
                              {"INDIRECT(\"R99999999999999999999C1\",FALSE)", "#REF!"},
                              {"INDIRECT(\"R[99999999999999999999]C1\",FALSE)", "#REF!"},
                              {"INDIRECT(\"R[1C1\",FALSE)", "#REF!"},
                              {"INDIRECT(\"R[]C1\",FALSE)", "#REF!"},
                              {"INDIRECT(\"R1C1:R2\",FALSE)", "#REF!"},
                              {"INDIRECT(\"R1C1x\",FALSE)", "#REF!"},
                              {"INDIRECT(\"nowhere!R1C1\",FALSE)", "#REF!"},
                              {"INDIRECT(\"B2\",FALSE)", "#REF!"},
                              {"INDIRECT(\"\",FALSE)", "#REF!"},
                          });
  EXPECT_EQ(document.calc("INDIRECT(\"R[-1]C[1]\",FALSE)", "A3"), "20");
  EXPECT_EQ(document.calc("INDIRECT(\"RC[-1]\",FALSE)", "C2"), "20");
  EXPECT_EQ(document.calc("INDIRECT(\"R[-1]C\",FALSE)", "A1"), "#REF!");
  EXPECT_EQ(document.calc("SUM(INDIRECT(\"C\",FALSE))", "B9"), "60");
}

TEST_F(AddressingTest, IndirectRefusesOtherTexts) {
  expectResults(document, {
                              {"INDIRECT(\"\")", "#REF!"},
                              {"INDIRECT(\"=A1\")", "#REF!"},
                              {"INDIRECT(\"A1+1\")", "#REF!"},
                              {"INDIRECT(\"7\")", "#REF!"},
                              {"INDIRECT(\"SUM(A1)\")", "#REF!"},
                              {"INDIRECT(\"A1:\")", "#REF!"},
                              {"INDIRECT(\"A1048577\")", "#REF!"},
                              {"INDIRECT(\"nowhere!A1\")", "#REF!"},
                              {"INDIRECT(\"noName\")", "#REF!"},
                              {"INDIRECT(\"seven\")", "#REF!"},
                              {"INDIRECT(\"[Other.xlsx]Sheet1!A1\")", "#REF!"},
                              {"INDIRECT(#N/A)", "#N/A"},
                              {"INDIRECT(\"A1\",\"x\")", "#VALUE!"},
                          });
}

TEST_F(AddressingTest, ANameThatRefersToItselfByItsTextMeetsALimit) {
  expectLimit(document, "INDIRECT(\"itself\")", "nests deeper than");
}

TEST_F(AddressingTest, FoundReferencesAreDependencies) {
  RuntimeDependenciesResolver resolver;
  Context const context(&document.sheet(), RowIndex(0), ColumnIndex(0), boost::none, DOM::RowID(0),
                        DOM::ColumnID(0));
  static_cast<void>(
      calcExpr(parseExpr("SUM(OFFSET(A1,1,0,2,2),INDIRECT(\"'It''s'!B2\"),INDIRECT(\"R1C3\",0))"),
               context, document, resolver));
  auto const& dependencies = resolver.getDependencies();
  ASSERT_EQ(dependencies.size(), 3U);
  EXPECT_EQ(dependencies[0].table.get(), 0U);
  EXPECT_EQ(dependencies[0].range, (TableRange{1, 0, 3, 2}));
  EXPECT_EQ(dependencies[1].table.get(), 1U);
  EXPECT_EQ(dependencies[1].range, (TableRange{1, 1, 2, 2}));
  EXPECT_EQ(dependencies[2].range, (TableRange{0, 2, 1, 3}));
}

TEST_F(AddressingTest, WhatIsFoundOnlyWhenRunIsVolatile) {
  EXPECT_TRUE(parseExpr("SUM(OFFSET($A$1,1,0))").getTraits().callsVolatileFunctions);
  EXPECT_FALSE(parseExpr("SUM(OFFSET($A$1,1,0))").getTraits().dependsOnCell);
  EXPECT_TRUE(parseExpr("INDIRECT(\"A1\")").getTraits().callsVolatileFunctions);
  EXPECT_TRUE(parseExpr("SUM(INDIRECT(\"RC\",FALSE))").getTraits().dependsOnCell);
  EXPECT_FALSE(parseExpr("SUM(INDEX($A$1:$A$3,2))").getTraits().callsVolatileFunctions);
  EXPECT_TRUE(parseExpr("INDEX($A$1:$A$3,0)+1").getTraits().dependsOnCell);
}

TEST_F(AddressingTest, AddressWritesReferences) {
  expectResults(document,
                {
                    {"ADDRESS(2,3)", "\"$C$2\""},
                    {"ADDRESS(2,3,1)", "\"$C$2\""},
                    {"ADDRESS(2,3,2)", "\"C$2\""},
                    {"ADDRESS(2,3,3)", "\"$C2\""},
                    {"ADDRESS(2,3,4)", "\"C2\""},
                    {"ADDRESS(2,3,2,FALSE)", "\"R2C[3]\""},
                    {"ADDRESS(2,3,1,FALSE)", "\"R2C3\""},
                    {"ADDRESS(2,3,3,0)", "\"R[2]C3\""},
                    {"ADDRESS(2,3,4,0)", "\"R[2]C[3]\""},
                    {"ADDRESS(2,3,1,FALSE,\"[Book1]Sheet1\")", "\"'[Book1]Sheet1'!R2C3\""},
                    {"ADDRESS(2,3,1,FALSE,\"EXCEL SHEET\")", "\"'EXCEL SHEET'!R2C3\""},
                    {"ADDRESS(1,1,,,\"Sheet2\")", "\"Sheet2!$A$1\""},
                    {"ADDRESS(1,1,4,1,\"It's\")", "\"'It''s'!A1\""},
                    {"ADDRESS(1,1,4,1,\"A1\")", "\"'A1'!A1\""},
                    {"ADDRESS(1,1,4,1,2024)", "\"'2024'!A1\""},
                    {"ADDRESS(1,1,4,1,\"\")", "\"!A1\""},
                    {"ADDRESS(1,26,4)", "\"Z1\""},
                    {"ADDRESS(1,27,4)", "\"AA1\""},
                    {"ADDRESS(1,702,4)", "\"ZZ1\""},
                    {"ADDRESS(1,703,4)", "\"AAA1\""},
                    {"ADDRESS(1048576,16384)", "\"$XFD$1048576\""},
                    {"ADDRESS(1.9,1.9)", "\"$A$1\""},
                    {"ADDRESS(0,1)", "#VALUE!"},
                    {"ADDRESS(1,0)", "#VALUE!"},
                    {"ADDRESS(1048577,1)", "#VALUE!"},
                    {"ADDRESS(1,16385)", "#VALUE!"},
                    {"ADDRESS(1E300,1)", "#VALUE!"},
                    {"ADDRESS(1,1,0)", "#VALUE!"},
                    {"ADDRESS(1,1,5)", "#VALUE!"},
                    {"ADDRESS(1,1,\"x\")", "#VALUE!"},
                    {"ADDRESS(1,1,1,\"x\")", "#VALUE!"},
                    {"ADDRESS(\"x\",1)", "#VALUE!"},
                    {"ADDRESS(1,#N/A)", "#N/A"},
                    {"INDIRECT(ADDRESS(2,2))", "20"},
                });
  EXPECT_EQ(document.calcArray("ADDRESS({1,2},1,4)"), "{\"A1\",\"A2\"}");
}

}  // namespace

}  // namespace Zorv::Formulas
