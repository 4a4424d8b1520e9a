#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "DOM/SharedStyle.h"
#include "Formulas/Functions/NumberFormatClass.h"
#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class CellInformationTest : public ::testing::Test {
protected:
  CellInformationTest() {
    document.setColumn("A1", {"7", "\"text\"", "TRUE", "#DIV/0!", "empty"});
    document.addSheet("Other one").table.setValue(0, 0, FormulaModel::FormulaNumber{});
  }

  void setStyle(unsigned long row, DOM::CellStyle style) {
    document.sheet().table.obtainCell(row, 0).style = _factory.create(std::move(style));
  }

  FormulaDocument document;

private:
  DOM::SharedObjectFactory _factory;
};

TEST_F(CellInformationTest, PlacesAreThoseOfTheFirstCell) {
  expectResults(document, {
                              {"CELL(\"address\",B7)", "\"$B$7\""},
                              {"CELL(\"address\",B7:C9)", "\"$B$7\""},
                              {"CELL(\"address\",'Other one'!B7)", "\"'Other one'!$B$7\""},
                              {"CELL(\"COL\",C1)", "3"},
                              {"CELL(\"Row\",C5)", "5"},
                              {"CELL(\"col\")", "16384"},
                              {"CELL(\"row\")", "1048576"},
                              {"CELL(\"filename\",A1)", "\"[]Sheet1\""},
                              {"CELL(\"filename\",'Other one'!A1)", "\"[]Other one\""},
                          });
}

TEST_F(CellInformationTest, ContentsAndTypeAreThoseOfTheValue) {
  expectResults(document, {
                              {"CELL(\"contents\",A1)", "7"},
                              {"CELL(\"contents\",A1:A2)", "7"},
                              {"CELL(\"contents\",A4)", "#DIV/0!"},
                              {"CELL(\"contents\",Z9)", "empty"},
                              {"CELL(\"type\",A1)", "\"v\""},
                              {"CELL(\"type\",A2)", "\"l\""},
                              {"CELL(\"type\",A3)", "\"v\""},
                              {"CELL(\"type\",A5)", "\"b\""},
                              {"CELL(\"type\",Z9)", "\"b\""},
                          });
}

TEST_F(CellInformationTest, WhatIsNoKeyOrNoReferenceIsAnError) {
  expectResults(document, {
                              {"CELL(\"weight\",A1)", "#VALUE!"},
                              {"CELL(\"\",A1)", "#VALUE!"},
                              {"CELL(\"row\",7)", "#VALUE!"},
                              {"CELL(\"row\",#REF!)", "#REF!"},
                              {"CELL(#N/A,A1)", "#N/A"},
                          });
}

TEST_F(CellInformationTest, CellsWithoutStyleHaveTheDefaults) {
  expectResults(document, {
                              {"CELL(\"format\",A1)", "\"G\""},
                              {"CELL(\"color\",A1)", "0"},
                              {"CELL(\"parentheses\",A1)", "0"},
                              {"CELL(\"prefix\",A1)", "\"\""},
                              {"CELL(\"prefix\",A2)", "\"'\""},
                              {"CELL(\"protect\",A1)", "1"},
                              {"CELL(\"width\",A1)", "8"},
                          });
}

TEST_F(CellInformationTest, StylesTellFormatAlignmentAndProtection) {
  DOM::CellStyle style;
  style.setCellFormat(
      std::make_shared<DOM::CellFormat const>(DOM::CellFormat{"(0.00);[Red]-0.00"}));
  DOM::ParaProps para;
  para.horizontalAlignment = DOM::HorizontalAlignment::Right;
  style.setParaProps(std::make_shared<DOM::ParaProps const>(para));
  DOM::CellProps props;
  props.locked = false;
  style.setCellProps(std::make_shared<DOM::CellProps const>(props));
  setStyle(1, style);
  expectResults(document, {
                              {"CELL(\"format\",A2)", "\"F2-()\""},
                              {"CELL(\"color\",A2)", "1"},
                              {"CELL(\"parentheses\",A2)", "1"},
                              {"CELL(\"prefix\",A2)", "\"\"\""},
                              {"CELL(\"protect\",A2)", "0"},
                          });
}

TEST_F(CellInformationTest, AlignmentsHaveSigns) {
  std::pair<DOM::HorizontalAlignment, std::string> const cases[] = {
      {DOM::HorizontalAlignment::Left, "\"'\""},
      {DOM::HorizontalAlignment::Center, "\"^\""},
      {DOM::HorizontalAlignment::Right, "\"\"\""},
      {DOM::HorizontalAlignment::Fill, "\"\\\""},
  };
  for (auto const& [alignment, sign] : cases) {
    DOM::ParaProps para;
    para.horizontalAlignment = alignment;
    DOM::CellStyle style;
    style.setParaProps(std::make_shared<DOM::ParaProps const>(para));
    setStyle(1, style);
    EXPECT_EQ(document.calc("CELL(\"prefix\",A2)"), sign);
  }
}

TEST_F(CellInformationTest, TheResultDependsOnTheCell) {
  EXPECT_TRUE(parseExpr("CELL(\"row\")").getTraits().dependsOnCell);
  EXPECT_TRUE(parseExpr("CELL(\"row\")").getTraits().callsVolatileFunctions);
}

TEST(NumberFormatClass, FormatsHaveCodes) {
  struct Case {
    std::string_view format;
    std::string_view code;
  };
  Case const cases[] = {
      {"General", "G"},
      {"", "G"},
      {"@", "G"},
      {"# ?/?", "G"},
      {"0", "F0"},
      {"0.00", "F2"},
      {"0.0##", "F3"},
      {"#,##0", ",0"},
      {"#,##0.00", ",2"},
      {"#,##0_);[Red](#,##0)", ",0-"},
      {"$#,##0_);($#,##0)", "C0"},
      {"$#,##0.00_);[Red]($#,##0.00)", "C2-"},
      {"#,##0.00 \xE2\x82\xAC", "C2"},
      {"[$EUR] #,##0", "C0"},
      {"[$-409]0", "F0"},
      {"0%", "P0"},
      {"0.00%", "P2"},
      {"0.00E+00", "S2"},
      {"##0.0E+0", "S1"},
      {"d-mmm-yy", "D1"},
      {"dd-mmm-yy", "D1"},
      {"d-mmm", "D2"},
      {"mmm-yy", "D3"},
      {"m/d/yy", "D4"},
      {"m/d/yy h:mm", "D4"},
      {"yyyy\\-mm\\-dd", "D4"},
      {"mm/dd", "D5"},
      {"h:mm:ss AM/PM", "D6"},
      {"h:mm AM/PM", "D7"},
      {"h:mm:ss", "D8"},
      {"h:mm", "D9"},
      {"[h]:mm", "D9"},
      {"0 \"days\"", "F0"},
      {"0\\d", "F0"},
      {"\"open", "G"},
      {"[open", "G"},
      {"0\\", "F0"},
  };
  for (Case const& test : cases) {
    EXPECT_EQ(classifyNumberFormat(test.format).code, test.code) << test.format;
  }
}

}  // namespace

}  // namespace Zorv::Formulas
