#include <chrono>

#include <gtest/gtest.h>

#include "OfficeUtils/Clock.h"
#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

using namespace std::chrono_literals;

class DateTimeFunctionsTest : public ::testing::Test {
protected:
  FormulaDocument document;
};

TEST_F(DateTimeFunctionsTest, TodayAndNowReadTheClock) {
  OfficeUtils::ScopedClock const clock(std::chrono::sys_days(2026y / 11 / 21) + 18h);
  expectResults(document, {
                              {"TODAY()", "46347"},
                              {"NOW()", "46347.75"},
                              {"TODAY()=DATE(2026,11,21)", "TRUE"},
                          });
}

TEST_F(DateTimeFunctionsTest, DateCountsOverTheEdgesOfTheCalendar) {
  expectResults(document, {
                              {"DATE(2024,2,29)", "45351"},
                              {"DATE(1900,1,1)", "1"},
                              {"DATE(1900,2,29)", "60"},
                              {"DATE(1900,3,1)", "61"},
                              {"DATE(2024,13,1)", "45658"},
                              {"DATE(2024,0,1)", "45261"},
                              {"DATE(2024,3,0)", "45351"},
                              {"DATE(2024,1,-1)", "45290"},
                              {"DATE(24,1,1)", "8767"},
                              {"DATE(9999,12,31)", "2958465"},
                              {"DATE(10000,1,1)", "#NUM!"},
                              {"DATE(-1,1,1)", "#NUM!"},
                              {"DATE(1E+300,1,1)", "#NUM!"},
                              {"DATE(2024.9,1.9,1.9)", "45292"},
                              {"DATE(\"x\",1,1)", "#VALUE!"},
                              {"DATE(2024,1,1/0)", "#DIV/0!"},
                          });
}

TEST_F(DateTimeFunctionsTest, PartsOfDates) {
  document.set("A1", "45351.75");
  expectResults(document, {
                              {"YEAR(A1)", "2024"},
                              {"MONTH(A1)", "2"},
                              {"DAY(A1)", "29"},
                              {"DAY(60)", "29"},
                              {"MONTH(60)", "2"},
                              {"YEAR(0)", "1900"},
                              {"MONTH(Z9)", "1"},
                              {"DAY(0)", "0"},
                              {"YEAR(-1)", "#NUM!"},
                              {"YEAR(2958466)", "#NUM!"},
                              {"MONTH(\"x\")", "#VALUE!"},
                              {"DAY(#N/A)", "#N/A"},
                              {"SUM(DAY({1,2}))", "3"},
                          });
}

TEST_F(DateTimeFunctionsTest, PartsFollowTheDateSystem) {
  document.setLocale(OfficeUtils::LocaleContext("en-US", OfficeUtils::DateSystem::Since1904));
  expectResults(document, {
                              {"YEAR(0)", "1904"},
                              {"DATE(1904,1,2)", "1"},
                              {"DAY(1)", "2"},
                              {"WEEKDAY(0)", "6"},
                              {"DATE(2024,1,31)", "43860"},
                          });
}

TEST_F(DateTimeFunctionsTest, WeekdayNumbersFromAnyDay) {
  // 21 November 2026 is a Saturday.
  expectResults(document, {
                              {"WEEKDAY(46347)", "7"},
                              {"WEEKDAY(46347,1)", "7"},
                              {"WEEKDAY(46347,2)", "6"},
                              {"WEEKDAY(46347,3)", "5"},
                              {"WEEKDAY(46347,11)", "6"},
                              {"WEEKDAY(46347,12)", "5"},
                              {"WEEKDAY(46347,13)", "4"},
                              {"WEEKDAY(46347,14)", "3"},
                              {"WEEKDAY(46347,15)", "2"},
                              {"WEEKDAY(46347,16)", "1"},
                              {"WEEKDAY(46347,17)", "7"},
                              {"WEEKDAY(46348)", "1"},
                              {"WEEKDAY(46347,4)", "#NUM!"},
                              {"WEEKDAY(46347,18)", "#NUM!"},
                              {"WEEKDAY(-1)", "#NUM!"},
                              {"WEEKDAY(\"x\")", "#VALUE!"},
                          });
}

TEST_F(DateTimeFunctionsTest, MonthsAway) {
  expectResults(document, {
                              {"EDATE(DATE(2024,1,31),1)=DATE(2024,2,29)", "TRUE"},
                              {"EDATE(DATE(2024,3,31),-1)=DATE(2024,2,29)", "TRUE"},
                              {"EDATE(DATE(2024,1,15),12)=DATE(2025,1,15)", "TRUE"},
                              {"EDATE(DATE(2024,1,15),-1.9)=DATE(2023,12,15)", "TRUE"},
                              {"EDATE(1,-1)", "#NUM!"},
                              {"EDATE(1,-99999)", "#NUM!"},
                              {"EDATE(1,1E+300)", "#NUM!"},
                              {"EDATE(\"x\",1)", "#VALUE!"},
                              {"EOMONTH(DATE(2024,1,15),0)=DATE(2024,1,31)", "TRUE"},
                              {"EOMONTH(DATE(2024,1,31),1)=DATE(2024,2,29)", "TRUE"},
                              {"EOMONTH(DATE(2024,1,15),-2)=DATE(2023,11,30)", "TRUE"},
                              {"EOMONTH(-1,0)", "#NUM!"},
                              {"EOMONTH(DATE(9999,12,1),1)", "#NUM!"},
                          });
}

}  // namespace

}  // namespace Zorv::Formulas
