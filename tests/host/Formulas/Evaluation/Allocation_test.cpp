// Ordinary formulas take nothing from the heap. A program of its own, since it replaces the
// operators that take memory.

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/LookupCache.h"
#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaDocument.h"

namespace {

std::atomic<std::size_t> allocationCount = 0;

void* allocate(std::size_t size) {
  ++allocationCount;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
    return memory;
  }
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace Zorv::Formulas {

namespace {

TEST(Allocation, OrdinaryFormulasTakeNothingFromTheHeap) {
  FormulaDocument document;
  document.setColumn("A1", {"8", "\"some text that no short string holds\"", "3"});
  document.set("B1", "2");
  RuntimeDependenciesResolver resolver;
  Context const context(&document.sheet(), RowIndex(0), ColumnIndex(5), boost::none, DOM::RowID(0),
                        DOM::ColumnID(0));
  for (std::string_view const formula :
       {"A1>5", "AND(A1>5,B1<3)", "MOD(A1,7)=0", "$A$1*2+B1", "IF(A1>B1,1,0)", "A2=\"x\"",
        "ISNUMBER(SEARCH(\"text\",A2))", "COUNTIF(A1:A3,A1)>1", "SUM(A:A)", "NOT(ISBLANK(A1))",
        "LEN(A2)>5", "OR(A1=1,A1=2,A1=3,A1=4,A1=5,A1=6)", "A1:A3>2", "LEFT(A2,4)=\"some\"",
        "IFERROR(A1/0,1)", "YEAR(A1)=1900"}) {
    auto const expr = parseExpr(formula);
    EvaluationSession session;
    static_cast<void>(calcShiftedExpr(expr, 0, 1, context, document, resolver, session));
    std::size_t const before = allocationCount;
    static_cast<void>(calcShiftedExpr(expr, 0, 0, context, document, resolver, session));
    EXPECT_EQ(allocationCount - before, 0U) << formula;
  }
}

TEST(Allocation, WhatIsRememberedOfARangeIsAskedWithoutTheHeap) {
  FormulaDocument document;
  for (int row = 1; row <= 100; ++row) {
    document.set("A" + std::to_string(row), std::to_string(row % 7));
    document.set("B" + std::to_string(row), row % 3 == 0 ? "\"a text that is no short one\"" : "2");
  }
  RuntimeDependenciesResolver resolver;
  Context const context(&document.sheet(), RowIndex(0), ColumnIndex(5), boost::none, DOM::RowID(0),
                        DOM::ColumnID(0));
  LookupCache cache;
  EvaluationSession session(cache);
  for (std::string_view const formula :
       {"COUNTIF($A$1:$A$100,A1)>1", "COUNTIF($B$1:$B$100,B1)>1", "COUNTIF($A$1:$A$100,\">3\")",
        "COUNTIFS($A$1:$A$100,A1,$B$1:$B$100,B1)>1", "SUMIF($A$1:$A$100,A1,$A$1:$A$100)>5",
        "MATCH(B1,$B$1:$B$100,0)=1", "VLOOKUP(A1,$A$1:$B$100,1,FALSE)=A1"}) {
    auto const expr = parseExpr(formula);
    for (int row = 0; row < 10; ++row) {
      static_cast<void>(calcShiftedExpr(expr, 0, row, context, document, resolver, session));
    }
    std::size_t const before = allocationCount;
    for (int row = 10; row < 20; ++row) {
      static_cast<void>(calcShiftedExpr(expr, 0, row, context, document, resolver, session));
    }
    EXPECT_EQ(allocationCount - before, 0U) << formula;
  }
}

TEST(Allocation, TheCounterCounts) {
  std::size_t const before = allocationCount;
  static_cast<void>(parseExpr("A1>5"));
  EXPECT_GT(allocationCount - before, 0U);
}

}  // namespace

}  // namespace Zorv::Formulas
