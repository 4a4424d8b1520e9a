#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

class WorkDays : public testing::Test {
protected:
  // Three days, of which one stands there twice, and a Sunday.
  WorkDays() {
    document.setColumn("A1", {"41235", "41247", "41295", "41247", "empty", "41294"});
    document.setColumn("B1", {"\"2012-11-22\"", "\"x\"", "#REF!", "-1", "TRUE"});
  }

  FormulaDocument document;
};

TEST_F(WorkDays, AreCounted) {
  expectResults(
      document,
      {
          {"NETWORKDAYS(DATE(2012,10,1),DATE(2013,3,1))", "110"},
          {"NETWORKDAYS(DATE(2012,10,1),DATE(2013,3,1),A1)", "109"},
          {"NETWORKDAYS(DATE(2012,10,1),DATE(2013,3,1),A1:A6)", "107"},
          {"NETWORKDAYS(DATE(2013,3,1),DATE(2012,10,1),A1:A6)", "-107"},
          {"NETWORKDAYS(DATE(2012,10,1),DATE(2013,3,1),{41235,41247})", "108"},
          {"NETWORKDAYS(DATE(2012,10,1),DATE(2013,3,1),B1)", "109"},
          {"NETWORKDAYS(DATE(2024,1,6),DATE(2024,1,7))", "0"},
          {"NETWORKDAYS(DATE(2024,1,8),DATE(2024,1,8))", "1"},
          {"NETWORKDAYS(1,2958465)", "2113190"},
          {"NETWORKDAYS(1,5,B2)", "#VALUE!"},
          {"NETWORKDAYS(1,5,B3)", "#REF!"},
          {"NETWORKDAYS(1,5,B4)", "#NUM!"},
          {"NETWORKDAYS(1,5,B5)", "#VALUE!"},
          {"NETWORKDAYS(-1,5)", "#NUM!"},
          {"NETWORKDAYS(\"x\",5)", "#VALUE!"},
          {"NETWORKDAYS.INTL(DATE(2006,1,1),DATE(2006,1,31))", "22"},
          {"NETWORKDAYS.INTL(DATE(2006,2,28),DATE(2006,1,31))", "-21"},
          {"NETWORKDAYS.INTL(DATE(2006,1,1),DATE(2006,2,1),7,{38719,38733})", "22"},
          {"NETWORKDAYS.INTL(DATE(2006,1,1),DATE(2006,2,1),\"0010001\",{38719,38733})", "20"},
          {"NETWORKDAYS.INTL(DATE(2024,1,1),DATE(2024,1,7),11)", "6"},
          {"NETWORKDAYS.INTL(DATE(2024,1,7),DATE(2024,1,7),11)", "0"},
          {"NETWORKDAYS.INTL(DATE(2024,1,6),DATE(2024,1,6),17)", "0"},
          {"NETWORKDAYS.INTL(DATE(2024,1,1),DATE(2024,1,1),2)", "0"},
          {"NETWORKDAYS.INTL(1,7,\"1111111\")", "0"},
          {"NETWORKDAYS.INTL(1,7,\"0000000\")", "7"},
          {"NETWORKDAYS.INTL(1,7,,)", "5"},
          {"NETWORKDAYS.INTL(1,7,8)", "#NUM!"},
          {"NETWORKDAYS.INTL(1,7,18)", "#NUM!"},
          {"NETWORKDAYS.INTL(1,7,1E300)", "#NUM!"},
          {"NETWORKDAYS.INTL(1,7,\"000011\")", "#VALUE!"},
          {"NETWORKDAYS.INTL(1,7,\"0000012\")", "#VALUE!"},
      });
}

TEST_F(WorkDays, AreCountedOnwards) {
  expectResults(document,
                {
                    {"WORKDAY(DATE(2008,10,1),151)=DATE(2009,4,30)", "TRUE"},
                    {"WORKDAY(DATE(2008,10,1),151,{39778,39786,39834})=DATE(2009,5,5)", "TRUE"},
                    {"WORKDAY(DATE(2024,1,5),1)=DATE(2024,1,8)", "TRUE"},
                    {"WORKDAY(DATE(2024,1,6),1)=DATE(2024,1,8)", "TRUE"},
                    {"WORKDAY(DATE(2024,1,8),-1)=DATE(2024,1,5)", "TRUE"},
                    {"WORKDAY(DATE(2024,1,7),-5)=DATE(2024,1,1)", "TRUE"},
                    {"WORKDAY(DATE(2024,1,6),0)=DATE(2024,1,6)", "TRUE"},
                    {"WORKDAY(DATE(2012,11,21),1,A1:A6)=DATE(2012,11,23)", "TRUE"},
                    {"WORKDAY(DATE(2012,11,23),-1,A1:A6)=DATE(2012,11,21)", "TRUE"},
                    {"WORKDAY(DATE(2024,1,5),1.9)=DATE(2024,1,8)", "TRUE"},
                    {"WORKDAY(1,1E300)", "#NUM!"},
                    {"WORKDAY(1,-5)", "#NUM!"},
                    {"WORKDAY(2958465,1)", "#NUM!"},
                    {"WORKDAY(-1,1)", "#NUM!"},
                    {"WORKDAY(\"x\",1)", "#VALUE!"},
                    {"WORKDAY(1,1,B2)", "#VALUE!"},
                    {"WORKDAY.INTL(DATE(2012,1,1),30,11)=DATE(2012,2,4)", "TRUE"},
                    {"WORKDAY.INTL(DATE(2012,1,1),90,11)=DATE(2012,4,14)", "TRUE"},
                    {"WORKDAY.INTL(DATE(2012,1,1),5,\"1111110\")=DATE(2012,2,5)", "TRUE"},
                    {"WORKDAY.INTL(DATE(2012,1,1),30,0)", "#NUM!"},
                    {"WORKDAY.INTL(DATE(2012,1,1),30,\"1111111\")", "#VALUE!"},
                });
}

}  // namespace
}  // namespace Zorv::Formulas
