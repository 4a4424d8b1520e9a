// Several threads, each with a session of its own, share what is remembered of ranges.

#include "Formulas/LookupCache.h"

#include <barrier>
#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Formulas/EvaluationSession.h"
#include "Formulas/ParseExpr.h"
#include "host/Formulas/LookupFormulas.h"

namespace Zorv::Formulas {

namespace {

using Answers = std::map<std::string_view, std::vector<std::string>>;

TEST(LookupCacheConcurrency, ThreadsGetThePlainAnswers) {
  FormulaDocument document;
  std::mt19937 generator(5);
  LookupFormulas::fill(document, [&](std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(generator);
  });
  document.addSheet("Other");
  auto const& formulas = LookupFormulas::getFormulas();
  Answers expected;
  for (std::string_view const formula : formulas) {
    for (unsigned long row = 0; row < LookupFormulas::rows; ++row) {
      expected[formula].push_back(LookupFormulas::calcPlainly(document, formula, row));
    }
  }
  for (std::size_t const threadCount : {1U, 4U}) {
    LookupCache cache;
    std::vector<Answers> answers(threadCount);
    std::barrier start(static_cast<std::ptrdiff_t>(threadCount));
    TableContext const& sheet = document.sheet();
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < threadCount; ++number) {
      threads.emplace_back([&, number] {
        EvaluationSession session(cache);
        start.arrive_and_wait();
        for (std::string_view const formula : formulas) {
          auto const expr = parseExpr(formula);
          for (unsigned long row = 0; row < LookupFormulas::rows; ++row) {
            answers[number][formula].push_back(
                LookupFormulas::calcInSession(document, sheet, expr, row, session));
          }
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    for (Answers const& given : answers) {
      EXPECT_EQ(given, expected);
    }
  }
}

/// A column in which each number stands as often as it is high, as a number, as a text that reads
/// as one, or as a text with a word.
std::string valueInRow(unsigned long row) {
  unsigned long number = 1;
  for (unsigned long last = number; last <= row; last += number) {
    ++number;
  }
  return std::to_string(number);
}

TEST(LookupCacheConcurrency, ThreadsThatAskForALargeRangeAtOnceGetThePlainAnswers) {
  constexpr unsigned long rows = 40'000;
  FormulaDocument document;
  std::vector<std::string> expected;
  std::map<std::string, unsigned long> counts;
  for (unsigned long row = 0; row < rows; ++row) {
    // Neighbours are far apart in the order of their numbers.
    std::string const number = valueInRow(row * 7919 % rows);
    bool const isWord = row % 3 == 2;
    std::string const value = isWord ? (row % 2 == 0 ? "Item " : "ITEM ") + number : number;
    FormulaValue cell = FormulaModel::FormulaString{value};
    if (row % 3 == 0) {
      cell = FormulaModel::FormulaNumber{FloatNumber(std::stod(value))};
    }
    document.sheet().table.setValue(row, 0, cell);
    expected.push_back((isWord ? "word " : "number ") + number);
    ++counts[expected.back()];
  }
  for (std::string& answer : expected) {
    answer = std::to_string(counts[answer]);
  }
  auto const expr = parseExpr("COUNTIF($A:$A,A1)");
  TableContext const& sheet = document.sheet();
  for (std::size_t const threadCount : {1U, 2U, 7U}) {
    LookupCache cache;
    std::vector<std::string> answers(rows);
    std::barrier start(static_cast<std::ptrdiff_t>(threadCount));
    std::vector<std::jthread> threads;
    for (std::size_t number = 0; number < threadCount; ++number) {
      threads.emplace_back([&, number] {
        EvaluationSession session(cache);
        start.arrive_and_wait();
        for (unsigned long row = number; row < rows; row += threadCount) {
          answers[row] = LookupFormulas::calcInSession(document, sheet, expr, row, session);
        }
      });
    }
    threads.clear();
    EXPECT_TRUE(answers == expected) << threadCount << " threads";
  }
}

}  // namespace

}  // namespace Zorv::Formulas
