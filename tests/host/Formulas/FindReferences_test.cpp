#include "Formulas/FindReferences.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

struct ReferenceCase {
  std::string formula;
  std::string expected;  ///< in order; each as describe() writes it
};

class References : public testing::TestWithParam<ReferenceCase> {};

/// The references of a formula that was written for A1 and stands in B2.
TEST_P(References, AreFound) {
  FormulaDocument document;
  document.addSheet("Other");
  document.define("Fixed", "Sheet1!$D$4");
  document.define("Above", "Sheet1!A1048576");
  document.define("Both", "Fixed+Above+Both");
  document.addList({.name = "List",
                    .table = FormulaModel::DocTableIndex(1),
                    .range = {0, 0, 5, 2},
                    .columnNames = {"One", "Two"}});
  Context const context(&document.sheet(), RowIndex(1), ColumnIndex(1), boost::none, DOM::RowID(0),
                        DOM::ColumnID(0));
  auto const references = findReferences(parseExpr(GetParam().formula), 1, 1, context, document);
  std::vector<std::string> texts;
  for (Reference const& reference : references) {
    texts.push_back(describe(CalcResult(std::make_shared<Reference const>(reference))));
  }
  std::sort(texts.begin(), texts.end());
  std::string all;
  for (auto const& text : texts) {
    all += text;
  }
  EXPECT_EQ(all, GetParam().expected) << GetParam().formula;
}

INSTANTIATE_TEST_SUITE_P(
    FindReferences, References,
    testing::Values(ReferenceCase{"1+SUM(2)", ""}, ReferenceCase{"A1", "[0!1,1:2,2]"},
                    ReferenceCase{"$A$1+A$1", "[0!0,0:1,1][0!0,1:1,2]"},
                    ReferenceCase{"IF(TRUE,1,SUM(C3:D4))", "[0!3,3:5,5]"},
                    ReferenceCase{"Other!A1+Nowhere!A1", "[1!1,1:2,2]"},
                    ReferenceCase{"SUM(Other:Sheet1!$A$1:A2)", "[0!0,0:3,2][1!0,0:3,2]"},
                    ReferenceCase{"SUM(Sheet1:Nowhere!A1)", ""},
                    ReferenceCase{"A:A", "[0!0,1:1048576,2]"},
                    ReferenceCase{"ROW(A1)+COLUMNS(A1:C1)+ROWS((A1))", ""},
                    ReferenceCase{"OFFSET(A1,B1,0)", "[0!1,2:2,3]"},
                    ReferenceCase{"Fixed", "[0!3,3:4,4]"}, ReferenceCase{"Above", "[0!0,1:1,2]"},
                    ReferenceCase{"Both", "[0!0,1:1,2][0!3,3:4,4]"},
                    ReferenceCase{"List[Two]", "[1!1,1:5,2]"}, ReferenceCase{"List[Three]", ""},
                    ReferenceCase{"LET(x,A1,x+x)", "[0!1,1:2,2]"}));

}  // namespace
}  // namespace Zorv::Formulas
