#include <string>

#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class KindsTest : public ::testing::Test {
protected:
  KindsTest() {
    document.setColumn("A1", {"7", "\"text\"", "TRUE", "#DIV/0!", "empty"});
    document.sheet().table.obtainCell(0, 0).hasFormula = true;
    document.sheet().table.obtainCell(4, 0).hasFormula = true;
    document.addSheet("Other one");
  }

  FormulaDocument document;
};

TEST_F(KindsTest, TypeNumbersTheKinds) {
  expectResults(document, {
                              {"TYPE(1)", "1"},
                              {"TYPE(\"x\")", "2"},
                              {"TYPE(TRUE)", "4"},
                              {"TYPE(#N/A)", "16"},
                              {"TYPE(1/0)", "16"},
                              {"TYPE({1,2})", "64"},
                              {"TYPE(A1)", "1"},
                              {"TYPE(A2)", "2"},
                              {"TYPE(A3)", "4"},
                              {"TYPE(A4)", "16"},
                              {"TYPE(A5)", "1"},
                              {"TYPE(A9)", "1"},
                              {"TYPE(A1:A2)", "64"},
                              {"TYPE(A1:A2*1)", "64"},
                          });
}

TEST_F(KindsTest, NGivesNumbersOrZero) {
  expectResults(document, {
                              {"N(7)", "7"},
                              {"N(\"7\")", "0"},
                              {"N(TRUE)", "1"},
                              {"N(FALSE)", "0"},
                              {"N(#N/A)", "#N/A"},
                              {"N(A1)", "7"},
                              {"N(A2)", "0"},
                              {"N(A3)", "1"},
                              {"N(A4)", "#DIV/0!"},
                              {"N(A9)", "0"},
                              {"N(A1:A3)", "7"},
                              {"SUM(N({1,\"x\",TRUE}))", "2"},
                              {"SUM(N(A1:A3=7))", "1"},
                          });
}

TEST_F(KindsTest, TGivesTextsOrNone) {
  expectResults(document, {
                              {"T(\"x\")", "\"x\""},
                              {"T(7)", "\"\""},
                              {"T(TRUE)", "\"\""},
                              {"T(#N/A)", "#N/A"},
                              {"T(A2)", "\"text\""},
                              {"T(A1)", "\"\""},
                              {"T(A4)", "#DIV/0!"},
                              {"T(A9)", "\"\""},
                          });
  EXPECT_EQ(document.calcArray("T({1,\"x\"})"), "{\"\",\"x\"}");
}

TEST_F(KindsTest, KindsAreTold) {
  expectResults(document, {
                              {"ISNONTEXT(7)", "TRUE"},
                              {"ISNONTEXT(A9)", "TRUE"},
                              {"ISNONTEXT(A4)", "TRUE"},
                              {"ISNONTEXT(A2)", "FALSE"},
                          });
}

TEST_F(KindsTest, ErrorsHaveNumbers) {
  expectResults(document, {
                              {"ERROR.TYPE(#NULL!)", "1"},
                              {"ERROR.TYPE(#DIV/0!)", "2"},
                              {"ERROR.TYPE(#VALUE!)", "3"},
                              {"ERROR.TYPE(#REF!)", "4"},
                              {"ERROR.TYPE(#NAME?)", "5"},
                              {"ERROR.TYPE(#NUM!)", "6"},
                              {"ERROR.TYPE(#N/A)", "7"},
                              {"ERROR.TYPE(A4)", "2"},
                              {"ERROR.TYPE(7)", "#N/A"},
                              {"ERROR.TYPE(A9)", "#N/A"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
