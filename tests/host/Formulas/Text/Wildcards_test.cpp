#include "Formulas/Text/Wildcards.h"

#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Utils/WorkBudget.h"

namespace Zorv::Formulas {

namespace {

TEST(Wildcards, MatchWholeTexts) {
  struct Case {
    std::string_view text;
    std::string_view pattern;
    bool matches;
  };
  constexpr Case cases[] = {
      {"abc", "abc", true},
      {"abc", "ABC", true},
      {"abc", "ab", false},
      {"ab", "abc", false},
      {"abc", "a*", true},
      {"abc", "*c", true},
      {"abc", "*", true},
      {"", "*", true},
      {"", "", true},
      {"", "?", false},
      {"abc", "a?c", true},
      {"abc", "a??", true},
      {"abc", "a???", false},
      {"a*c", "a~*c", true},
      {"abc", "a~*c", false},
      {"a?c", "a~?c", true},
      {"a~", "a~~", true},
      {"a~", "a~", true},
      {"aXbXc", "a*b*c", true},
      {"abcbd", "a*bd", true},
      {"abcb", "a*bd", false},
      {"äöü", "Ä?Ü", true},
      {"mississippi", "*iss*ip*", true},
      {"aaa", "a*a*a*a", false},
      {"abc", "**b**", true},
  };
  StepMeter steps;
  for (Case const& test : cases) {
    EXPECT_EQ(matchesWildcards(test.text, test.pattern, steps), test.matches)
        << test.text << " against " << test.pattern;
  }
}

TEST(Wildcards, FindTheFirstPart) {
  StepMeter steps;
  EXPECT_EQ(findWildcards("xxabc", "A?C", steps), 2U);
  EXPECT_EQ(findWildcards("xxabc", "b*", steps), 3U);
  EXPECT_EQ(findWildcards("abc", "", steps), 0U);
  EXPECT_EQ(findWildcards("äabc", "abc", steps), 2U);
  EXPECT_EQ(findWildcards("abc", "c*b", steps), std::nullopt);
  EXPECT_EQ(findWildcards("", "a", steps), std::nullopt);
  EXPECT_EQ(findWildcards("abab", "b*b", steps), 1U);
}

TEST(Wildcards, PatternsThatGoBackAndForthEnd) {
  StepMeter steps;
  std::string const text(30000, 'a');
  EXPECT_FALSE(matchesWildcards(text, "*a*a*a*a*a*b", steps));
  EXPECT_EQ(findWildcards(text, "a*b", steps), std::nullopt);
  EXPECT_EQ(findWildcards(text, "*b", steps), std::nullopt);
}

TEST(Wildcards, PatternsThatGoBackAndForthCountTheirSteps) {
  constexpr std::size_t length = 3000;
  std::string const text(length, 'a');
  std::string const pattern = '*' + std::string(length / 2, 'a') + 'b';
  WorkBudget budget({});
  StepMeter steps(&budget);
  EXPECT_FALSE(matchesWildcards(text, pattern, steps));
  EXPECT_GT(budget.getSteps(), length * length / 5);
  std::uint64_t const ofMatch = budget.getSteps();
  EXPECT_EQ(findWildcards(text, pattern, steps), std::nullopt);
  EXPECT_GT(budget.getSteps(), ofMatch + length * length / 5);
}

TEST(Wildcards, AreSigns) {
  EXPECT_TRUE(hasWildcards("a*"));
  EXPECT_TRUE(hasWildcards("?"));
  EXPECT_TRUE(hasWildcards("~"));
  EXPECT_FALSE(hasWildcards("abc"));
}

}  // namespace

}  // namespace Zorv::Formulas
