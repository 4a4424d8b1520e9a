#include "Formulas/ParseExpr.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

struct Refusal {
  std::string_view formula;
  std::size_t position;
  std::string_view reason;
};

std::string repeat(std::string_view text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) {
    result += text;
  }
  return result;
}

void expectRefusal(std::string const& formula, std::size_t position, std::string_view reason) {
  try {
    static_cast<void>(parseExpr(formula));
    ADD_FAILURE() << "parsed: " << formula.substr(0, 80);
  } catch (FormulaParseError const& error) {
    EXPECT_EQ(error.getPosition(), position) << formula.substr(0, 80);
    EXPECT_EQ(error.getReason(), reason) << formula.substr(0, 80);
    EXPECT_EQ(error.what(), std::string(reason) + " at position " + std::to_string(position + 1));
  }
}

TEST(ParseExpr, RefusesMalformedTextWithItsPlace) {
  constexpr Refusal refusals[] = {
      {"", 0, "the formula is empty"},
      {"=", 1, "the formula is empty"},
      {"  ", 2, "the formula is empty"},
      {"1+", 2, "the formula ends where a value is wanted"},
      {"*2", 0, "a value is missing"},
      {"=1 2", 3, "an operator is missing"},
      {"A1 2", 3, "an operator is missing"},
      {"1 A1", 2, "an operator is missing"},
      {"\"a\" A1", 4, "an operator is missing"},
      {"(1", 2, "a closing parenthesis is missing"},
      {"1)", 1, "an operator is missing"},
      {"()", 1, "a value is missing"},
      {"SUM(1", 5, "a closing parenthesis is missing"},
      {"SUM(1;2)", 5, "a closing parenthesis is missing"},
      {"\"abc", 0, "a quote that does not end"},
      {"1+\"abc\"\"", 2, "a quote that does not end"},
      {"'Sheet", 0, "a quote that does not end"},
      {"'Sheet'", 7, "an exclamation mark is missing"},
      {"'Sheet'!", 8, "a reference is missing"},
      {"Sheet1!5", 7, "a reference is missing"},
      {"Table1[Col", 6, "a bracket that does not close"},
      {"#NOPE!", 0, "an unknown error value"},
      {"1+~2", 2, "an unexpected character"},
      {"A1:", 3, "the formula ends where a value is wanted"},
      {"{1,2", 4, "a closing brace is missing"},
      {"{1,2;3}", 0, "the rows of an array differ in length"},
      {"{A1}", 1, "a constant is missing"},
      {"{}", 1, "a constant is missing"},
      {"{-\"a\"}", 2, "a number is missing"},
      {"{1,,2}", 3, "a constant is missing"},
      {"1e999", 0, "a number out of range"},
      {"1+0.1E400", 2, "a number out of range"},
      {"%5", 0, "a value is missing"},
      {"1=>2", 2, "a value is missing"},
      {",1", 0, "a value is missing"},
      {"1,2", 1, "an operator is missing"},
      {"1:A1", 2, "a row of the sheet is missing"},
      {"A1!", 3, "a reference is missing"},
      {"SUM(A1:A3", 9, "a closing parenthesis is missing"},
      {"MOD(1)", 0, "MOD does not take 1 arguments"},
      {"1+IF()", 2, "IF does not take 0 arguments"},
      {"COUNTIFS(A1:A2,1,A1:A2)", 0, "COUNTIFS does not take 3 arguments"},
      {"TODAY(1)", 0, "TODAY does not take 1 arguments"},
      {"Table1[[#Nope]]", 14, "an unknown part of a table"},
      {"Table1[[A],[B]]", 14, "more than one range of columns"},
      {"Table1[[#Data]:[B]]", 15, "a column is missing"},
      {"Table1[[A]x]", 10, "a comma is missing"},
  };
  for (Refusal const& refusal : refusals) {
    expectRefusal(std::string(refusal.formula), refusal.position, refusal.reason);
  }
}

/// As spreadsheet programs read them; no defined name may look like a cell.
TEST(ParseExpr, LeadingZerosOfARowAreSkipped) {
  EXPECT_EQ(parseExpr("A01+$B$007"), parseExpr("A1+$B$7"));
  EXPECT_EQ(parseExpr("SUM(A01:B02)"), parseExpr("SUM(A1:B2)"));
  EXPECT_EQ(parseExpr("SUM(01:$03)"), parseExpr("SUM(1:$3)"));
  EXPECT_NE(parseExpr("A00"), parseExpr("A1"));
}

