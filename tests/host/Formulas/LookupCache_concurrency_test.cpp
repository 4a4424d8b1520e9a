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

}  // namespace

}  // namespace Zorv::Formulas
