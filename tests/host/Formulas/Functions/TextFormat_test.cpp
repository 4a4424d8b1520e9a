#include <chrono>

#include <gtest/gtest.h>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/LocaleContext.h"
#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

class TextFormat : public testing::Test {
protected:
  TextFormat() {
    document.set("A2", "empty");
    document.set("B1", "#DIV/0!");
  }

  FormulaDocument document;
};

TEST_F(TextFormat, WritesValuesInFormats) {
  expectResults(document, {
                              {"TEXT(1234.567,\"$#,##0.00\")", "\"$1,234.57\""},
                              {"TEXT(45292,\"yyyy-mm-dd\")", "\"2024-01-01\""},
                              {"TEXT(\"2024-01-01\",\"dddd\")", "\"Monday\""},
                              {"TEXT(0.285,\"0.0%\")", "\"28.5%\""},
                              {"TEXT(4.34,\"# ?/?\")", "\"4 1/3\""},
                              {"TEXT(\"abc\",\"0.00\")", "\"abc\""},
                              {"TEXT(\"12\",\"0.00\")", "\"12.00\""},
                              {"TEXT(\"x\",\"0;0;0;<@>\")", "\"<x>\""},
                              {"TEXT(TRUE,\"0\")", "\"TRUE\""},
                              {"TEXT(A2,\"0.0\")", "\"0.0\""},
                              {"TEXT(5,\"\")", "\"\""},
                              {"TEXT(-1,\"yyyy\")", "#VALUE!"},
                              {"TEXT(1,\"\"\"\")", "#VALUE!"},
                              {"TEXT(1,REPT(\"0\",256))", "#VALUE!"},
                              {"TEXT(B1,\"0\")", "#DIV/0!"},
                              {"CONCAT(TEXT({1,2},\"00\"))", "\"0102\""},
                              {"TEXT(-1E300,\"0\")=\"-1\"&REPT(\"0\",300)", "TRUE"},
                          });
}

TEST_F(TextFormat, WritesFixedDigits) {
  expectResults(document, {
                              {"FIXED(1234.567,1)", "\"1,234.6\""},
                              {"FIXED(1234.567,-1)", "\"1,230\""},
                              {"FIXED(-1234.567,-1,TRUE)", "\"-1230\""},
                              {"FIXED(44.332)", "\"44.33\""},
                              {"FIXED(1234567.891,2,TRUE)", "\"1234567.89\""},
                              {"FIXED(0.5,0)", "\"1\""},
                              {"FIXED(1234,-9)", "\"0\""},
                              {"LEN(FIXED(1,127))", "129"},
                              {"FIXED(1,128)", "#VALUE!"},
                              {"FIXED(\"x\")", "#VALUE!"},
                              {"DOLLAR(1234.567,2)", "\"$1,234.57\""},
                              {"DOLLAR(1234.567,-2)", "\"$1,200\""},
                              {"DOLLAR(-1234.567)", "\"($1,234.57)\""},
                              {"DOLLAR(99.888)", "\"$99.89\""},
                              {"DOLLAR(1,128)", "#VALUE!"},
                              {"DOLLAR(B1)", "#DIV/0!"},
                          });
}

TEST_F(TextFormat, WritesMoneyOfTheLocale) {
  struct Case {
    char const* locale;
    char const* text;
  };
  for (Case const& c : {Case{"en-US", "$1,234.57"}, Case{"de-DE", "1.234,57\xC2\xA0\xE2\x82\xAC"},
                        Case{"en-US", "$1,234.57"}}) {
    document.setLocale(OfficeUtils::LocaleContext(c.locale));
    expectResults(document, {{"DOLLAR(1234.567)", "\"" + std::string(c.text) + "\""},
                             {"LEN(DOLLAR(1,5))-LEN(DOLLAR(1))", "3"}});
  }
}