TEST(ParseExpr, RefusesReferencesOffTheSheet) {
  constexpr Refusal refusals[] = {
      {"A1048577", 0, "a reference off the sheet"},
      {"1+A1:A1048577", 5, "a reference off the sheet"},
      {"$A$9999999", 0, "a reference off the sheet"},
      {"Sheet1!XFE1", 7, "a reference off the sheet"},
      {"XFE1:XFE2", 0, "a reference off the sheet"},
      {"$XFE$1", 0, "a reference off the sheet"},
      {"1:1048577", 2, "a row of the sheet is missing"},
      {"1048577:1048577", 0, "a row of the sheet is missing"},
      {"0:1", 0, "a row of the sheet is missing"},
      {"$A$0", 0, "a reference off the sheet or out of form"},
      {"$A:$XFE", 0, "a reference off the sheet or out of form"},
      {"A$", 0, "a reference off the sheet or out of form"},
  };
  for (Refusal const& refusal : refusals) {
    expectRefusal(std::string(refusal.formula), refusal.position, refusal.reason);
  }
  EXPECT_NO_THROW(static_cast<void>(parseExpr("XFD1048576")));
  EXPECT_NO_THROW(static_cast<void>(parseExpr("1048576:1048576")));
}

TEST(ParseExpr, ReadsWhatIsNoCellAsAName) {
  for (std::string_view const text :
       {"XFE1", "ABCD1", "A0", "Tax_2020", "_x", "\\a", "Größe", "A.B", "R1C1", "TRUEX", "A1B"}) {
    auto const expr = parseExpr(text);
    auto const& nodes = expr.getParts().nodes;
    ASSERT_EQ(nodes.size(), 1U) << text;
    EXPECT_EQ(nodes.back().kind, DOM::FormulaSyntaxTree::NodeKind::Name) << text;
  }
}

TEST(ParseExpr, LengthIsBoundedInCharacters) {
  EXPECT_NO_THROW(static_cast<void>(parseExpr('"' + std::string(8190, 'x') + '"')));
  EXPECT_NO_THROW(static_cast<void>(parseExpr('"' + repeat("ä", 8190) + '"')));
  expectRefusal('"' + std::string(8191, 'x') + '"', 0,
                "the formula is longer than 8192 characters");
}

TEST(ParseExpr, NestingIsBounded) {
  constexpr std::string_view reason = "the formula nests deeper than 256 levels";
  EXPECT_NO_THROW(static_cast<void>(parseExpr(repeat("(", 255) + "1" + repeat(")", 255))));
  expectRefusal(repeat("(", 256) + "1" + repeat(")", 256), 256, reason);
  expectRefusal(repeat("(", 8000), 256, reason);
  EXPECT_NO_THROW(static_cast<void>(parseExpr(repeat("ABS(", 255) + "1" + repeat(")", 255))));
  expectRefusal(repeat("ABS(", 256) + "1" + repeat(")", 256), 1024, reason);
  EXPECT_NO_THROW(static_cast<void>(parseExpr(repeat("-", 255) + "1")));
  expectRefusal(repeat("-", 8000) + "1", 255, reason);
  expectRefusal(repeat("@", 8000) + "A1", 255, reason);
  EXPECT_NO_THROW(static_cast<void>(parseExpr("1" + repeat("%", 255))));
  expectRefusal("1" + repeat("%", 8000), 257, reason);
  expectRefusal("(A1" + repeat(",A1", 2000) + ")", 771, reason);
  EXPECT_NO_THROW(static_cast<void>(parseExpr("1" + repeat("&1", 4000))));
}

TEST(ParseExpr, OnlyNamesMayBeUnionsWithoutParentheses) {
  EXPECT_EQ(parseDefinedName("S!$A$1,S!$A$3"), parseExpr("(S!$A$1,S!$A$3)"));
  EXPECT_EQ(parseDefinedName("=A1,B1:B2,C:C"), parseExpr("(A1,B1:B2,C:C)"));
  EXPECT_EQ(parseDefinedName("SUM(A1)"), parseExpr("SUM(A1)"));
  EXPECT_THROW(static_cast<void>(parseDefinedName("A1,")), FormulaParseError);
  expectRefusal("S!$A$1,S!$A$3", 6, "an operator is missing");
}

