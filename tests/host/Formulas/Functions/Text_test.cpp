#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

class TextTest : public ::testing::Test {
protected:
  TextTest() { document.setColumn("A1", {"\"Grüße\"", "12.5", "TRUE", "empty", "#N/A"}); }

  FormulaDocument document;
};

TEST_F(TextTest, LengthsCountCharacters) {
  expectResults(document, {
                              {"LEN(\"abc\")", "3"},
                              {"LEN(A1)", "5"},
                              {"LEN(\"😀\")", "1"},
                              {"LEN(A2)", "4"},
                              {"LEN(A3)", "4"},
                              {"LEN(A4)", "0"},
                              {"LEN(A5)", "#N/A"},
                              {"LEN(\"\")", "0"},
                              {"SUM(LEN(A1:A4))", "13"},
                          });
}

TEST_F(TextTest, PartsCountCharacters) {
  expectResults(document, {
                              {"LEFT(A1,3)", "\"Grü\""},
                              {"LEFT(A1)", "\"G\""},
                              {"LEFT(\"ab\",9)", "\"ab\""},
                              {"LEFT(\"ab\",0)", "\"\""},
                              {"LEFT(\"ab\",)", "\"\""},
                              {"LEFT(\"ab\",-1)", "#VALUE!"},
                              {"LEFT(A2,2)", "\"12\""},
                              {"LEFT(A5,1)", "#N/A"},
                              {"LEFT(\"abc\",1.9)", "\"a\""},
                              {"RIGHT(A1,2)", "\"ße\""},
                              {"RIGHT(A1)", "\"e\""},
                              {"RIGHT(\"ab\",9)", "\"ab\""},
                              {"RIGHT(\"ab\",0)", "\"\""},
                              {"RIGHT(\"ab\",-1)", "#VALUE!"},
                              {"MID(A1,3,2)", "\"üß\""},
                              {"MID(\"abc\",2,99)", "\"bc\""},
                              {"MID(\"abc\",9,1)", "\"\""},
                              {"MID(\"abc\",0,1)", "#VALUE!"},
                              {"MID(\"abc\",1,-1)", "#VALUE!"},
                              {"MID(\"abc\",1,1E+300)", "\"abc\""},
                              {"LEFT({\"ab\",\"cd\"},1)", "\"a\""},
                          });
}

TEST_F(TextTest, CaseAndSpaces) {
  expectResults(document, {
                              {"UPPER(\"grüße\")", "\"GRÜSSE\""},
                              {"LOWER(\"ÄBC\")", "\"äbc\""},
                              {"UPPER(A4)", "\"\""},
                              {"LOWER(TRUE)", "\"true\""},
                              {"UPPER(A5)", "#N/A"},
                              {"TRIM(\"  a   b  \")", "\"a b\""},
                              {"TRIM(\"   \")", "\"\""},
                              {"TRIM(5)", "\"5\""},
                              {"EXACT(\"a\",\"A\")", "FALSE"},
                              {"EXACT(\"a\",\"a\")", "TRUE"},
                              {"EXACT(1,\"1\")", "TRUE"},
                              {"EXACT(A4,\"\")", "TRUE"},
                              {"EXACT(A5,1)", "#N/A"},
                          });
}

TEST_F(TextTest, FindMindsCaseAndKnowsNoWildcards) {
  expectResults(document, {
                              {"FIND(\"b\",\"abcb\")", "2"},
                              {"FIND(\"b\",\"abcb\",3)", "4"},
                              {"FIND(\"B\",\"abc\")", "#VALUE!"},
                              {"FIND(\"ß\",A1)", "4"},
                              {"FIND(\"\",\"abc\")", "1"},
                              {"FIND(\"\",\"abc\",4)", "4"},
                              {"FIND(\"a\",\"abc\",0)", "#VALUE!"},
                              {"FIND(\"a\",\"abc\",5)", "#VALUE!"},
                              {"FIND(\"*\",\"a*c\")", "2"},
                              {"FIND(2,A2)", "2"},
                          });
}

TEST_F(TextTest, SearchFoldsCaseAndKnowsWildcards) {
  expectResults(document, {
                              {"SEARCH(\"B\",\"abc\")", "2"},
                              {"SEARCH(\"?c\",\"abc\")", "2"},
                              {"SEARCH(\"a*c\",\"xxabbc\")", "3"},
                              {"SEARCH(\"~*\",\"a*c\")", "2"},
                              {"SEARCH(\"ÜSS\",\"Grüsse\")", "3"},
                              {"SEARCH(\"z\",\"abc\")", "#VALUE!"},
                              {"SEARCH(\"a\",\"abca\",2)", "4"},
                              {"SEARCH(\"\",\"abc\")", "1"},
                              {"SEARCH(\"a\",A4)", "#VALUE!"},
                              {"ISERROR(SEARCH(\"x\",A1))", "TRUE"},
                              {"ISNUMBER(SEARCH(\"grü\",A1))", "TRUE"},
                              {"SUM(--ISNUMBER(SEARCH({\"g\",\"r\",\"x\"},A1)))", "2"},
                          });
}

TEST_F(TextTest, SubstituteAndConcatenate) {
  expectResults(document, {
                              {"SUBSTITUTE(\"a-b-c\",\"-\",\"+\")", "\"a+b+c\""},
                              {"SUBSTITUTE(\"a-b-c\",\"-\",\"+\",2)", "\"a-b+c\""},
                              {"SUBSTITUTE(\"a-b\",\"-\",\"+\",9)", "\"a-b\""},
                              {"SUBSTITUTE(\"abc\",\"\",\"x\")", "\"abc\""},
                              {"SUBSTITUTE(\"aXa\",\"x\",\"\")", "\"aXa\""},
                              {"SUBSTITUTE(\"aaa\",\"aa\",\"b\")", "\"ba\""},
                              {"SUBSTITUTE(\"a\",\"a\",\"b\",0)", "#VALUE!"},
                              {"SUBSTITUTE(A5,\"a\",\"b\")", "#N/A"},
                              {"CONCATENATE(\"a\",1,TRUE,A4)", "\"a1TRUE\""},
                              {"CONCATENATE(\"a\",1/0)", "#DIV/0!"},
                          });
}

TEST_F(TextTest, BytesThatBelongToNoCharacterCountAsOne) {
  document.set("B1", "\"a\xFF\xC3\"");
  document.set("B2", "\"\xE2\x82\"");
  expectResults(document, {
                              {"LEN(B1)", "3"},
                              {"LEN(B2)", "2"},
                              {"LEN(LEFT(B1,2))", "2"},
                              {"SEARCH(\"\xC3\",B1)", "3"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
