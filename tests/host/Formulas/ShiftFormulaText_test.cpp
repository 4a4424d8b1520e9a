#include "Formulas/ShiftFormulaText.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Zorv::Formulas {
namespace {

using testing::Eq;
using testing::Optional;

TEST(ShiftFormulaText, MovesRelativeReferencesAlone) {
  struct Case {
    std::string text;
    std::string moved;  ///< by two columns and three rows
  };
  std::vector<Case> const cases = {
      {"A1>5", "C4>5"},
      {"$A1>B$2", "$A4>D$2"},
      {"$A$1", "$A$1"},
      {"=A1", "=C4"},
      {"SUM(A1:B2)", "SUM(C4:D5)"},
      {"SUM(A:B)+SUM(1:$2)", "SUM(C:D)+SUM(4:$2)"},
      {"SUM($A:B)+SUM($1:2)", "SUM($A:D)+SUM($1:5)"},
      {"LOG10(A1)+10", "LOG10(C4)+10"},
      {"'A1 and B2'!A1", "'A1 and B2'!C4"},
      {"Data1!A1&Other!$B2", "Data1!C4&Other!$B5"},
      {"\"A1\"&A1", "\"A1\"&C4"},
      {"Sales[A1]+A1", "Sales[A1]+C4"},
      {"Rate*A1", "Rate*C4"},
      {"AND( A1 > 1 ,  B1<2 )", "AND( C4 > 1 ,  D4<2 )"},
      {"ISERROR(SEARCH(\"x\",A1))", "ISERROR(SEARCH(\"x\",C4))"},
      {"{1,2;3,4}", "{1,2;3,4}"},
      {"TRUE", "TRUE"},
  };
  for (auto const& [text, moved] : cases) {
    EXPECT_THAT(shiftFormulaText(text, 2, 3), Optional(Eq(moved))) << text;
    EXPECT_THAT(shiftFormulaText(text, 0, 0), Optional(Eq(text))) << text;
  }
}

TEST(ShiftFormulaText, GivesNothingForAReferenceThatLeavesTheSheet) {
  EXPECT_EQ(shiftFormulaText("A1", -1, 0), std::nullopt);
  EXPECT_EQ(shiftFormulaText("A1", 0, -1), std::nullopt);
  EXPECT_EQ(shiftFormulaText("XFD1048576", 1, 0), std::nullopt);
  EXPECT_EQ(shiftFormulaText("XFD1048576", 0, 1), std::nullopt);
  EXPECT_EQ(shiftFormulaText("SUM(A:B)", -1, 0), std::nullopt);
  EXPECT_THAT(shiftFormulaText("$A$1", -1, -1), Optional(Eq("$A$1")));
}

TEST(ShiftFormulaText, GivesNothingForATextThatCannotBeRead) {
  EXPECT_EQ(shiftFormulaText("\"open", 1, 1), std::nullopt);
  EXPECT_EQ(shiftFormulaText("A1~2", 1, 1), std::nullopt);
}

}  // namespace
}  // namespace Zorv::Formulas
