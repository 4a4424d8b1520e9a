#include "Formulas/Text/Wildcards.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

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
  for (Case const& test : cases) {
    EXPECT_EQ(matchesWildcards(test.text, test.pattern), test.matches)
        << test.text << " against " << test.pattern;
  }
}

TEST(Wildcards, FindTheFirstPart) {
  EXPECT_EQ(findWildcards("xxabc", "A?C"), 2U);
  EXPECT_EQ(findWildcards("xxabc", "b*"), 3U);
  EXPECT_EQ(findWildcards("abc", ""), 0U);
  EXPECT_EQ(findWildcards("äabc", "abc"), 2U);
  EXPECT_EQ(findWildcards("abc", "c*b"), std::nullopt);
  EXPECT_EQ(findWildcards("", "a"), std::nullopt);
  EXPECT_EQ(findWildcards("abab", "b*b"), 1U);
}

TEST(Wildcards, PatternsThatGoBackAndForthEnd) {
  std::string const text(30000, 'a');
  EXPECT_FALSE(matchesWildcards(text, "*a*a*a*a*a*b"));
  EXPECT_EQ(findWildcards(text, "a*b"), std::nullopt);
  EXPECT_EQ(findWildcards(text, "*b"), std::nullopt);
}

TEST(Wildcards, AreSigns) {
  EXPECT_TRUE(hasWildcards("a*"));
  EXPECT_TRUE(hasWildcards("?"));
  EXPECT_TRUE(hasWildcards("~"));
  EXPECT_FALSE(hasWildcards("abc"));
}

}  // namespace

}  // namespace Zorv::Formulas
