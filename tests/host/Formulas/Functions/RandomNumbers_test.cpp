#include <gtest/gtest.h>

#include "host/Formulas/FormulaCases.h"

namespace Zorv::Formulas {
namespace {

TEST(RandomNumbers, LieBetweenTheirBounds) {
  FormulaDocument document;
  for (int i = 0; i < 100; ++i) {
    expectResults(document, {
                                {"LET(x,RAND(),AND(x>=0,x<1))", "TRUE"},
                                {"LET(x,RANDBETWEEN(-1.5,1.5),OR(x=-1,x=0,x=1))", "TRUE"},
                            });
  }
  expectResults(document, {
                              {"RANDBETWEEN(3,3)", "3"},
                              {"RANDBETWEEN(2,1)", "#NUM!"},
                              {"RANDBETWEEN(1.2,1.8)", "#NUM!"},
                              {"RANDBETWEEN(\"x\",1)", "#VALUE!"},
                              {"RAND()=RAND()", "FALSE"},
                          });
}

}  // namespace
}  // namespace Zorv::Formulas
