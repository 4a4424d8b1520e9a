#include "Formulas/FindUnresolved.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

std::string_view nameOf(UnresolvedKind kind) {
  switch (kind) {
    case UnresolvedKind::Name:
      return "name ";
    case UnresolvedKind::Sheet:
      return "sheet ";
    case UnresolvedKind::ExternalWorkbook:
      return "workbook ";
    case UnresolvedKind::ListObject:
      return "list ";
    default:
      return "function ";
  }
}

struct UnresolvedCase {
  std::string formula;
  std::string expected;  ///< each followed by a semicolon
};

class FindUnresolved : public testing::TestWithParam<UnresolvedCase> {};

TEST_P(FindUnresolved, TellsWhatTheDocumentLacks) {
  FormulaDocument document;
  document.addSheet("Other");
  document.define("Rate", "0.5");
  document.define("Local", "1", 1);
  document.define("Broken", "Gone!A1+Nothing+Broken");
  document.define("Double", "LAMBDA(x,x*2)");
  document.addList({.name = "List",
                    .table = FormulaModel::DocTableIndex(1),
                    .range = {0, 0, 5, 2},
                    .columnNames = {"One", "Two"}});
  std::string found;
  for (Unresolved const& each :
       findUnresolved(parseExpr(GetParam().formula), document, FormulaModel::DocTableIndex(0))) {
    found += std::string(nameOf(each.kind)) + each.text + ';';
  }
  EXPECT_EQ(found, GetParam().expected) << GetParam().formula;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, FindUnresolved,
    testing::Values(
        UnresolvedCase{"A1+Rate+Other!A1+Other!Local+SUM(List[One])+Double(2)", ""},
        UnresolvedCase{"Nothing+nothing2+Nothing", "name Nothing;name nothing2;"},
        UnresolvedCase{"Local", "name Local;"},
        UnresolvedCase{"Gone!A1+'It''s'!B:B", "sheet Gone;sheet It's;"},
        UnresolvedCase{"Gone!Rate", "sheet Gone;"}, UnresolvedCase{"#REF!A1", "sheet #REF!;"},
        UnresolvedCase{"SUM(Sheet1:Other!A1)+SUM('other:SHEET1'!A1:B2)", ""},
        UnresolvedCase{"SUM(Sheet1:Gone!A1)+SUM(Gone:Other!A1)",
                       "sheet Sheet1:Gone;sheet Gone:Other;"},
        UnresolvedCase{"Sheet1:Other!Rate", "sheet Sheet1:Other;"},
        UnresolvedCase{"[1]Sheet1!A1+'[1]My Sheet'!A2+[2]!Rate", "workbook [1];workbook [2];"},
        UnresolvedCase{"'C:\\dir\\[Book.xlsx]Sheet1'!A1", "workbook [Book.xlsx];"},
        UnresolvedCase{"[1]Sheet1!Table[A]", "workbook [1];"},
        UnresolvedCase{"SUM(Table[One])+SUM(List[Three])+SUM(List[[One]:[Four]])",
                       "list Table;list List[Three];list List[Four];"},
        UnresolvedCase{"NoSuch(1)+_xlfn.FOO(2)+NOSUCH(3)", "function NOSUCH;function FOO;"},
        UnresolvedCase{"Broken+1", "sheet Gone;name Nothing;"},
        UnresolvedCase{"LET(x,1,LAMBDA(y,x+y)(2))", ""}, UnresolvedCase{"[@One]", ""},
        UnresolvedCase{"#NAME?", ""}));

}  // namespace
}  // namespace Zorv::Formulas
