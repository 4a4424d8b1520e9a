#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

TEST(NumberBases, WritesAndReadsAnyBase) {
  FormulaDocument document;
  document.set("B1", "empty");
  expectResults(document, {
                              {"BASE(7,2)", "\"111\""},
                              {"BASE(100,16)", "\"64\""},
                              {"BASE(15,2,10)", "\"0000001111\""},
                              {"BASE(35,36)", "\"Z\""},
                              {"BASE(0,2)", "\"0\""},
                              {"BASE(B1,2)", "\"0\""},
                              {"BASE(-1,2)", "#NUM!"},
                              {"BASE(2^53,2)", "#NUM!"},
                              {"BASE(1,1)", "#NUM!"},
                              {"BASE(1,37)", "#NUM!"},
                              {"LEN(BASE(1,2,255))", "255"},
                              {"BASE(1,2,256)", "#NUM!"},
                              {"BASE(\"x\",2)", "#VALUE!"},
                              {"DECIMAL(\"FF\",16)", "255"},
                              {"DECIMAL(\"zap\",36)", "45745"},
                              {"DECIMAL(111,2)", "7"},
                              {"DECIMAL(\"\",2)", "0"},
                              {"DECIMAL(\"2\",2)", "#NUM!"},
                              {"DECIMAL(\"1\",1)", "#NUM!"},
                              {"DECIMAL(REPT(\"Z\",255),36)", "#NUM!"},
                              {"DECIMAL(REPT(\"0\",256),36)", "#NUM!"},
                          });
}

TEST(NumberBases, WritesAndReadsTwosComplements) {
  FormulaDocument document;
  expectResults(document, {
                              {"DEC2BIN(9,4)", "\"1001\""},
                              {"DEC2BIN(9)", "\"1001\""},
                              {"DEC2BIN(-100)", "\"1110011100\""},
                              {"DEC2BIN(511)", "\"111111111\""},
                              {"DEC2BIN(512)", "#NUM!"},
                              {"DEC2BIN(-512)", "\"1000000000\""},
                              {"DEC2BIN(-513)", "#NUM!"},
                              {"DEC2BIN(9,3)", "#NUM!"},
                              {"DEC2BIN(9,0)", "#NUM!"},
                              {"DEC2HEX(100,4)", "\"0064\""},
                              {"DEC2HEX(-54)", "\"FFFFFFFFCA\""},
                              {"DEC2HEX(1E13)", "#NUM!"},
                              {"DEC2OCT(58,3)", "\"072\""},
                              {"DEC2OCT(-100)", "\"7777777634\""},
                              {"BIN2DEC(1100100)", "100"},
                              {"BIN2DEC(\"1111111111\")", "-1"},
                              {"BIN2DEC(\"11111111111\")", "#NUM!"},
                              {"BIN2DEC(\"12\")", "#NUM!"},
                              {"HEX2DEC(\"A5\")", "165"},
                              {"HEX2DEC(\"fffffffF5B\")", "-165"},
                              {"HEX2DEC(\"3DA408B9\")", "1034160313"},
                              {"HEX2DEC(\"G\")", "#NUM!"},
                              {"OCT2DEC(54)", "44"},
                              {"OCT2DEC(\"7777777533\")", "-165"},
                          });
}

TEST(NumberBases, CombinesBits) {
  FormulaDocument document;
  expectResults(document, {
                              {"BITAND(13,25)", "9"},
                              {"BITOR(23,10)", "31"},
                              {"BITXOR(5,3)", "6"},
                              {"BITAND(1.5,1)", "#NUM!"},
                              {"BITAND(-1,1)", "#NUM!"},
                              {"BITAND(2^48,1)", "#NUM!"},
                              {"BITOR(2^48-1,0)", "281474976710655"},
                              {"BITLSHIFT(4,2)", "16"},
                              {"BITLSHIFT(4,-2)", "1"},
                              {"BITLSHIFT(1,48)", "#NUM!"},
                              {"BITLSHIFT(1,54)", "#NUM!"},
                              {"BITLSHIFT(1,1E300)", "#NUM!"},
                              {"BITRSHIFT(13,2)", "3"},
                              {"BITRSHIFT(13,-1)", "26"},
                              {"BITRSHIFT(13,53)", "0"},
                              {"BITRSHIFT(\"x\",1)", "#VALUE!"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