TEST_F(TextFormat, ReadsNumbers) {
  OfficeUtils::ScopedClock const clock(std::chrono::sys_days(std::chrono::year(2024) / 6 / 15));
  expectResults(document, {
                              {"VALUE(\"$1,000\")", "1000"},
                              {"VALUE(\"-$5.5\")", "-5.5"},
                              {"VALUE(\"$-5.5\")", "-5.5"},
                              {"VALUE(\"(3)\")", "-3"},
                              {"VALUE(\"(-3)\")", "#VALUE!"},
                              {"VALUE(\" 12.5 \")", "12.5"},
                              {"VALUE(\"50%\")", "0.5"},
                              {"VALUE(\"1E3\")", "1000"},
                              {"VALUE(\"16:48:00\")", "0.7"},
                              {"VALUE(\"2024-01-01\")", "45292"},
                              {"VALUE(\"1/1/2024 18:00\")", "45292.75"},
                              {"VALUE(12)", "12"},
                              {"VALUE(A2)", "0"},
                              {"VALUE(TRUE)", "#VALUE!"},
                              {"VALUE(\"\")", "#VALUE!"},
                              {"VALUE(\"abc\")", "#VALUE!"},
                              {"VALUE(\"$\")", "#VALUE!"},
                              {"VALUE(\"()\")", "#VALUE!"},
                              {"VALUE(B1)", "#DIV/0!"},
                              {"\"2024-01-02\"-\"2024-01-01\"", "1"},
                              {"\"$5\"+1", "6"},
                              {"SUM(VALUE({\"1\",\"2\"}))", "3"},
                          });
}

TEST_F(TextFormat, ReadsDatesAndTimes) {
  OfficeUtils::ScopedClock const clock(std::chrono::sys_days(std::chrono::year(2024) / 6 / 15));
  expectResults(document, {
                              {"DATEVALUE(\"8/22/2011\")", "40777"},
                              {"DATEVALUE(\"22-MAY-2011\")", "40685"},
                              {"DATEVALUE(\"2011/02/23\")", "40597"},
                              {"DATEVALUE(\"5-JUL\")=DATE(2024,7,5)", "TRUE"},
                              {"DATEVALUE(\"7/5\")=DATE(2024,7,5)", "TRUE"},
                              {"DATEVALUE(\"30 Jan 2008\")", "39477"},
                              {"DATEVALUE(\"30.Jan.2008\")", "39477"},
                              {"DATEVALUE(\"January 30, 2008\")", "39477"},
                              {"DATEVALUE(\"Wed, Jan. 30, 08\")", "39477"},
                              {"DATEVALUE(\"Jan 2008\")=DATE(2008,1,1)", "TRUE"},
                              {"DATEVALUE(\"1/2008\")=DATE(2008,1,1)", "TRUE"},
                              {"DATEVALUE(\"2008-01-30T18:30:00\")", "39477"},
                              {"DATEVALUE(\"30 Jan 18:30\")=DATE(2024,1,30)", "TRUE"},
                              {"DATEVALUE(\"1/30/29\")=DATE(2029,1,30)", "TRUE"},
                              {"DATEVALUE(\"1/30/30\")=DATE(1930,1,30)", "TRUE"},
                              {"DATEVALUE(\"2/29/1900\")", "60"},
                              {"DATEVALUE(\"30/1/2008\")", "#VALUE!"},
                              {"DATEVALUE(\"2/30/2008\")", "#VALUE!"},
                              {"DATEVALUE(\"1/1/1899\")", "#VALUE!"},
                              {"DATEVALUE(\"1/1/208\")", "#VALUE!"},
                              {"DATEVALUE(\"1.1.2008\")", "#VALUE!"},
                              {"DATEVALUE(\"18:30\")", "#VALUE!"},
                              {"DATEVALUE(\"39477\")", "#VALUE!"},
                              {"DATEVALUE(39477)", "#VALUE!"},
                              {"DATEVALUE(\"1/30/2008 x\")", "#VALUE!"},
                              {"DATEVALUE(\"\")", "#VALUE!"},
                              {"DATEVALUE(B1)", "#DIV/0!"},
                              {"TIMEVALUE(\"2:24 AM\")", "0.1"},
                              {"TIMEVALUE(\"22-Aug-2011 6:00\")", "0.25"},
                              {"TIMEVALUE(\"6 pm\")", "0.75"},
                              {"TIMEVALUE(\"12:00 am\")", "0"},
                              {"TIMEVALUE(\"30:00\")", "0.25"},
                              {"ROUND(TIMEVALUE(\"0:00:01.5\")*86400,6)", "1.5"},
                              {"TIMEVALUE(\"1/1/2024\")", "0"},
                              {"TIMEVALUE(\"13:00 PM\")", "#VALUE!"},
                              {"TIMEVALUE(\"1:75\")", "#VALUE!"},
                              {"TIMEVALUE(\"1:00:60\")", "#VALUE!"},
                              {"TIMEVALUE(\"12345:00\")", "#VALUE!"},
                              {"TIMEVALUE(\"12\")", "#VALUE!"},
                              {"TIMEVALUE(0.5)", "#VALUE!"},
                          });
}

