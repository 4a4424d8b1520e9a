#include "Formulas/FindDependencies.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

using DOM::FormulaSyntaxTree::CellReference;

std::string describeCorner(std::uint32_t row, bool rowIsRelative, std::uint32_t column,
                           bool columnIsRelative) {
  return (columnIsRelative ? "~" : "") + std::to_string(column) + (rowIsRelative ? "~" : "") + "," +
         std::to_string(row);
}

/// Columns and rows from 0; a tilde before a column and after it, for the row, if they move.
std::string describeDependency(Dependencies::Reference const& reference) {
  CellReference const& corners = reference.corners;
  return std::string(reference.table == nullptr ? "" : "other ") +
         (reference.isFromFirstCell ? "first " : "") +
         describeCorner(corners.firstRow, corners.firstRowIsRelative, corners.firstColumn,
                        corners.firstColumnIsRelative) +
         ":" +
         describeCorner(corners.lastRow, corners.lastRowIsRelative, corners.lastColumn,
                        corners.lastColumnIsRelative);
}

std::string describeAll(Dependencies const& dependencies) {
  std::vector<std::string> texts;
  for (auto const& reference : dependencies.references) {
    texts.push_back("[" + describeDependency(reference) + "]");
  }
  std::ranges::sort(texts);
  std::string all;
  for (std::string const& text : texts) {
    all += text;
  }
  all += dependencies.onAnyCell ? " any cell" : "";
  all += dependencies.onDay ? " day" : "";
  all += dependencies.onMoment ? " moment" : "";
  return all;
}

/// Aspects that functions ask for of the only reference of a formula that is followed.
std::string describeAspects(FormulaDocument& document, std::string_view formula) {
  std::string found;
  for (auto const& reference :
       findDependencies(parseExpr(formula), document.sheet(), document).references) {
    found += reference.aspects.summary ? "summary" : "";
    found += reference.aspects.order ? "order" : "";
    found += reference.aspects.classes ? "classes" : "";
  }
  return found;
}

TEST(FindDependencies, TellsWhatFunctionsAskOfAreasAsAWhole) {
  FormulaDocument document;
  document.addSheet("Other");
  document.addList({.name = "List",
                    .table = FormulaModel::DocTableIndex(1),
                    .range = {2, 1, 5, 3},
                    .columnNames = {"One", "Two"}});
  struct Case {
    char const* formula;
    char const* expected;
  };
  for (Case const& each : {Case{"SUM($A$1:$A$9)", "summary"},
                           {"A1>AVERAGE(Other!$A:$A)", "summary"},
                           {"COUNT($A$1:$A$9)+1", "summary"},
                           {"COUNTA(List[Two])", "summary"},
                           {"A1=MAX($A:$A)", "order"},
                           {"PERCENTILE.INC($A$1:$A$9,0.5)", "order"},
                           {"RANK(A1,$A$1:$A$9)", "order"},
                           {"RANK.EQ($A$1,$A$1:$A$9,1)", "order"},
                           {"COUNTIF($A$1:$A$9,A1)", "classes"},
                           {"COUNTIF($A$1:$A$9,\"<>5\")", "classes"},
                           {"COUNTIF($A$1:$A$9,\">5\")", "order"},
                           {"COUNTIF($A$1:$A$9,\"<\"&A1)", "order"},
                           {"SUM($A$1:$A$9,$B$1:$B$9)", ""},
                           {"SUM($A$1:$A9)", ""},
                           {"SUM(A1:A9)", ""},
                           {"SUM($A$1)", ""},
                           {"SUM($A$1:$A$9*2)", ""},
                           {"SUM(List[@Two])", ""},
                           {"MATCH(A1,$A$1:$A$9,0)", ""},
                           {"RANK($A$1:$A$9,A1)", ""}}) {
    EXPECT_EQ(describeAspects(document, each.formula), each.expected) << each.formula;
  }
}

TEST(FindDependencies, GivesReferencesAsTheyMoveAndWhatIsFoundOnlyByEvaluation) {
  struct Case {
    char const* formula;
    char const* expected;
  };
  FormulaDocument document;
  document.addSheet("Other");
  document.define("Fixed", "Sheet1!$D$4");
  document.define("Above", "Sheet1!A1048576");
  document.define("Both", "Fixed+Above+Both");
  document.define("Date", "TODAY()");
  document.define("Twice", "LAMBDA(x,x*$E$1)");
  document.addList({.name = "List",
                    .table = FormulaModel::DocTableIndex(1),
                    .range = {2, 1, 5, 3},
                    .columnNames = {"One", "Two"}});
  std::vector<Case> const cases = {
      {"1+SUM(2)", ""},
      {"A1", "[~0~,0:~0~,0]"},
      {"$B2:B$3", "[1~,1:~1,2]"},
      {"Other!$A$1+Nowhere!A1", "[other 0,0:0,0]"},
      {"Sheet1!$A$1", "[0,0:0,0]"},
      {"SUM(Sheet1:Other!$A$1)+SUM(Sheet1:Nowhere!A1)", "[0,0:0,0][other 0,0:0,0]"},
      {"ROW(A1)+ROWS(B1:B2)", ""},
      {"Both", "[first 3,3:3,3][first ~0~,1048575:~0~,1048575]"},
      {"Both+A1", "[first 3,3:3,3][first ~0~,1048575:~0~,1048575][~0~,0:~0~,0]"},
      {"Twice(A1)", "[first 4,0:4,0][~0~,0:~0~,0]"},
      {"NoSuchName+NoSuchFunction(1)", ""},
      {"SUM(List[Two])", "[other first 1,2:2,4]"},
      {"List[@One]", "[other first 1~,0:2~,0]"},
      {"[@One]", "[first 0~,0:16383~,0]"},
      {"SUM(NoSuchList[Two])", ""},
      {"TODAY()-1", " day"},
      {"Date", " day"},
      {"NOW()", " moment"},
      {"RANDBETWEEN(1,6)", " moment"},
      {"INDIRECT(\"A1\")", " any cell"},
      {"OFFSET(A1,1,0)", " any cell"},
      {"CELL(\"type\",$A$1)", "[0,0:0,0] any cell"},
      {"SUM($A$1:INDEX($B$1:$B$3,2))", "[0,0:0,0][1,0:1,2] any cell"},
      {"SUMIF($A$1:$A$3,1,$B$1:$B$3)", "[0,0:0,2][1,0:1,2]"},
      {"SUMIF($A$1:$A$3,1,$B$1)", "[0,0:0,2][1,0:1,0] any cell"},
      {"AVERAGEIF($A$1:$A$3,1,$B1:$B3)", "[0,0:0,2][1~,0:1~,2]"},
      {"SUMIF(A$1:A$3,1,B1:B3)", "[~0,0:~0,2][~1~,0:~1~,2]"},
      {"SUMIF(A1:A3,1,B1:B3)", "[~0~,0:~0~,2][~1~,0:~1~,2] any cell"},
      {"SUMIF(Fixed,1,$B$1)", "[1,0:1,0][first 3,3:3,3] any cell"},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(describeAll(findDependencies(parseExpr(c.formula), document.sheet(), document)),
              c.expected)
        << c.formula;
  }
}

}  // namespace
}  // namespace Zorv::Formulas
