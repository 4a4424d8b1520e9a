#include "workbook/Read/TextNeedle.h"

#include <gtest/gtest.h>

namespace Zorv::Workbook {
namespace {

struct NeedleCase {
  char const* formula;
  char const* needle;
};

class Needles : public testing::TestWithParam<NeedleCase> {};

TEST_P(Needles, AreWhatTheFormulaLooksFor) {
  EXPECT_EQ(findNeedle(GetParam().formula), GetParam().needle) << GetParam().formula;
}

INSTANTIATE_TEST_SUITE_P(TextNeedle, Needles,
                         testing::Values(NeedleCase{"NOT(ISERROR(SEARCH(\"Grain\",B3)))",
                                                    "\"Grain\""},
                                         NeedleCase{"=not(iserror(search($B$1, A1)))", "$B$1"},
                                         NeedleCase{"NOT( ISERROR( FIND(B1,A1) ) )", "B1"},
                                         NeedleCase{"ISERROR(SEARCH(\"a,b\",A1))", "\"a,b\""},
                                         NeedleCase{"ISERROR(SEARCH(IF(B1=1,\"x\",'a,b'!C1),A1))",
                                                    "IF(B1=1,\"x\",'a,b'!C1)"},
                                         NeedleCase{"LEFT(A1,LEN(\"x=y\"))=\"x=y\"", "\"x=y\""},
                                         NeedleCase{"RIGHT(A1,2)=$C$1", "$C$1"},
                                         NeedleCase{"LEFT(A1,LEN(\")\"))=\")\"", "\")\""}));

TEST(TextNeedle, FormulasOfOtherShapesHaveNone) {
  for (char const* formula :
       {"", "SEARCH(\"x\",A1)", "ISNUMBER(SEARCH(\"x\",A1))", "NOT(ISERROR(SEARCH(\"x\"",
        "LEFT(A1)", "LEFT(A1,1)<>\"x\"", "LEFT(A1,1)=B1=C1", "LEFTY(A1)=1", "ISERROR(SEARCH(,A1))",
        "LEFT(A1,1)="}) {
    EXPECT_FALSE(findNeedle(formula)) << formula;
  }
}

TEST(TextNeedle, StringConstantsAreUnquoted) {
  EXPECT_EQ(parseStringConstant(" \"say \"\"yes\"\"\" "), "say \"yes\"");
  EXPECT_EQ(parseStringConstant("\"\""), "");
  for (char const* formula : {"", "\"", "A1", "\"a\"&\"b\"", "\"a\" \"b\""}) {
    EXPECT_FALSE(parseStringConstant(formula)) << formula;
  }
}

}  // namespace
}  // namespace Zorv::Workbook
