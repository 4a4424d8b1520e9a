#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

class TextEditing : public testing::Test {
protected:
  TextEditing() {
    document.setColumn("A1", {"\"ab\"", "empty", "3", "TRUE", "\"cd\""});
    document.set("B1", "#DIV/0!");
    document.set("C1", "\"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\"");  // ä€😀
  }

  FormulaDocument document;
};

TEST_F(TextEditing, RepeatsTexts) {
  expectResults(document, {
                              {"REPT(\"*-\",3)", "\"*-*-*-\""},
                              {"REPT(\"-\",2.9)", "\"--\""},
                              {"REPT(\"x\",0)", "\"\""},
                              {"REPT(\"\",1E300)", "\"\""},
                              {"REPT(5,2)", "\"55\""},
                              {"REPT(A2,2)", "\"\""},
                              {"REPT(\"x\",-1)", "#VALUE!"},
                              {"LEN(REPT(\"x\",32767))", "32767"},
                              {"REPT(\"x\",32768)", "#VALUE!"},
                              {"REPT(\"x\",1E300)", "#VALUE!"},
                              {"REPT(B1,2)", "#DIV/0!"},
                              {"REPT(\"x\",\"y\")", "#VALUE!"},
                          });
}

TEST_F(TextEditing, ReplacesByPlace) {
  expectResults(document, {
                              {"REPLACE(\"abcdefghijk\",6,5,\"*\")", "\"abcde*k\""},
                              {"REPLACE(\"2009\",3,2,\"10\")", "\"2010\""},
                              {"REPLACE(\"abc\",2,0,\"-\")", "\"a-bc\""},
                              {"REPLACE(\"abc\",9,1,\"-\")", "\"abc-\""},
                              {"REPLACE(\"abc\",2,99,\"\")", "\"a\""},
                              {"REPLACE(C1,2,1,\"-\")=LEFT(C1)&\"-\"&RIGHT(C1)", "TRUE"},
                              {"REPLACE(\"abc\",0,1,\"-\")", "#VALUE!"},
                              {"REPLACE(\"abc\",1,-1,\"-\")", "#VALUE!"},
                              {"REPLACE(REPT(\"x\",32767),1,0,\"yy\")", "#VALUE!"},
                              {"REPLACE(B1,1,1,\"\")", "#DIV/0!"},
                          });
}

TEST_F(TextEditing, ChangesLetters) {
  expectResults(document, {
                              {"PROPER(\"this is a TITLE\")", "\"This Is A Title\""},
                              {"PROPER(\"2-cent's worth\")", "\"2-Cent'S Worth\""},
                              {"PROPER(\"76BudGet\")", "\"76Budget\""},
                              {"PROPER(\"\xC3\xA4ra\")=UPPER(LEFT(C1))&\"ra\"", "TRUE"},
                              {"PROPER(\"\")", "\"\""},
                              {"PROPER(B1)", "#DIV/0!"},
                              {"CLEAN(CHAR(9)&\"ab\"&CHAR(10)&\"c\"&CHAR(31))", "\"abc\""},
                              {"CLEAN(C1)=C1", "TRUE"},
                              {"CLEAN(12)", "\"12\""},
                          });
}

TEST_F(TextEditing, JoinsTexts) {
  expectResults(document,
                {
                    {"CONCAT(\"a\",1,TRUE)", "\"a1TRUE\""},
                    {"CONCAT(A1:A5,\"!\")", "\"ab3TRUEcd!\""},
                    {"CONCAT({\"a\",\"b\";\"c\",\"d\"})", "\"abcd\""},
                    {"CONCAT(A:A)", "\"ab3TRUEcd\""},
                    {"CONCAT(D1:D9)", "\"\""},
                    {"CONCAT(D:E&\"\")", "\"\""},
                    {"CONCAT(A:A&\"\",A:A&\"x\")", "#VALUE!"},
                    {"CONCAT(\"a\",B1)", "#DIV/0!"},
                    {"CONCAT(REPT(\"x\",32767),\"y\")", "#VALUE!"},
                    {"TEXTJOIN(\", \",TRUE,A1:A5)", "\"ab, 3, TRUE, cd\""},
                    {"TEXTJOIN(\",\",FALSE,A1:A5)", "\"ab,,3,TRUE,cd\""},
                    {"TEXTJOIN(\",\",FALSE,A5:A7)", "\"cd,,\""},
                    {"TEXTJOIN(\"\",FALSE,A:A)", "\"ab3TRUEcd\""},
                    {"TEXTJOIN({\"-\",\"+\"},TRUE,\"a\",\"b\",\"c\",\"d\")", "\"a-b+c-d\""},
                    {"TEXTJOIN(\",\",TRUE,IF({1,0,1},{\"a\",\"b\",\"c\"},\"\"))", "\"a,c\""},
                    {"TEXTJOIN(\",\",TRUE,\"\")", "\"\""},
                    {"TEXTJOIN((X1,X3),FALSE,\"a\",\"b\")", "\"ab\""},
                    {"TEXTJOIN((X1:X3,Y1:Y9),TRUE,\"a\",\"b\",\"c\")", "\"abc\""},
                    {"TEXTJOIN(\",\",TRUE,(X1:X3,Y1:Y9))", "\"\""},
                    {"TEXTJOIN(\",\",FALSE,(X1:X2,Y1))", "\",,\""},
                    {"TEXTJOIN(\",\",FALSE,A:A)", "#VALUE!"},
                    {"TEXTJOIN(\",\",TRUE,B1)", "#DIV/0!"},
                    {"TEXTJOIN(B1,TRUE,\"a\")", "#DIV/0!"},
                    {"TEXTJOIN(\",\",\"x\",\"a\")", "#VALUE!"},
                });
}

TEST_F(TextEditing, TellsCodesOfCharacters) {
  expectResults(document, {
                              {"CHAR(65)", "\"A\""},
                              {"CHAR(33.9)", "\"!\""},
                              {"CHAR(228)=LEFT(C1)", "TRUE"},
                              {"CHAR(128)=MID(C1,2,1)", "TRUE"},
                              {"CHAR(0)", "#VALUE!"},
                              {"CHAR(256)", "#VALUE!"},
                              {"CHAR(-1E300)", "#VALUE!"},
                              {"CODE(\"A\")", "65"},
                              {"CODE(\"Alphabet\")", "65"},
                              {"CODE(C1)", "228"},
                              {"CODE(MID(C1,2,1))", "128"},
                              {"CODE(RIGHT(C1))", "63"},
                              {"CODE(\"\")", "#VALUE!"},
                              {"CODE(A2)", "#VALUE!"},
                              {"CODE(5)", "53"},
                              {"UNICHAR(66)", "\"B\""},
                              {"UNICHAR(128512)=RIGHT(C1)", "TRUE"},
                              {"UNICHAR(0)", "#VALUE!"},
                              {"UNICHAR(55296)", "#N/A"},
                              {"UNICHAR(1114112)", "#VALUE!"},
                              {"UNICODE(\"B\")", "66"},
                              {"UNICODE(RIGHT(C1))", "128512"},
                              {"UNICODE(\"\")", "#VALUE!"},
                              {"SUM(CODE({\"a\",\"b\"}))", "195"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