TEST(ParseExpr, KeepsTheSheetsThatItCannotReach) {
  struct Case {
    std::string_view formula;
    std::string_view sheet;
  };
  constexpr Case cases[] = {
      {"[1]Sheet1!A1", "[1]Sheet1"},
      {"'[1]My Sheet'!A1", "[1]My Sheet"},
      {"'C:\\dir\\[Book.xlsx]Sheet1'!A1", "C:\\dir\\[Book.xlsx]Sheet1"},
      {"[1]First:Last!A1", "[1]First:Last"},
      {"First:Last!A1", "First:Last"},
      {"#REF!A1", ""},
  };
  for (Case const& test : cases) {
    auto const expr = parseExpr(test.formula);
    auto const& parts = expr.getParts();
    ASSERT_EQ(parts.references.size(), 1U) << test.formula;
    EXPECT_EQ(parts.texts[parts.references.front().sheet], test.sheet) << test.formula;
  }
}

TEST(ParseExpr, SpacesAndLetterCaseOfNamesOfFunctionsDoNotMatter) {
  EXPECT_EQ(parseExpr(" sum( A1 , 2 )\n"), parseExpr("=SUM(A1,2)"));
  EXPECT_EQ(parseExpr("_xlfn.XOR(TRUE)"), parseExpr("xor(true)"));
  EXPECT_EQ(parseExpr("a$1:$b2"), parseExpr("A$1:$B2"));
  EXPECT_FALSE(parseExpr("A1") == parseExpr("$A1"));
  EXPECT_FALSE(parseExpr("1+2") == parseExpr("1-2"));
}

TEST(ParseExpr, RangesOverAllRowsAreWholeColumns) {
  EXPECT_EQ(parseExpr("A1:B1048576"), parseExpr("A:B"));
  EXPECT_EQ(parseExpr("$A$1:$B$1048576"), parseExpr("$A:$B"));
  EXPECT_EQ(parseExpr("A2:XFD3"), parseExpr("2:3"));
}

struct TraitsCase {
  std::string_view formula;
  bool hasRelativeReferences;
  bool callsVolatileFunctions;
  bool dependsOnCell;
  bool usesNames;
};

TEST(ParseExpr, TellsOnWhatAFormulaDepends) {
  constexpr TraitsCase cases[] = {
      {"1+2", false, false, false, false},
      {"$A$1>5", false, false, false, false},
      {"A1>5", true, false, true, false},
      {"A$1", true, false, true, false},
      {"SUM($A$1:$A$9)", false, false, false, false},
      {"SUM($A:$B)", false, false, false, false},
      {"SUM(A:B)", true, false, true, false},
      {"SUM($1:2)", true, false, true, false},
      {"$A$1:$A$9>5", false, false, true, false},
      {"SUM($A$1:$A$9*2)", false, false, false, false},
      {"COUNTIF($A$1:$A$9,5)", false, false, false, false},
      {"COUNTIF($A$1:$A$9,$B$1:$B$9)", false, false, true, false},
      {"ABS($A$1:$A$9)", false, false, true, false},
      {"SUM(IF($A$1:$A$9>2,1))", false, false, false, false},
      {"IF(TRUE,$A$1:$A$9)+1", false, false, true, false},
      {"SUM(@$A$1:$A$9)", false, false, true, false},
      {"ROW()", false, false, true, false},
      {"ROW($A$1)", false, false, false, false},
      {"TODAY()>$A$1", false, true, false, false},
      {"NOW()", false, true, false, false},
      {"Rate", false, false, true, true},
      {"Table1[A]", false, false, false, false},
      {"SUM(Table1[A])", false, false, false, false},
      {"Table1[A]+1", false, false, true, false},
      {"Table1[@A]", false, false, true, false},
      {"SUM([A])", false, false, true, false},
      {"LET(x,$A$1:$A$9,x+1)", false, false, true, false},
      {"NoSuch($A$1)", false, false, true, true},
      {"LAMBDA(x,$A$1:$A$9+x)(1)", false, false, true, false},
  };
  for (TraitsCase const& test : cases) {
    auto const expected =
        DOM::FormulaSyntaxTree::ExprTraits{test.hasRelativeReferences, test.callsVolatileFunctions,
                                           test.dependsOnCell, test.usesNames};
    EXPECT_EQ(parseExpr(test.formula).getTraits(), expected) << test.formula;
  }
}

}  // namespace

}  // namespace Zorv::Formulas