TEST_F(TextFormat, FollowsTheLocale) {
  OfficeUtils::ScopedClock const clock(std::chrono::sys_days(std::chrono::year(2024) / 6 / 15));
  document.setLocale(OfficeUtils::LocaleContext("de-DE"));
  expectResults(document, {
                              {"VALUE(\"1.234,5\")=1234.5", "TRUE"},
                              {"VALUE(\"5 \xE2\x82\xAC\")", "5"},
                              {"DATEVALUE(\"30.1.2008\")", "39477"},
                              {"DATEVALUE(\"30.1.\")=DATE(2024,1,30)", "TRUE"},
                              {"DATEVALUE(\"30. Dezember 2007\")", "39446"},
                              {"DATEVALUE(\"30 December 2007\")", "39446"},
                              {"DATEVALUE(\"30/1/2008\")", "39477"},
                              {"DATEVALUE(\"2008-01-30\")", "39477"},
                              {"DATEVALUE(\"1/30/2008\")", "#VALUE!"},
                              {"TEXT(1234.5,\"#,##0.00\")", "\"1.234,50\""},
                              {"FIXED(1234.5,1)", "\"1.234,5\""},
                          });
}

TEST_F(TextFormat, ReadsNumbersWithSeparators) {
  expectResults(document, {
                              {"NUMBERVALUE(\"2.500,27\",\",\",\".\")", "2500.27"},
                              {"NUMBERVALUE(\"3.5%\")", "0.035"},
                              {"NUMBERVALUE(\"9%%\")", "0.0009"},
                              {"NUMBERVALUE(\"1 000\")", "1000"},
                              {"NUMBERVALUE(\"1,000.5\")", "1000.5"},
                              {"NUMBERVALUE(\"-1,000.5\")", "-1000.5"},
                              {"NUMBERVALUE(\"1|5\",\"|x\")", "1.5"},
                              {"NUMBERVALUE(\"\")", "0"},
                              {"NUMBERVALUE(\"1.2.3\")", "#VALUE!"},
                              {"NUMBERVALUE(\"1.2,3\")", "#VALUE!"},
                              {"NUMBERVALUE(\"1,5\",\".\",\" \")", "#VALUE!"},
                              {"NUMBERVALUE(\"x\")", "#VALUE!"},
                              {"NUMBERVALUE(\"%\")", "#VALUE!"},
                              {"NUMBERVALUE(\"1\",\"\")", "#VALUE!"},
                              {"NUMBERVALUE(B1)", "#DIV/0!"},
                          });
}

TEST_F(TextFormat, CriteriaReadDates) {
  document.setColumn("E1", {"45291", "45292", "45293", "\"1/2/2024\""});
  expectResults(document, {
                              {"COUNTIF(E1:E4,\">=2024-01-01\")", "2"},
                              {"COUNTIF(E1:E4,\"1/2/2024\")", "2"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
