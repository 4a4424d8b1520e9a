#include "Formulas/CalcExpr.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class CalcExprTest : public ::testing::Test {
protected:
  FormulaDocument document;
};

TEST_F(CalcExprTest, ConstantsAreThemselves) {
  expectResults(document, {
                              {"1.5", "1.5"},         {".5", "0.5"},
                              {"1e-999", "0"},        {"0", "0"},
                              {"00.0", "0"},          {"2E3", "2000"},
                              {"1e-2", "0.01"},       {"\"a \"\"b\"\"\"", "\"a \"b\"\""},
                              {"TRUE", "TRUE"},       {"false", "FALSE"},
                              {"#REF!", "#REF!"},     {"#ref!", "#REF!"},
                              {"#Div/0!", "#DIV/0!"}, {"#N/A", "#N/A"},
                              {"#NAME?", "#NAME?"},   {"#NULL!", "#NULL!"},
                              {"#NUM!", "#NUM!"},     {"#VALUE!", "#VALUE!"},
                              {"= 1", "1"},           {" =1 ", "1"},
                          });
}

TEST_F(CalcExprTest, AnExpressionWithoutTextIsEmpty) {
  EXPECT_EQ(describe(document.calcResult({}, "A1")), "empty");
}

TEST_F(CalcExprTest, ConstantExpressionsGiveTheirValue) {
  using DOM::FormulaSyntaxTree::Expr;
  using namespace FormulaModel;
  auto const calc = [&](FormulaValue const& value) {
    return describe(document.calcResult(Expr::constant(value), "A1"));
  };
  EXPECT_EQ(calc(FormulaEmpty{}), "empty");
  EXPECT_EQ(calc(FormulaNumber{FloatNumber(2.5)}), "2.5");
  EXPECT_EQ(calc(FormulaString{"text"}), "\"text\"");
  EXPECT_EQ(calc(FormulaBoolean{true}), "TRUE");
  EXPECT_EQ(calc(FormulaError{FormulaErrorCode::Name}), "#NAME?");
}

TEST_F(CalcExprTest, OperatorsBindInTheOrderOfSpreadsheets) {
  expectResults(document, {
                              {"1+2*3", "7"},
                              {"(1+2)*3", "9"},
                              {"2*3^2", "18"},
                              {"-2^2", "4"},
                              {"0-2^2", "-4"},
                              {"2^-1", "0.5"},
                              {"2^3^2", "64"},
                              {"8/2/2", "2"},
                              {"10-3-2", "5"},
                              {"50%", "0.5"},
                              {"200%%", "0.02"},
                              {"-50%", "-0.5"},
                              {"10%^2", "0.010000000000000002"},
                              {"--3", "3"},
                              {"+-+3", "-3"},
                              {"1&2+3", "\"15\""},
                              {"1+1&1+1=\"22\"", "TRUE"},
                              {"1<2=TRUE", "TRUE"},
                              {"3>2>1", "TRUE"},
                              {"2-1<>1", "FALSE"},
                              {"2>=2", "TRUE"},
                              {"2<=1", "FALSE"},
                          });
}

TEST_F(CalcExprTest, ArithmeticConvertsItsOperands) {
  document.set("A1", "empty");
  expectResults(document, {
                              {"\"5\"+1", "6"},
                              {"\" 5 \"*2", "10"},
                              {"\"1,234.5\"+0", "1234.5"},
                              {"\"50%\"+0", "0.5"},
                              {"\"-1.5e2\"+0", "-150"},
                              {"\"abc\"+1", "#VALUE!"},
                              {"\"\"+1", "#VALUE!"},
                              {"\"12,34\"+0", "#VALUE!"},
                              {"\"1 2\"+0", "#VALUE!"},
                              {"\"inf\"+0", "#VALUE!"},
                              {"\"0x10\"+0", "#VALUE!"},
                              {"TRUE+1", "2"},
                              {"A1+1", "1"},
                              {"Z99+1", "1"},
                              {"-\"5\"", "-5"},
                              {"+\"a\"", "\"a\""},
                              {"-TRUE", "-1"},
                              {"-0", "0"},
                              {"\"10\"%", "0.1"},
                          });
}

TEST_F(CalcExprTest, ResultsAreNeverInfiniteOrUndefined) {
  expectResults(document, {
                              {"1/0", "#DIV/0!"},
                              {"0/0", "#DIV/0!"},
                              {"0^0", "#NUM!"},
                              {"0^-1", "#DIV/0!"},
                              {"(-8)^(1/3)", "#NUM!"},
                              {"1e308*10", "#NUM!"},
                              {"-1e308-1e308", "#NUM!"},
                              {"10^400", "#NUM!"},
                          });
}

