#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

/// A list `Sales` in B2:D6: headers in row 2, data in rows 3 to 5, totals in row 6.
class StructuredReferencesTest : public ::testing::Test {
protected:
  StructuredReferencesTest() {
    document.addList({.name = "Sales",
                      .table = FormulaModel::DocTableIndex(0),
                      .range = {1, 1, 6, 4},
                      .headerRowCount = 1,
                      .totalsRowCount = 1,
                      .columnNames = {"Region", "Net amount", "Odd '[name]#"}});
    document.addSheet("Other");
    document.addList({.name = "Elsewhere",
                      .table = FormulaModel::DocTableIndex(1),
                      .range = {0, 0, 3, 1},
                      .headerRowCount = 1,
                      .totalsRowCount = 0,
                      .columnNames = {"Only"}});
    document.setColumn("C3", {"10", "20", "30", "60"});
  }

  FormulaDocument document;
};

TEST_F(StructuredReferencesTest, SelectColumnsAndParts) {
  expectResults(document, {
                              {"Sales[Net amount]", "[0!2,2:5,3]"},
                              {"sales[net AMOUNT]", "[0!2,2:5,3]"},
                              {"Sales[]", "[0!2,1:5,4]"},
                              {"Sales[#All]", "[0!1,1:6,4]"},
                              {"Sales[#Headers]", "[0!1,1:2,4]"},
                              {"Sales[#Data]", "[0!2,1:5,4]"},
                              {"Sales[#Totals]", "[0!5,1:6,4]"},
                              {"Sales[[#Headers],[#Data],[Region]]", "[0!1,1:5,2]"},
                              {"Sales[[#Data],[#Totals],[Region]]", "[0!2,1:6,2]"},
                              {"Sales[[Region]:[Net amount]]", "[0!2,1:5,3]"},
                              {"Sales[[Net amount]:[Region]]", "[0!2,1:5,3]"},
                              {"Sales[ [Region] : [Net amount] ]", "[0!2,1:5,3]"},
                              {"Sales[[#Totals],[Net amount]]", "60"},
                              {"Sales[Odd '''['name']'#]", "[0!2,3:5,4]"},
                              {"SUM(Sales[Net amount])", "60"},
                              {"SUM(Elsewhere[Only])", "0"},
                              {"Elsewhere[#All]", "[1!0,0:3,1]"},
                          });
}

TEST_F(StructuredReferencesTest, SelectTheRowOfTheCell) {
  EXPECT_EQ(document.calc("Sales[@[Net amount]]", "B4"), "20");
  EXPECT_EQ(document.calc("Sales[[#This Row],[Net amount]]", "Z5"), "30");
  EXPECT_EQ(document.calc("Sales[@Region]", "B4"), "empty");
  EXPECT_EQ(document.calc("SUM(Sales[@])", "B4"), "20");
  EXPECT_EQ(document.calc("Sales[@[Region]:[Net amount]]", "B4"), "[0!3,1:4,3]");
  EXPECT_EQ(document.calc("[@[Net amount]]*2", "B4"), "40");
  EXPECT_EQ(document.calc("SUM([Net amount])", "B4"), "60");
}

TEST_F(StructuredReferencesTest, OneValueOutOfAColumnLiesInTheRowOfTheCell) {
  EXPECT_EQ(document.calc("Sales[Net amount]>15", "A3"), "FALSE");
  EXPECT_EQ(document.calc("Sales[Net amount]>15", "A4"), "TRUE");
}

TEST_F(StructuredReferencesTest, WhatIsNotThereIsAnError) {
  EXPECT_EQ(document.calc("Nothing[Region]"), "#REF!");
  EXPECT_EQ(document.calc("Sales[Nothing]"), "#REF!");
  EXPECT_EQ(document.calc("Elsewhere[#Totals]"), "#REF!");
  EXPECT_EQ(document.calc("[Region]", "Z99"), "#REF!");
  EXPECT_EQ(document.calc("Sales[@Region]", "B2"), "#VALUE!");
  EXPECT_EQ(document.calc("Sales[@Region]", "B6"), "#VALUE!");
}

}  // namespace

}  // namespace Zorv::Formulas
