#include <string>

#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

/// A: ascending numbers with a gap and a text among them; B: their names; C: descending numbers;
/// D: a mix in no order; row 20 repeats some of A and B across.
class SearchTest : public ::testing::Test {
protected:
  SearchTest() {
    document.setColumn("A1", {"10", "20", "\"note\"", "30"});
    document.setColumn("A6", {"40", "40", "50"});
    document.setColumn("B1", {"\"ten\"", "\"twenty\"", "\"n\"", "\"thirty\""});
    document.setColumn("B6", {"\"forty\"", "\"forty again\"", "\"fifty\""});
    document.setColumn("C1", {"9", "7", "7", "3"});
    document.setColumn("D1", {"\"pear\"", "\"Apple\"", "5", "TRUE", "#N/A", "\"a*b\"", "0"});
    document.set("A20", "1");
    document.set("B20", "2");
    document.set("C20", "3");
    document.set("A21", "\"a\"");
    document.set("B21", "\"b\"");
    document.set("C21", "\"c\"");
  }

  FormulaDocument document;
};

TEST_F(SearchTest, MatchFindsEqualValues) {
  expectResults(document, {
                              {"MATCH(20,A1:A8,0)", "2"},
                              {"MATCH(40,A1:A8,0)", "6"},
                              {"MATCH(25,A1:A8,0)", "#N/A"},
                              {"MATCH(50,A:A,0)", "8"},
                              {"MATCH(\"NOTE\",A1:A8,0)", "3"},
                              {"MATCH(\"apple\",D1:D7,0)", "2"},
                              {"MATCH(\"p*\",D1:D7,0)", "1"},
                              {"MATCH(\"?pple\",D1:D7,0)", "2"},
                              {"MATCH(\"a~*b\",D1:D7,0)", "6"},
                              {"MATCH(TRUE,D1:D7,0)", "4"},
                              {"MATCH(FALSE,D1:D7,0)", "#N/A"},
                              {"MATCH(\"5\",D1:D7,0)", "#N/A"},
                              {"MATCH(5,D1:D7,0)", "3"},
                              {"MATCH(Z1,D1:D7,0)", "7"},
                              {"MATCH(#N/A,D1:D7,0)", "#N/A"},
                              {"MATCH(2,A20:C20,0)", "2"},
                              {"MATCH(2,{1,2,3},0)", "2"},
                              {"MATCH(2,2,0)", "1"},
                          });
}

TEST_F(SearchTest, MatchBisectsAscendingValues) {
  expectResults(document, {
                              {"MATCH(20,A1:A8)", "2"},
                              {"MATCH(25,A1:A8,1)", "2"},
                              {"MATCH(39,A1:A8,1)", "4"},
                              {"MATCH(40,A1:A8,1)", "7"},
                              {"MATCH(9,A1:A8,1)", "#N/A"},
                              {"MATCH(9E+307,A1:A8,1)", "8"},
                              {"MATCH(9E+307,A:A,1)", "20"},
                              {"MATCH(\"zzz\",A:A,1)", "21"},
                              {"MATCH(\"zzz\",B1:B3,1)", "3"},
                              {"MATCH(TRUE,A1:A8,1)", "#N/A"},
                              {"MATCH(2.5,{1,2,3},1)", "2"},
                              {"MATCH(2,A1:A8,2)", "#N/A"},
                          });
}

TEST_F(SearchTest, MatchWalksDescendingValues) {
  expectResults(document, {
                              {"MATCH(8,C1:C4,-1)", "1"},
                              {"MATCH(7,C1:C4,-1)", "2"},
                              {"MATCH(4,C1:C4,-1)", "3"},
                              {"MATCH(1,C1:C4,-1)", "4"},
                              {"MATCH(10,C1:C4,-1)", "#N/A"},
                              {"MATCH(1,C:C,-1)", "20"},
                          });
}

TEST_F(SearchTest, MatchNeedsOneRowOrColumn) {
  expectResults(document, {
                              {"MATCH(20,A1:B8,0)", "#N/A"},
                              {"MATCH(20,#REF!,0)", "#REF!"},
                              {"MATCH(20,(A1:A2,A4),0)", "#N/A"},
                              {"MATCH(20,A1:A8,\"x\")", "#VALUE!"},
                          });
}

TEST_F(SearchTest, MatchLooksForEachElement) {
  EXPECT_EQ(document.calcArray("MATCH({10,40,11},A1:A8,0)"), "{1,6,#N/A}");
  EXPECT_EQ(document.calc("MATCH(1,(A1:A8=20)*(B1:B8=\"twenty\"),0)"), "2");
  EXPECT_EQ(document.calc("SUM(--ISNUMBER(MATCH(A1:A2,{20,30},0)))"), "1");
}