TEST_F(CalcExprTest, CellsThatHoldNoNumberAtAllAreNumberErrors) {
  document.sheet().table.setValue(
      0, 0, FormulaModel::FormulaNumber{FloatNumber(std::numeric_limits<double>::quiet_NaN())});
  EXPECT_EQ(document.calc("A1"), "#NUM!");
  EXPECT_EQ(document.calc("A1>1"), "#NUM!");
}

TEST_F(CalcExprTest, DecimalFractionsCompareAsWritten) {
  expectResults(document, {
                              {"0.1+0.2=0.3", "TRUE"},
                              {"0.1+0.2-0.3", "0"},
                              {"0.3-0.1<0.2", "FALSE"},
                              {"1.0000001=1", "FALSE"},
                          });
}

TEST_F(CalcExprTest, ErrorsPassThroughFromTheLeft) {
  expectResults(document, {
                              {"#N/A+#REF!", "#N/A"},
                              {"1+#REF!", "#REF!"},
                              {"#N/A=#N/A", "#N/A"},
                              {"\"a\"&#NUM!", "#NUM!"},
                              {"-#NAME?", "#NAME?"},
                              {"#NULL!%", "#NULL!"},
                              {"\"a\"+#N/A", "#N/A"},
                          });
}

TEST_F(CalcExprTest, ComparisonsOrderKindsAndFoldLetters) {
  document.set("A1", "empty");
  document.set("B1", "\"\"");
  expectResults(document, {
                              {"\"abc\"=\"ABC\"", "TRUE"},
                              {"\"Ä\"=\"ä\"", "TRUE"},
                              {"\"a\"<\"B\"", "TRUE"},
                              {"\"a\"<\"aa\"", "TRUE"},
                              {"99<\"1\"", "TRUE"},
                              {"\"zz\"<FALSE", "TRUE"},
                              {"99<FALSE", "TRUE"},
                              {"1=\"1\"", "FALSE"},
                              {"1=TRUE", "FALSE"},
                              {"FALSE<TRUE", "TRUE"},
                              {"A1=0", "TRUE"},
                              {"A1=\"\"", "TRUE"},
                              {"A1=FALSE", "TRUE"},
                              {"A1=B1", "TRUE"},
                              {"A1=Z9", "TRUE"},
                              {"A1<1", "TRUE"},
                              {"A1>\"\"", "FALSE"},
                              {"\"a\">A1", "TRUE"},
                              {"B1=0", "FALSE"},
                          });
}

TEST_F(CalcExprTest, ConcatenationWritesValuesInGeneralFormat) {
  expectResults(document, {
                              {"1&2", "\"12\""},
                              {"0.1+0.2&\"\"", "\"0.3\""},
                              {"1/3&\"\"", "\"0.333333333333333\""},
                              {"TRUE&1", "\"TRUE1\""},
                              {"Z9&\"x\"", "\"x\""},
                          });
}

TEST_F(CalcExprTest, NumbersInTextsFollowTheLocale) {
  document.setLocale(OfficeUtils::LocaleContext("de-DE"));
  expectResults(document, {
                              {"\"1.234,5\"+0", "1234.5"},
                              {"\"1,5\"+0", "1.5"},
                              {"1.5&\"\"", "\"1,5\""},
                          });
}

TEST_F(CalcExprTest, TextsLongerThanACellAreValueErrors) {
  document.set("A1", '"' + std::string(32767, 'x') + '"');
  EXPECT_EQ(document.calc("LEN(A1&\"\")"), "32767");
  EXPECT_EQ(document.calc("A1&\"x\""), "#VALUE!");
}

TEST_F(CalcExprTest, AReferenceToOneCellGivesItsValue) {
  document.set("A1", "7");
  document.set("B2", "\"text\"");
  document.set("C3", "empty");
  expectResults(document, {
                              {"A1", "7"},
                              {"$A$1", "7"},
                              {"(A1)", "7"},
                              {"+A1", "7"},
                              {"a1", "7"},
                              {"A1:A1", "7"},
                              {"B$2", "\"text\""},
                              {"C3", "empty"},
                              {"D4", "empty"},
                              {"sheet1!A1", "7"},
                          });
}

