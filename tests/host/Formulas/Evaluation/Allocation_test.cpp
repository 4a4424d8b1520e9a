// Ordinary formulas take nothing from the heap. A program of its own, since it replaces the
// operators that take memory.

#include <malloc.h>

#include <algorithm>
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
#include "Formulas/Lookups/EqualValues.h"
#include "Formulas/Lookups/LookupMap.h"
#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaDocument.h"

namespace {

std::atomic<std::size_t> allocationCount = 0;
std::atomic<std::size_t> bytesTaken = 0;
std::atomic<std::size_t> mostBytesTaken = 0;

void* allocate(std::size_t size) {
  ++allocationCount;
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  bytesTaken += malloc_usable_size(memory);
  mostBytesTaken = std::max<std::size_t>(mostBytesTaken, bytesTaken);
  return memory;
}

void release(void* memory) noexcept {
  bytesTaken -= malloc_usable_size(memory);
  std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }

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

/// Builds an index over the first column, and checks the memory that it takes meanwhile and at the
/// end.
void expectToFit(FormulaDocument& document) {
  DOM::Table const& table = document.sheet().table;
  std::size_t const before = bytesTaken;
  mostBytesTaken = before;
  SharedWork work;
  EqualValues const values({&document.sheet(), 0, 0, DOM::Table::rowCount, 1}, Equality::Criterion,
                           document.getLocaleContext(), work);
  EXPECT_LE(mostBytesTaken - before,
            table.getCellCount() * LookupBudget::bytesPerCell + LookupBudget::bytesPerIndex);
  // The allocator gives whole pages.
  auto const taken = static_cast<double>(bytesTaken - before);
  EXPECT_NEAR(static_cast<double>(values.memory()), taken, 0.01 * taken + 2000.0);
}

TEST(Allocation, AnIndexTakesNoMoreWhileItIsBuiltThanIsSetAsideForIt) {
  for (std::uint32_t const rows : {100U, 8193U, 10'000U, 16'385U, 100'000U, 140'000U}) {
    // Texts of up to 16 bytes are copied, longer ones are not when there are many.
    for (char const* const text : {"", "text ", "one text ", "a longer text "}) {
      SCOPED_TRACE(std::to_string(rows) + " values \"" + text + "\"");
      bool const isOfTexts = *text != 0;
      FormulaDocument document;
      for (std::uint32_t row = 0; row < rows; ++row) {
        document.sheet().table.setValue(
            row, 0,
            isOfTexts
                ? FormulaValue(FormulaModel::FormulaString{text + std::to_string(1'000'000 + row)})
                : FormulaValue(FormulaModel::FormulaNumber{FloatNumber(double(row))}));
      }
      expectToFit(document);
    }
  }
}

}  // namespace

}  // namespace Zorv::Formulas