TEST_F(SearchTest, VlookupTakesTheValueBeside) {
  expectResults(document, {
                              {"VLOOKUP(20,A1:B8,2,FALSE)", "\"twenty\""},
                              {"VLOOKUP(20,A1:B8,2,0)", "\"twenty\""},
                              {"VLOOKUP(20,A:B,2,)", "\"twenty\""},
                              {"VLOOKUP(20,A1:B8,1,FALSE)", "20"},
                              {"VLOOKUP(20,A1:B8,2.9,FALSE)", "\"twenty\""},
                              {"VLOOKUP(25,A1:B8,2,FALSE)", "#N/A"},
                              {"VLOOKUP(25,A1:B8,2)", "\"twenty\""},
                              {"VLOOKUP(40,A1:B8,2,TRUE)", "\"forty again\""},
                              {"VLOOKUP(5,A1:B8,2)", "#N/A"},
                              {"VLOOKUP(\"no*\",A1:B8,2,FALSE)", "\"n\""},
                              {"VLOOKUP(20,A1:B8,0,FALSE)", "#VALUE!"},
                              {"VLOOKUP(20,A1:B8,-1,FALSE)", "#VALUE!"},
                              {"VLOOKUP(20,A1:B8,3,FALSE)", "#REF!"},
                              {"VLOOKUP(20,A1:B8,1E300,FALSE)", "#REF!"},
                              {"VLOOKUP(20,A1:B8,\"x\",FALSE)", "#VALUE!"},
                              {"VLOOKUP(#NUM!,A1:B8,2,FALSE)", "#NUM!"},
                              {"VLOOKUP(20,#REF!,2,FALSE)", "#REF!"},
                              {"VLOOKUP(2,{1,\"a\";2,\"b\"},2,FALSE)", "\"b\""},
                              {"VLOOKUP(50,A1:F8,6,FALSE)", "empty"},
                          });
  EXPECT_EQ(document.calcArray("VLOOKUP(20,A1:B8,{2,1},0)"), "{\"twenty\",20}");
}

TEST_F(SearchTest, HlookupTakesTheValueBelow) {
  expectResults(document, {
                              {"HLOOKUP(2,A20:C21,2,FALSE)", "\"b\""},
                              {"HLOOKUP(2.5,A20:C21,2)", "\"b\""},
                              {"HLOOKUP(9,A20:C21,2,TRUE)", "\"c\""},
                              {"HLOOKUP(9,A20:C21,2,FALSE)", "#N/A"},
                              {"HLOOKUP(2,20:21,2,FALSE)", "\"b\""},
                              {"HLOOKUP(2,A20:C21,3,FALSE)", "#REF!"},
                              {"HLOOKUP(2,A20:C21,0,FALSE)", "#VALUE!"},
                              {"HLOOKUP(\"B\",{\"a\",\"b\";1,2},2,FALSE)", "2"},
                          });
}

TEST_F(SearchTest, LookupTakesTheLastValueNotAbove) {
  expectResults(document, {
                              {"LOOKUP(25,A1:A8,B1:B8)", "\"twenty\""},
                              {"LOOKUP(40,A1:A8,B1:B8)", "\"forty again\""},
                              {"LOOKUP(1,A1:A8,B1:B8)", "#N/A"},
                              {"LOOKUP(25,A1:B8)", "\"twenty\""},
                              {"LOOKUP(2,A20:C21)", "\"b\""},
                              {"LOOKUP(2,A20:C20,A21:C21)", "\"b\""},
                              {"LOOKUP(3,A20:C20,A21:B21)", "#N/A"},
                              {"LOOKUP(25,A1:B8,C1:C8)", "#N/A"},
                              {"LOOKUP(2,{1,2;3,4})", "2"},
                              {"LOOKUP(3,{1,2;3,4})", "4"},
                              {"LOOKUP(#DIV/0!,A1:A8)", "#DIV/0!"},
                              {"LOOKUP(1,#REF!)", "#REF!"},
                              {"LOOKUP(1,A1:A8,#REF!)", "#REF!"},
                          });
}

TEST_F(SearchTest, LookupFindsTheLastFilledCell) {
  expectResults(document, {
                              {"LOOKUP(2,1/(B1:B8<>\"\"),B1:B8)", "\"fifty\""},
                              {"LOOKUP(2,1/(A1:A8=40),B1:B8)", "\"forty again\""},
                              {"LOOKUP(9.99E+307,A1:A15)", "50"},
                              {"LOOKUP(\"zzzz\",A:A)", "\"a\""},
                          });
}

