#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

class Products : public testing::Test {
protected:
  Products() {
    document.setColumn("A1", {"3", "8", "\"x\"", "empty", "5"});
    document.setColumn("B1", {"2", "7", "6", "1", "TRUE"});
    document.setColumn("C1", {"1", "#N/A"});
    document.setColumn("D1", {"\"a\"", "\"b\"", "\"A\"", "\"c\"", "\"a\""});
  }

  FormulaDocument document;
};

TEST_F(Products, MultipliesNumbers) {
  expectResults(document, {
                              {"PRODUCT(2,3,4)", "24"},
                              {"PRODUCT(A1:A5)", "120"},
                              {"PRODUCT(A1:A5,2)", "240"},
                              {"PRODUCT(E1:E9)", "0"},
                              {"PRODUCT(\"3\",TRUE)", "3"},
                              {"PRODUCT(\"x\")", "#VALUE!"},
                              {"PRODUCT(C1:C2)", "#N/A"},
                              {"PRODUCT(1E200,1E200)", "#NUM!"},
                              {"PRODUCT({1,2;3,4})", "24"},
                              {"PRODUCT(B:B*1)", "0"},
                              {"PRODUCT(1-(E:F=1)*1)", "1"},
                          });
}

TEST_F(Products, SumsProductsOfElements) {
  expectResults(document, {
                              {"SUMPRODUCT({3,4;8,6;1,9},{2,7;6,7;5,3})", "156"},
                              {"SUMPRODUCT(A1:A5,B1:B5)", "62"},
                              {"SUMPRODUCT(A1:A5)", "16"},
                              {"SUMPRODUCT(A:A,B:B)", "62"},
                              {"SUMPRODUCT(A1:A5,B1:B4)", "#VALUE!"},
                              {"SUMPRODUCT(C1:C2)", "#N/A"},
                              {"SUMPRODUCT(2,3)", "6"},
                              {"SUMPRODUCT(E1:E9)", "0"},
                              {"SUMPRODUCT((D1:D5=\"a\")*(B1:B5>1))", "3"},
                              {"SUMPRODUCT((D1:D5=\"a\"),B1:B5)", "0"},
                              {"SUMPRODUCT(--(D1:D5=\"a\"),B1:B5)", "8"},
                              {"SUMPRODUCT((D1:D5=D1)*(B1:B5))", "9"},
                              {"SUMPRODUCT(--(D:D=\"a\"))", "3"},
                              {"SUMPRODUCT(--(D:D=\"\"))", "1048571"},
                              {"SUMPRODUCT(--(D:D<>\"a\"),--(D:D<>\"b\"))", "1048572"},
                          });
}

TEST_F(Products, SumsSquares) {
  expectResults(document, {
                              {"SUMSQ(3,4)", "25"},
                              {"SUMSQ(A1:A5)", "98"},
                              {"SUMSQ(E1)", "0"},
                              {"SUMSQ((E:E=\"\")*2)", "4194304"},
                              {"SUMSQ(\"x\")", "#VALUE!"},
                              {"SUMSQ(C1:C2)", "#N/A"},
                              {"SUMX2MY2({2,3,9,1,8,7,5},{6,5,11,7,5,4,4})", "-55"},
                              {"SUMX2PY2({2,3,9,1,8,7,5},{6,5,11,7,5,4,4})", "521"},
                              {"SUMXMY2({2,3,9,1,8,7,5},{6,5,11,7,5,4,4})", "79"},
                              {"SUMXMY2(A1:A5,B1:B5)", "2"},
                              {"SUMXMY2(A:A,B:B)", "2"},
                              {"SUMXMY2({1,2,3},{1,2})", "#N/A"},
                              {"SUMX2MY2(C1:C2,A1:A2)", "#N/A"},
                              {"SERIESSUM(2,0,1,{1,1,1})", "7"},
                              {"SERIESSUM(2,1,2,{1,3})", "26"},
                              {"ROUND(SERIESSUM(PI()/4,0,2,{1,-0.5,0.041666667,-0.001388889}),6)",
                               "0.707103"},
                              {"SERIESSUM(0,-1,1,{1})", "#NUM!"},
                              {"SERIESSUM(2,0,1,C1:C2)", "#N/A"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
