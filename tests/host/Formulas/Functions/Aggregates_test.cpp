#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

class Aggregates : public testing::Test {
protected:
  Aggregates() {
    document.setColumn("A1", {"120", "10", "150", "23", "\"x\"", "empty", "TRUE"});
    document.setColumn("B1", {"4", "#DIV/0!", "2", "4", "1"});
  }

  FormulaDocument document;
};

TEST_F(Aggregates, SubtotalChoosesItsFunction) {
  expectResults(document, {
                              {"SUBTOTAL(1,A1:A7)", "75.75"},
                              {"SUBTOTAL(2,A1:A7)", "4"},
                              {"SUBTOTAL(3,A1:A7)", "6"},
                              {"SUBTOTAL(4,A1:A7)", "150"},
                              {"SUBTOTAL(5,A1:A7)", "10"},
                              {"SUBTOTAL(6,A1:A4)", "4140000"},
                              {"ROUND(SUBTOTAL(7,A1:A4),6)", "69.70593"},
                              {"ROUND(SUBTOTAL(8,A1:A4),6)", "60.367106"},
                              {"SUBTOTAL(9,A1:A7)", "303"},
                              {"ROUND(SUBTOTAL(10,A1:A4),4)", "4858.9167"},
                              {"SUBTOTAL(11,A1:A4)", "3644.1875"},
                              {"SUBTOTAL(9,A1:A2,A3)", "280"},
                              {"SUBTOTAL(9,(A1:A2,A3))", "280"},
                              {"SUBTOTAL(109,A1:A7)", "303"},
                              {"SUBTOTAL(103,A1:A7)", "6"},
                          });
}

TEST_F(Aggregates, SubtotalRefusesOtherArguments) {
  expectResults(document, {
                              {"SUBTOTAL(0,A1)", "#VALUE!"},
                              {"SUBTOTAL(12,A1)", "#VALUE!"},
                              {"SUBTOTAL(100,A1)", "#VALUE!"},
                              {"SUBTOTAL(112,A1)", "#VALUE!"},
                              {"SUBTOTAL(1E300,A1)", "#VALUE!"},
                              {"SUBTOTAL(9,5)", "#VALUE!"},
                              {"SUBTOTAL(9,{1,2})", "#VALUE!"},
                              {"SUBTOTAL(9,#REF!)", "#REF!"},
                              {"SUBTOTAL(9,B1:B5)", "#DIV/0!"},
                              {"SUBTOTAL(2,B1:B5)", "4"},
                              {"SUBTOTAL(3,B1:B5)", "5"},
                              {"SUBTOTAL(1,D1:D5)", "#DIV/0!"},
                              {"SUBTOTAL(4,D1:D5)", "0"},
                              {"SUBTOTAL(6,D1:D5)", "0"},
                              {"SUBTOTAL(7,A1)", "#DIV/0!"},
                              {"SUBTOTAL(8,A1)", "0"},
                              {"SUBTOTAL(11,D1)", "#DIV/0!"},
                          });
}

TEST_F(Aggregates, AggregateLeavesOutErrorsWhenAsked) {
  expectResults(document, {
                              {"AGGREGATE(9,6,B1:B5)", "11"},
                              {"AGGREGATE(9,2,B1:B5)", "11"},
                              {"AGGREGATE(9,3,B1:B5)", "11"},
                              {"AGGREGATE(9,7,B1:B5)", "11"},
                              {"AGGREGATE(9,0,B1:B5)", "#DIV/0!"},
                              {"AGGREGATE(9,4,B1:B5)", "#DIV/0!"},
                              {"AGGREGATE(9,5,B1:B5)", "#DIV/0!"},
                              {"AGGREGATE(3,6,B1:B5)", "4"},
                              {"AGGREGATE(12,6,B1:B5)", "3"},
                              {"AGGREGATE(13,6,B1:B5)", "4"},
                              {"AGGREGATE(13,6,A1:A4)", "#N/A"},
                              {"AGGREGATE(12,4,D1:D5)", "#NUM!"},
                              {"AGGREGATE(4,6,A1:A7,B1:B5)", "150"},
                              {"AGGREGATE(9,8,A1)", "#VALUE!"},
                              {"AGGREGATE(9,-1,A1)", "#VALUE!"},
                              {"AGGREGATE(20,6,A1)", "#VALUE!"},
                              {"AGGREGATE(9,6,{1,2})", "#VALUE!"},
                          });
}

TEST_F(Aggregates, AreThoseOfTheFunctionsThatTheyName) {
  document.setColumn("E1", {"0.1", "0.1", "0.1"});
  expectResults(document, {
                              {"SUBTOTAL(7,E1:E3)", "0"},
                              {"SUBTOTAL(8,E1:E3)", "0"},
                              {"SUBTOTAL(10,E1:E3)-VAR(E1:E3)", "0"},
                              {"AGGREGATE(11,6,E1:E3)-VAR.P(E1:E3)", "0"},
                              {"(AGGREGATE(18,6,ROW(A1:A99),0.07)-7)*1E15", "0"},
                              {"AGGREGATE(16,6,E1:E3,0.3)-PERCENTILE(E1:E3,0.3)", "0"},
                          });
}

TEST_F(Aggregates, AggregateTakesRanksOfArrays) {
  expectResults(document, {
                              {"AGGREGATE(14,6,B1:B5,1)", "4"},
                              {"AGGREGATE(14,6,B1:B5,3)", "2"},
                              {"AGGREGATE(15,6,B1:B5,1)", "1"},
                              {"AGGREGATE(15,6,B1:B5,0)", "#NUM!"},
                              {"AGGREGATE(15,6,B1:B5,5)", "#NUM!"},
                              {"AGGREGATE(15,4,B1:B5,1)", "#DIV/0!"},
                              {"AGGREGATE(15,6,A1:A4/(A1:A4>20),1)", "23"},
                              {"AGGREGATE(16,6,B1:B5,0.5)", "3"},
                              {"AGGREGATE(17,6,B1:B5,1)", "1.75"},
                              {"AGGREGATE(17,6,B1:B5,5)", "#NUM!"},
                              {"AGGREGATE(18,6,B1:B5,0.5)", "3"},
                              {"AGGREGATE(18,6,B1:B5,0.1)", "#NUM!"},
                              {"AGGREGATE(19,6,B1:B5,1)", "1.25"},
                              {"AGGREGATE(14,6,B1:B5)", "#VALUE!"},
                              {"AGGREGATE(14,6,B1:B5,\"x\")", "#VALUE!"},
                              {"AGGREGATE(14,6,D1:D5,1)", "#NUM!"},
                              {"AGGREGATE(14,6,A:A*1,1)", "150"},
                          });
  expectLimit(document, "AGGREGATE(14,6,A:XFD*1,1)", "33554432 values");
}

}  // namespace
}  // namespace Zorv::Formulas