TEST_F(SearchTest, XlookupTakesTheRowBeside) {
  expectResults(document, {
                              {"XLOOKUP(20,A1:A8,B1:B8)", "\"twenty\""},
                              {"XLOOKUP(25,A1:A8,B1:B8)", "#N/A"},
                              {"XLOOKUP(25,A1:A8,B1:B8,\"none\")", "\"none\""},
                              {"XLOOKUP(25,A1:A8,B1:B8,,-1)", "\"twenty\""},
                              {"XLOOKUP(25,A1:A8,B1:B8,,1)", "\"thirty\""},
                              {"XLOOKUP(99,A1:A8,B1:B8,\"none\",1)", "\"none\""},
                              {"XLOOKUP(20,A1:A8,B1:B8,1/0)", "\"twenty\""},
                              {"XLOOKUP(40,A1:A8,B1:B8,,0,1)", "\"forty\""},
                              {"XLOOKUP(40,A1:A8,B1:B8,,0,-1)", "\"forty again\""},
                              {"XLOOKUP(40,A1:A8,B1:B8,,-1,-1)", "\"forty again\""},
                              {"XLOOKUP(40,A1:A8,B1:B8,,0,2)", "\"forty\""},
                              {"XLOOKUP(\"t*\",B1:B8,A1:A8)", "#N/A"},
                              {"XLOOKUP(\"t*\",B1:B8,A1:A8,,2)", "10"},
                              {"XLOOKUP(\"t*\",B1:B8,A1:A8,,2,-1)", "30"},
                              {"XLOOKUP(2,A20:C20,A21:C21)", "\"b\""},
                              {"XLOOKUP(2,A20:C20,A20:C21)", "[0!19,1:21,2]"},
                              {"XLOOKUP(20,A1:A8,A1:B8)", "[0!1,0:2,2]"},
                              {"SUM(XLOOKUP(10,A1:A8,A1:A8):XLOOKUP(30,A1:A8,A1:A8))", "60"},
                              {"XLOOKUP(50,A:A,B:B)", "\"fifty\""},
                              {"XLOOKUP(20,A1:A8,B1:B7)", "#VALUE!"},
                              {"XLOOKUP(20,A1:B8,A1:B8)", "#VALUE!"},
                              {"XLOOKUP(20,A1:A8,B1:B8,,3)", "#VALUE!"},
                              {"XLOOKUP(20,A1:A8,B1:B8,,-2)", "#VALUE!"},
                              {"XLOOKUP(20,A1:A8,B1:B8,,0,0)", "#VALUE!"},
                              {"XLOOKUP(20,A1:A8,B1:B8,,1E300)", "#VALUE!"},
                              {"XLOOKUP(#NUM!,A1:A8,B1:B8)", "#NUM!"},
                              {"XLOOKUP(20,#REF!,B1:B8)", "#REF!"},
                              {"XLOOKUP(20,A1:A8,#NAME?)", "#NAME?"},
                              {"XLOOKUP(2,{1;2},{\"a\";\"b\"})", "\"b\""},
                          });
  EXPECT_EQ(document.calcArray("XLOOKUP(2,{1;2},{1,2;3,4})"), "{3,4}");
}

TEST_F(SearchTest, XlookupOfNothingFindsTheFirstEmptyCell) {
  expectResults(document, {
                              {"XMATCH(Z1,A1:A8)", "5"},
                              {"XMATCH(Z1,A6:A8)", "#N/A"},
                              {"XMATCH(Z1,A:A)", "5"},
                              {"XMATCH(,A6:A9)", "4"},
                          });
}

TEST_F(SearchTest, XmatchGivesPlaces) {
  expectResults(document, {
                              {"XMATCH(30,A1:A8)", "4"},
                              {"XMATCH(35,A1:A8)", "#N/A"},
                              {"XMATCH(35,A1:A8,-1)", "4"},
                              {"XMATCH(35,A1:A8,1)", "6"},
                              {"XMATCH(40,A1:A8,1,-1)", "7"},
                              {"XMATCH(5,A1:A8,-1)", "#N/A"},
                              {"XMATCH(4,C1:C4,1)", "2"},
                              {"XMATCH(4,C1:C4,-1,-2)", "4"},
                              {"XMATCH(\"?OTE\",A1:A8,2)", "3"},
                              {"XMATCH(30,A1:B8)", "#VALUE!"},
                              {"XMATCH(30,A1:A8,,5)", "#VALUE!"},
                              {"XMATCH(30,A1:A8,\"x\")", "#VALUE!"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
