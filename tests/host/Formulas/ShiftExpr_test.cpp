#include "Formulas/ShiftExpr.h"

#include <string_view>

#include <gtest/gtest.h>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Expr;

class ShiftExprTest : public ::testing::Test {
protected:
  Expr shift(std::string_view formula, int columns, int rows, bool wrapAround = true) {
    auto const& sheet = document.sheet();
    return *shiftExpr(parseExpr(formula), sheet, columns, rows, sheet.getDocTableIndex(),
                      wrapAround);
  }

  FormulaDocument document;
};

struct ShiftCase {
  std::string_view formula;
  int columns;
  int rows;
  std::string_view shifted;
};

TEST_F(ShiftExprTest, MovesRelativeCoordinatesOnly) {
  constexpr ShiftCase cases[] = {
      {"A1", 1, 2, "B3"},
      {"$A1", 1, 2, "$A3"},
      {"A$1", 1, 2, "B$1"},
      {"$A$1", 1, 2, "$A$1"},
      {"C5", -2, -4, "A1"},
      {"A1:B2", 1, 1, "B2:C3"},
      {"$A1:B$2", 1, 1, "$A2:C$2"},
      {"Sheet1!A1", 1, 1, "Sheet1!B2"},
      {"'Other sheet'!$A1", 1, 1, "'Other sheet'!$A2"},
      {"A:B", 1, 5, "B:C"},
      {"$A:B", 1, 5, "$A:C"},
      {"2:3", 5, 1, "3:4"},
      {"$2:3", 5, 1, "$2:4"},
      {"A1:A1048576", 1, 7, "B:B"},
      {"SUM(A1,$B$2,C3)+D4", 1, 1, "SUM(B2,$B$2,D4)+E5"},
      {"\"A1\"&Name&Table1[A1]", 1, 1, "\"A1\"&Name&Table1[A1]"},
      {"1+2", 3, 3, "1+2"},
  };
  for (ShiftCase const& test : cases) {
    EXPECT_EQ(shift(test.formula, test.columns, test.rows), parseExpr(test.shifted))
        << test.formula;
  }
}

TEST_F(ShiftExprTest, WrapsAroundTheEdgesOfTheSheet) {
  constexpr ShiftCase cases[] = {
      {"A1", -1, 0, "XFD1"},      {"XFD4", 1, 0, "A4"},
      {"XFD4", 3, 0, "C4"},       {"A1", 0, -1, "A1048576"},
      {"$C1048571", 0, 6, "$C1"}, {"A1", 16384, 1048576, "A1"},
      {"A1", -16385, 0, "XFD1"},  {"Sheet1!XFD1", 1, 0, "Sheet1!A1"},
  };
  for (ShiftCase const& test : cases) {
    EXPECT_EQ(shift(test.formula, test.columns, test.rows), parseExpr(test.shifted))
        << test.formula;
  }
}

TEST_F(ShiftExprTest, CornersThatWrapAreOrderedWhereTheyAreRead) {
  auto const calc = [&](Expr const& expr) { return describe(document.calcResult(expr, "A1")); };
  EXPECT_EQ(calc(shift("XFD1:A1", 1, 0)), "[0!0,0:1,2]");
  EXPECT_EQ(calc(shift("A1:XFC1", 2, 0)), "[0!0,0:1,3]");
  EXPECT_EQ(calc(shift("C1048575:C1048576", 0, 1)), "[0!0,2:1048576,3]");
}

TEST_F(ShiftExprTest, WithoutWrappingWhatLeavesTheSheetIsAReferenceError) {
  auto const calc = [&](Expr const& expr) { return describe(document.calcResult(expr, "A1")); };
  EXPECT_EQ(calc(shift("A1+1", -1, 0, false)), "#REF!");
  EXPECT_EQ(calc(shift("A1:B2", 0, -1, false)), "#REF!");
  EXPECT_EQ(calc(shift("XFD1", 1, 0, false)), "#REF!");
  EXPECT_EQ(calc(shift("A1048576", 0, 1, false)), "#REF!");
  EXPECT_EQ(calc(shift("IF(FALSE,A1,5)", -1, 0, false)), "5");
  EXPECT_EQ(shift("$A1", -1, 1, false), parseExpr("$A2"));
  EXPECT_EQ(shift("A1", 1, 1, false), parseExpr("B2"));
}

TEST_F(ShiftExprTest, LeavesTheOriginalAlone) {
  Expr const original = parseExpr("A1+B$2");
  auto const& sheet = document.sheet();
  static_cast<void>(shiftExpr(original, sheet, 3, 3, sheet.getDocTableIndex(), true));
  EXPECT_EQ(original, parseExpr("A1+B$2"));
}

TEST_F(ShiftExprTest, KeepsWhatIsKnownOfTheFormula) {
  EXPECT_EQ(shift("A1+TODAY()", 1, 1).getTraits(), parseExpr("A1+TODAY()").getTraits());
}

/// A result, or the limit that an evaluation meets: around the edges a range may grow to nearly a
/// whole sheet.
template <class Evaluate>
std::string describeOutcome(Evaluate const& evaluate) {
  try {
    return describe(evaluate());
  } catch (EvaluationLimitError const& error) {
    return error.what();
  }
}

TEST_F(ShiftExprTest, EvaluationUnderAnOffsetEqualsThatOfTheShiftedFormula) {
  for (unsigned long row = 0; row < 6; ++row) {
    for (unsigned long column = 0; column < 6; ++column) {
      document.sheet().table.setValue(
          row, column, FormulaModel::FormulaNumber{FloatNumber(double(row * 10 + column))});
    }
  }
  document.define("Here", "A1");
  RuntimeDependenciesResolver resolver;
  EvaluationSession session;
  for (std::string_view const formula :
       {"A1", "$A1+B$2", "SUM(A1:B2)", "XFD1048576", "SUM(XFD1:A1)", "A1:B2", "Here*2", "SUM(B:C)",
        "SUM(2:3)", "IF(A1>2,B2,C3)", "Sheet1!B2", "COUNTIF(A1:C3,\">10\")", "SUM(A1:B2*2)",
        "LET(x,A1,x+1)"}) {
    Expr const expr = parseExpr(formula);
    for (int rows = -2; rows <= 3; ++rows) {
      for (int columns = -2; columns <= 3; ++columns) {
        Context const context(&document.sheet(), RowIndex(2), ColumnIndex(2), boost::none,
                              DOM::RowID(0), DOM::ColumnID(0));
        auto const shifted = shiftExpr(expr, document.sheet(), columns, rows,
                                       document.sheet().getDocTableIndex(), true);
        EXPECT_EQ(describeOutcome([&] {
                    return calcShiftedExpr(expr, columns, rows, context, document, resolver,
                                           session);
                  }),
                  describeOutcome([&] { return calcExpr(*shifted, context, document, resolver); }))
            << formula << " by " << columns << ", " << rows;
      }
    }
  }
}

}  // namespace

}  // namespace Zorv::Formulas