TEST_F(CalcExprTest, AReferenceToMoreCellsIsAReference) {
  expectResults(document, {
                              {"A1:A3", "[0!0,0:3,1]"},
                              {"(A1:A3)", "[0!0,0:3,1]"},
                              {"$B$2:A1", "[0!0,0:2,2]"},
                              {"A:B", "[0!0,0:1048576,2]"},
                              {"$C:$C", "[0!0,2:1048576,3]"},
                              {"2:3", "[0!1,0:3,16384]"},
                              {"$2:3", "[0!1,0:3,16384]"},
                              {"A1:B2:C3", "[0!0,0:3,3]"},
                              {"(A1,B2:C3)", "[0!0,0:1,1][0!1,1:3,3]"},
                              {"IF(TRUE,A1:A3)", "[0!0,0:3,1]"},
                          });
}

TEST_F(CalcExprTest, SpacesIntersectReferences) {
  document.set("B2", "5");
  expectResults(document, {
                              {"A2:C2 B1:B9", "5"},
                              {"A1:C3 B2:D4", "[0!1,1:3,3]"},
                              {"A1 B2", "#NULL!"},
                              {"SUM(A2:C2 B:B)", "5"},
                              {"1 + 2", "3"},
                              {"( 1 )", "1"},
                              {"SUM( B2 , B2 )", "10"},
                          });
}

TEST_F(CalcExprTest, OneValueOutOfARangeLiesInTheRowOrColumnOfTheCell) {
  document.setColumn("E2", {"10", "40", "20"});
  EXPECT_EQ(document.calc("E2:E10>30", "A2"), "FALSE");
  EXPECT_EQ(document.calc("E2:E10>30", "A3"), "TRUE");
  EXPECT_EQ(document.calc("$E$2:$E$10>30", "A3"), "TRUE");
  EXPECT_EQ(document.calc("E2:E10>30", "A1"), "#VALUE!");
  EXPECT_EQ(document.calc("E2:E10>30", "A11"), "#VALUE!");
  EXPECT_EQ(document.calc("E:E+1", "H4"), "21");
  EXPECT_EQ(document.calc("2:2+1", "E9"), "11");
  EXPECT_EQ(document.calc("-D2:F2", "E9"), "-10");
  EXPECT_EQ(document.calc("D2:F4+1", "E3"), "#VALUE!");
  EXPECT_EQ(document.calc("ABS(E2:E4)", "A4"), "20");
  EXPECT_EQ(document.calc("@E2:E4", "A4"), "20");
  EXPECT_EQ(document.calc("SUM(@E2:E4)", "A4"), "20");
  EXPECT_EQ(document.calc("(A1,E2)+1", "A4"), "#VALUE!");
}

TEST_F(CalcExprTest, FunctionsOfRangesEvaluateTheirArgumentsByElement) {
  document.setColumn("A1", {"1", "2", "3"});
  document.setColumn("B1", {"10", "20", "30"});
  expectResults(document, {
                              {"SUM(A1:A3*B1:B3)", "140"},
                              {"OR(A1:A3=2)", "TRUE"},
                              {"AND(A1:A3<3)", "FALSE"},
                              {"MAX(IF(A1:A3<3,B1:B3))", "20"},
                              {"SUM(-A1:A3)", "-6"},
                              {"SUM(LEN(B1:B3))", "6"},
                              {"SUM(A1:A3*{1,10})", "66"},
                              {"SUM(IF(A1:A3>1,1,0))", "2"},
                              {"SUM(A:A*B:B)", "140"},
                              {"COUNT(A:A+0)", "1048576"},
                              {"SUM(A1:A3+B1:B2)", "#N/A"},
                              {"SUM(A1:A3^2)", "14"},
                              {"SUM(IFERROR(1/(A1:A3-1),0))", "1.5"},
                          });
}

TEST_F(CalcExprTest, ArraysSpreadAndTheirFirstValueIsLeftOver) {
  expectResults(document, {
                              {"{1,2;3,4}", "1"},
                              {"{5,6}*2", "10"},
                              {"SUM({1,2;3,4})", "10"},
                              {"SUM({1,2}+{10;20})", "66"},
                              {"SUM(LEN({\"a\",\"bb\"}))", "3"},
                              {"{-1,+2}", "-1"},
                              {"SUM({TRUE,\"3\",4})", "4"},
                              {"{#N/A,1}", "#N/A"},
                              {"OR(2={1,2,3})", "TRUE"},
                              {"IF({1,0},\"a\",\"b\")", "\"a\""},
                          });
}

