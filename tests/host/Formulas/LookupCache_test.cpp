#include "Formulas/LookupCache.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/ParseExpr.h"
#include "host/Formulas/FormulaCases.h"
#include "host/Formulas/LookupFormulas.h"

namespace Zorv::Formulas {

namespace {

/// Walks down the rows in one session; the first rows are walked over, the later ones looked up.
void expectPlainAnswers(FormulaDocument& document, std::string_view formula, LookupCache& cache) {
  EvaluationSession session(cache);
  auto const expr = parseExpr(formula);
  for (unsigned long row = 0; row < LookupFormulas::rows; ++row) {
    ASSERT_EQ(LookupFormulas::calcInSession(document, document.sheet(), expr, row, session),
              LookupFormulas::calcPlainly(document, formula, row))
        << formula << " in row " << row + 1;
  }
}

void fillAtRandom(FormulaDocument& document, unsigned seed) {
  std::mt19937 generator(seed);
  LookupFormulas::fill(document, [&](std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(generator);
  });
  FormulaSheet& other = document.addSheet("Other");
  for (unsigned long row = 0; row < 100; ++row) {
    other.table.setValue(row, 0, FormulaModel::FormulaNumber{FloatNumber(double(row % 7))});
  }
}

TEST(LookupCache, ChangesNoAnswer) {
  FormulaDocument document;
  fillAtRandom(document, 1);
  for (std::string_view const formula : LookupFormulas::getFormulas()) {
    LookupCache cache;
    expectPlainAnswers(document, formula, cache);
  }
}

TEST(LookupCache, IsSharedByFormulasAndSessions) {
  FormulaDocument document;
  fillAtRandom(document, 2);
  LookupCache cache;
  for (std::string_view const formula : LookupFormulas::getFormulas()) {
    expectPlainAnswers(document, formula, cache);
  }
}

TEST(LookupCache, TellsEveryValueFromEveryOther) {
  FormulaDocument document;
  unsigned long row = 0;
  while (row < LookupFormulas::rows) {
    for (std::string const& value : LookupFormulas::getValues()) {
      std::string const cell = std::to_string(++row);
      if (!value.empty() && row <= LookupFormulas::rows) {
        document.set("A" + cell, value);
        document.set("B" + cell, value);
        document.set("D" + cell, std::to_string(row));
      }
    }
  }
  document.addSheet("Other");
  for (std::string_view const formula : LookupFormulas::getFormulas()) {
    LookupCache cache;
    expectPlainAnswers(document, formula, cache);
  }
}

RC_GTEST_PROP(LookupCache, ChangesNoAnswerOverRandomTables, ()) {
  FormulaDocument document;
  fillAtRandom(document, *rc::gen::arbitrary<unsigned>());
  LookupCache cache;
  EvaluationSession session(cache);
  auto const& formulas = LookupFormulas::getFormulas();
  auto const formula = formulas[*rc::gen::inRange<std::size_t>(0, formulas.size())];
  auto const expr = parseExpr(formula);
  for (unsigned long row = 0; row < LookupFormulas::rows; ++row) {
    RC_ASSERT(LookupFormulas::calcInSession(document, document.sheet(), expr, row, session) ==
              LookupFormulas::calcPlainly(document, formula, row));
  }
}

TEST(LookupCache, SumsInTheOrderOfTheCells) {
  FormulaDocument document;
  for (int row = 1; row <= 150; ++row) {
    document.set("A" + std::to_string(row), std::to_string(row % 3));
    document.set("D" + std::to_string(row), row % 2 == 0 ? "1e16" : row % 5 == 0 ? "-1e16" : "0.7");
  }
  LookupCache cache;
  expectPlainAnswers(document, "SUMIF($A$1:$A$150,A1,$D$1:$D$150)", cache);
  expectPlainAnswers(document, "AVERAGEIF($A$1:$A$150,A1,$D$1:$D$150)", cache);
}

/// The index is used: it does not see that the document changed, as its users promise not to do.
TEST(LookupCache, ARangeIsWalkedAFewTimesOnly) {
  FormulaDocument document;
  for (int row = 1; row <= 100; ++row) {
    document.set("A" + std::to_string(row), std::to_string(row % 10));
  }
  LookupCache cache;
  EvaluationSession session(cache);
  constexpr FormulaCase cases[] = {{"COUNTIF($A$1:$A$100,5)", "10"},
                                   {"COUNTIF($A$1:$A$100,\">8\")", "10"},
                                   {"SUMIF($A$1:$A$100,7,$A$1:$A$100)", "70"},
                                   {"COUNTIFS($A$1:$A$100,5,$A$1:$A$100,5)", "10"},
                                   {"MATCH(9,$A$1:$A$100,0)", "9"},
                                   {"RANK(8,$A$1:$A$100)", "11"},
                                   {"AVERAGE($A$1:$A$100)", "4.5"},
                                   {"LARGE(A$1:A$100,11)", "8"},
                                   {"SUM(OFFSET($A$1,0,0,100,1))", "450"},
                                   {"SUMPRODUCT($A$1:$A$100,$A$1:$A$100)", "2850"},
                                   {"RIGHT(CONCAT($A$1:$A$100),3)", "\"890\""}};
  for (auto const& [formula, result] : cases) {
    auto const expr = parseExpr(formula);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(LookupFormulas::calcInSession(document, document.sheet(), expr, 0, session), result)
          << formula;
    }
  }
  for (int row = 1; row <= 100; ++row) {
    document.set("A" + std::to_string(row), "5");
  }
  EvaluationSession other(cache);
  for (auto const& [formula, result] : cases) {
    EXPECT_NE(document.calc(formula), result);
    EXPECT_EQ(
        LookupFormulas::calcInSession(document, document.sheet(), parseExpr(formula), 0, other),
        result)
        << formula;
  }
}

/// A call that is cheap, or depends on more than its ranges, is calculated anew: it sees the
/// change.
TEST(LookupCache, OtherCallsAreNotRemembered) {
  FormulaDocument document;
  for (int row = 1; row <= 100; ++row) {
    document.set("A" + std::to_string(row), "1");
  }
  LookupCache cache;
  EvaluationSession session(cache);
  for (char const* const formula :
       {"SUM($A$1:$A$64)", "SUM($A$1:$A$100,1)", "SUM($A$1:$A$100*1)", "INDEX($A$1:$A$100,3)",
        "SUM(TRANSPOSE($A$1:$A$100))", "IF(TRUE,SUM($A$1:$A$3))"}) {
    auto const expr = parseExpr(formula);
    auto const calculate = [&] {
      return LookupFormulas::calcInSession(document, document.sheet(), expr, 0, session);
    };
    for (int i = 0; i < 5; ++i) {
      EXPECT_EQ(calculate(), document.calc(formula)) << formula;
    }
    std::string const before = document.calc(formula);
    document.set("A3", "7");
    EXPECT_NE(document.calc(formula), before) << formula;
    EXPECT_EQ(calculate(), document.calc(formula)) << formula;
    document.set("A3", "1");
  }
}

TEST(LookupCache, AColumnLookedUpInItselfIsNoSquare) {
  // Walked over for each cell, this would take minutes.
  constexpr unsigned long count = 100'000;
  FormulaDocument document;
  for (unsigned long row = 0; row < count; ++row) {
    document.sheet().table.setValue(row, 0, FormulaModel::FormulaNumber{FloatNumber(double(row))});
  }
  LookupCache cache;
  EvaluationSession session(cache);
  auto const expr = parseExpr("SUM(MATCH($A$1:$A$100000,$A$1:$A$100000,0))");
  EXPECT_EQ(LookupFormulas::calcInSession(document, document.sheet(), expr, 0, session),
            "5000050000");
}

}  // namespace

}  // namespace Zorv::Formulas
