#include <gtest/gtest.h>

#include "OfficeUtils/LocaleContext.h"
#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

TEST(DateSpans, NumberWeeks) {
  FormulaDocument document;
  expectResults(document, {
                              {"WEEKNUM(DATE(2012,3,9))", "10"},
                              {"WEEKNUM(DATE(2012,3,9),2)", "11"},
                              {"WEEKNUM(DATE(2024,1,6))", "1"},
                              {"WEEKNUM(DATE(2024,1,7))", "2"},
                              {"WEEKNUM(DATE(2024,1,7),2)", "1"},
                              {"WEEKNUM(DATE(2024,1,7),11)", "1"},
                              {"WEEKNUM(DATE(2024,1,2),12)", "2"},
                              {"WEEKNUM(DATE(2024,1,6),16)", "2"},
                              {"WEEKNUM(DATE(2024,1,7),17)", "2"},
                              {"WEEKNUM(DATE(2021,1,3),21)", "53"},
                              {"WEEKNUM(DATE(2024,1,7),0)", "#NUM!"},
                              {"WEEKNUM(DATE(2024,1,7),3)", "#NUM!"},
                              {"WEEKNUM(DATE(2024,1,7),18)", "#NUM!"},
                              {"WEEKNUM(-1)", "#NUM!"},
                              {"WEEKNUM(\"x\")", "#VALUE!"},
                              {"ISOWEEKNUM(DATE(2012,3,9))", "10"},
                              {"ISOWEEKNUM(DATE(2021,1,3))", "53"},
                              {"ISOWEEKNUM(DATE(2021,1,4))", "1"},
                              {"ISOWEEKNUM(DATE(2024,12,30))", "1"},
                              {"ISOWEEKNUM(DATE(2016,1,1))", "53"},
                              {"ISOWEEKNUM(1)", "52"},
                              {"ISOWEEKNUM(DATE(9999,12,31))", "52"},
                              {"ISOWEEKNUM(2958466)", "#NUM!"},
                          });
}

TEST(DateSpans, CountUnitsBetweenDates) {
  FormulaDocument document;
  expectResults(document, {
                              {"DATEDIF(DATE(2001,1,1),DATE(2003,1,1),\"Y\")", "2"},
                              {"DATEDIF(DATE(2001,6,1),DATE(2002,8,15),\"D\")", "440"},
                              {"DATEDIF(DATE(2001,6,1),DATE(2002,8,15),\"yd\")", "75"},
                              {"DATEDIF(DATE(2001,6,1),DATE(2002,8,15),\"md\")", "14"},
                              {"DATEDIF(DATE(2001,6,1),DATE(2002,8,15),\"m\")", "14"},
                              {"DATEDIF(DATE(2001,6,1),DATE(2002,8,15),\"ym\")", "2"},
                              {"DATEDIF(DATE(2020,2,29),DATE(2021,2,28),\"y\")", "0"},
                              {"DATEDIF(DATE(2020,2,29),DATE(2021,3,1),\"y\")", "1"},
                              {"DATEDIF(DATE(2020,1,31),DATE(2020,3,1),\"m\")", "1"},
                              {"DATEDIF(DATE(2020,1,15),DATE(2020,3,10),\"md\")", "24"},
                              {"DATEDIF(DATE(2019,12,15),DATE(2020,1,10),\"md\")", "26"},
                              {"DATEDIF(DATE(2011,1,31),DATE(2011,3,1),\"md\")", "-2"},
                              {"DATEDIF(DATE(2020,12,31),DATE(2021,1,1),\"yd\")", "1"},
                              {"DATEDIF(DATE(2020,5,5),DATE(2020,5,5),\"d\")", "0"},
                              {"DATEDIF(DATE(2020,5,6),DATE(2020,5,5),\"d\")", "#NUM!"},
                              {"DATEDIF(DATE(2020,5,5),DATE(2020,5,6),\"w\")", "#NUM!"},
                              {"DATEDIF(-1,5,\"d\")", "#NUM!"},
                              {"DATEDIF(\"x\",5,\"d\")", "#VALUE!"},
                              {"DATEDIF(\"2020-05-01\",\"2020-05-31\",\"d\")", "30"},
                              {"DAYS(DATE(2021,3,15),DATE(2021,2,1))", "42"},
                              {"DAYS(\"2021-12-31\",\"2021-01-01\")", "364"},
                              {"DAYS(1,5)", "-4"},
                              {"DAYS(5.9,1.1)", "4"},
                              {"DAYS(-1,5)", "#NUM!"},
                              {"DAYS(\"x\",5)", "#VALUE!"},
                          });
}