TEST_F(CalcExprTest, ArrayFormulasGiveArrays) {
  document.setColumn("A1", {"1", "2", "3"});
  EXPECT_EQ(document.calcArray("A1:A3*2"), "{2;4;6}");
  EXPECT_EQ(document.calcArray("A1:A3"), "{1;2;3}");
  EXPECT_EQ(document.calcArray("{1,2;3,4}"), "{1,2;3,4}");
  EXPECT_EQ(document.calcArray("A1:A3+{1,2}"), "{2,3;3,4;4,5}");
  EXPECT_EQ(document.calcArray("A1:A2+{1;2;3}"), "{2;4;#N/A}");
  EXPECT_EQ(document.calcArray("A1+1"), "2");
  EXPECT_EQ(document.calcArray("IF(A1:A3>1,\"x\",)"), "{0;\"x\";\"x\"}");
  EXPECT_EQ(document.calcArray("@A1:A3"), "#VALUE!");
}

TEST_F(CalcExprTest, OtherSheetsAreFoundByName) {
  document.addSheet("My Sheet").table.setValue(0, 0, FormulaModel::FormulaNumber{FloatNumber(3)});
  document.addSheet("It's").table.setValue(1, 0, FormulaModel::FormulaNumber{FloatNumber(4)});
  expectResults(document, {
                              {"'My Sheet'!A1", "3"},
                              {"'my sheet'!$A$1+1", "4"},
                              {"'It''s'!A2", "4"},
                              {"SUM('My Sheet'!A:A)", "3"},
                              {"SUM('My Sheet'!1:1)", "3"},
                              {"'My Sheet'!A1:B2", "[1!0,0:2,2]"},
                              {"'My Sheet'!A1:'My Sheet'!B2", "[1!0,0:2,2]"},
                              {"A1:'My Sheet'!B2", "#VALUE!"},
                              {"Nowhere!A1", "#REF!"},
                              {"Sheet1!#REF!", "#REF!"},
                              {"#REF!A1", "#REF!"},
                              {"#REF!$A$1:$B$2", "#REF!"},
                          });
}

TEST_F(CalcExprTest, WhatLiesOutOfReachIsAReferenceError) {
  expectResults(document, {
                              {"[1]Sheet1!A1", "#REF!"},
                              {"SUM([1]Sheet1!$A$1:$B$2)", "#REF!"},
                              {"'[1]My Sheet'!A1", "#REF!"},
                              {"'C:\\dir\\[Book.xlsx]Sheet1'!A1", "#REF!"},
                              {"[1]!Name", "#REF!"},
                              {"Sheet1:Sheet3!A1", "#REF!"},
                              {"'Sheet1:Sheet 3'!A1:B2", "#REF!"},
                              {"A1#", "#REF!"},
                          });
}

TEST_F(CalcExprTest, DefinedNamesStandForTheirFormulas) {
  document.setColumn("A1", {"1", "2", "3"});
  document.addSheet("Other").table.setValue(0, 0, FormulaModel::FormulaNumber{FloatNumber(9)});
  document.define("Rate", "0.5");
  document.define("Data", "Sheet1!$A$1:$A$3");
  document.define("Left", "Sheet1!XFD1");
  document.define("Local", "1");
  document.define("Local", "2", 0);
  document.define("Local", "3", 1);
  expectResults(document, {
                              {"Rate*2", "1"},
                              {"rate", "0.5"},
                              {"SUM(Data)", "6"},
                              {"Data", "[0!0,0:3,1]"},
                              {"Local", "2"},
                              {"Other!Local", "3"},
                              {"Nothing+1", "#NAME?"},
                              {"Nowhere!Rate", "#REF!"},
                          });
  EXPECT_EQ(document.calc("Left", "B2"), "2");
  EXPECT_EQ(document.calc("Data+1", "C3"), "4");
}

TEST_F(CalcExprTest, NamesThatStandForThemselvesMeetALimit) {
  document.define("Round", "Round+1");
  document.define("Ping", "Pong");
  document.define("Pong", "SUM(Ping)");
  expectLimit(document, "Round", "nests deeper than");
  expectLimit(document, "Ping", "nests deeper than");
}

TEST_F(CalcExprTest, NamesThatAreDoubledManyTimesAreEvaluated) {
  document.define("Power_0", "1");
  for (int i = 1; i <= 16; ++i) {
    std::string const before = "Power_" + std::to_string(i - 1);
    document.define("Power_" + std::to_string(i), before + "+" + before);
  }
  EXPECT_EQ(document.calc("Power_16"), "65536");
}