TEST(DateSpans, CountDaysOfEvenMonths) {
  FormulaDocument document;
  expectResults(document, {
                              {"DAYS360(DATE(2011,1,30),DATE(2011,2,1))", "1"},
                              {"DAYS360(DATE(2011,1,1),DATE(2011,12,31))", "360"},
                              {"DAYS360(DATE(2011,1,1),DATE(2011,12,31),TRUE)", "359"},
                              {"DAYS360(DATE(2011,1,1),DATE(2011,2,1))", "30"},
                              {"DAYS360(DATE(2011,1,31),DATE(2011,3,31))", "60"},
                              {"DAYS360(DATE(2011,1,29),DATE(2011,3,31))", "62"},
                              {"DAYS360(DATE(2011,1,29),DATE(2011,3,31),TRUE)", "61"},
                              {"DAYS360(DATE(2009,2,28),DATE(2009,3,31))", "30"},
                              {"DAYS360(DATE(2009,2,28),DATE(2009,3,31),TRUE)", "32"},
                              {"DAYS360(DATE(2011,2,1),DATE(2011,1,1))", "-30"},
                              {"DAYS360(-1,5)", "#NUM!"},
                              {"DAYS360(\"x\",5)", "#VALUE!"},
                          });
}

TEST(DateSpans, FindFractionsOfYears) {
  FormulaDocument document;
  expectResults(document,
                {
                    {"ROUND(YEARFRAC(DATE(2012,1,1),DATE(2012,7,30)),8)", "0.58055556"},
                    {"ROUND(YEARFRAC(DATE(2012,1,1),DATE(2012,7,30),1),8)", "0.57650273"},
                    {"ROUND(YEARFRAC(DATE(2012,1,1),DATE(2012,7,30),2),8)", "0.58611111"},
                    {"ROUND(YEARFRAC(DATE(2012,1,1),DATE(2012,7,30),3),8)", "0.57808219"},
                    {"ROUND(YEARFRAC(DATE(2012,1,1),DATE(2012,7,30),4),8)", "0.58055556"},
                    {"YEARFRAC(DATE(2012,7,30),DATE(2012,1,1))=209/360", "TRUE"},
                    {"YEARFRAC(DATE(2010,2,28),DATE(2011,2,28),0)", "1"},
                    {"YEARFRAC(DATE(2010,2,28),DATE(2012,2,29),0)", "2"},
                    {"YEARFRAC(DATE(2011,1,1),DATE(2012,1,1),1)", "1"},
                    {"YEARFRAC(DATE(2011,7,1),DATE(2012,7,1),1)", "1"},
                    {"YEARFRAC(DATE(2012,2,29),DATE(2013,2,28),1)=365/366", "TRUE"},
                    {"YEARFRAC(DATE(2011,3,1),DATE(2012,2,28),1)=364/365", "TRUE"},
                    {"YEARFRAC(DATE(2010,1,1),DATE(2013,1,1),1)=1096/((365*3+366)/4)", "TRUE"},
                    {"YEARFRAC(5,5)", "0"},
                    {"YEARFRAC(1,5,5)", "#NUM!"},
                    {"YEARFRAC(1,5,-1)", "#NUM!"},
                    {"YEARFRAC(-1,5)", "#NUM!"},
                    {"YEARFRAC(DATE(9998,1,1),DATE(9999,12,31),1)>1.9", "TRUE"},
                    {"YEARFRAC(\"x\",5)", "#VALUE!"},
                });
}

TEST(DateSpans, FollowTheDateSystem) {
  FormulaDocument document;
  document.setLocale(OfficeUtils::LocaleContext("en-US", OfficeUtils::DateSystem::Since1904));
  expectResults(document, {
                              {"ISOWEEKNUM(0)", "53"},
                              {"WEEKNUM(0)", "1"},
                              {"NETWORKDAYS(0,2)", "1"},
                              {"DATEVALUE(\"1904-01-02\")", "1"},
                              {"DATEDIF(0,366,\"y\")", "1"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