TEST_F(CalcExprTest, NamesMayBeUnionsWithoutParentheses) {
  document.setColumn("A1", {"1", "2", "4"});
  document.define("Ends", "Sheet1!$A$1,Sheet1!$A$3");
  expectResults(document, {
                              {"SUM(Ends)", "5"},
                              {"Ends", "[0!0,0:1,1][0!2,0:3,1]"},
                              {"COUNT(Ends,A2)", "3"},
                          });
}

TEST_F(CalcExprTest, ABlankBetweenReferencesIsTheirIntersection) {
  document.setColumn("A1", {"1", "2", "4"});
  document.setColumn("B1", {"8", "16", "32"});
  expectResults(document, {
                              {"SUM(A:A 1:1)", "1"},
                              {"SUM(1:2 A:A)", "3"},
                              {"SUM(A1:B2 B2:C3)", "16"},
                              {"SUM(A:B 2:3 B:B)", "48"},
                              {"SUM((A1:A2,B3) A:B)", "35"},
                              {"1:1 A:A", "1"},
                              {"B2:C3 C3:D4", "empty"},
                              {"A1:A2 B1:B2", "#NULL!"},
                              {"SUM(A1:A2 Sheet1!B1:B2)", "#NULL!"},
                          });
}

TEST_F(CalcExprTest, NamesThatStandForThemselvesTwiceEndSoon) {
  // Twice as many uses at each depth: without a bound on their number this would never end.
  document.define("Twice", "Twice+Twice");
  document.define("Left", "Right+Right");
  document.define("Right", "SUM(Left,Left)");
  expectLimit(document, "Twice", "levels");
  expectLimit(document, "Left", "levels");
  expectLimit(document, "IFERROR(Twice,7)", "levels");
}

TEST_F(CalcExprTest, UnknownFunctionsAreNameErrors) {
  document.set("A1", "1");
  expectResults(document, {
                              {"NOSUCH(1)", "#NAME?"},
                              {"NOSUCH()", "#NAME?"},
                              {"1+_xlfn.NOSUCH(A1:A3,)", "#NAME?"},
                              {"IFERROR(NOSUCH(1),5)", "5"},
                          });
}

TEST_F(CalcExprTest, PrefixesOfLaterFunctionsDoNotMatter) {
  expectResults(document, {
                              {"_xlfn.XOR(TRUE,FALSE)", "TRUE"},
                              {"_XLFN._xlws.SUM(1,2)", "3"},
                              {"sum(1,2)", "3"},
                          });
}

TEST_F(CalcExprTest, LongChainsOfOperatorsAreNoDeepNesting) {
  std::string formula = "1";
  for (int i = 0; i < 4000; ++i) {
    formula += "+1";
  }
  EXPECT_EQ(document.calc(formula), "4001");
}

TEST_F(CalcExprTest, RepeatedRowsOfLargeArraysCount) {
  document.setColumn("A1", {"1", "2", "3"});
  expectResults(document, {
                              {"SUM(A:A+1)", "1048582"},
                              {"AVERAGE(A:A*0+2)", "2"},
                              {"COUNTA(A:A&\"\")", "1048576"},
                              {"MAX(A:A+1)", "4"},
                              {"MIN(5-A:A)", "2"},
                              {"AND(A:A<5)", "TRUE"},
                              {"OR(A:A=3)", "TRUE"},
                              {"MEDIAN(A:B*0+7)", "7"},
                              {"SUM((A:A=2)*(A:A))", "2"},
                              {"SUM(A:A*{1,10})", "66"},
                          });
}

TEST_F(CalcExprTest, ArraysThatNoFunctionShouldWalkMeetALimit) {
  expectLimit(document, "SUM(A:XFD*1)", "33554432 values");
  expectLimit(document, "SUM(A:A*1:1)", "33554432 values");
  expectLimit(document, "IFERROR(SUM(A:XFD*1),7)", "33554432 values");
}

TEST_F(CalcExprTest, WhatNeedsTooMuchMemoryMeetsALimit) {
  document.sheet().table.setValue(1048575, 0, FormulaModel::FormulaNumber{FloatNumber(1)});
  expectLimit(document, "SUM(A:Z*1)", "256 MiB");
}

}  // namespace

}  // namespace Zorv::Formulas
