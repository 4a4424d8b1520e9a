#include "render/Html/AccountDictionary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Zorv::Render {
namespace {

using testing::HasSubstr;

Words::AccountText makeAccount(std::string value) {
  Words::RuleText rule;
  rule.number = 3;
  rule.outcome = "holds";
  rule.tone = Words::Tone::Good;
  rule.condition = "cell > 5";
  rule.reasons = {"6 > 5 is true"};
  rule.formulas = {{.here = "", .steps = {{"A1", "6"}}, .isCut = true}};
  rule.holds = true;
  rule.sets = {{"fillColour", "fill #010203", DOM::Colour{1, 2, 3}}};
  rule.taken = {{.phrase = {"bold", "bold", std::nullopt}, .takenBy = 2}};
  Words::AccountText account;
  account.value = std::move(value);
  account.rules = {rule};
  account.style = {{.phrase = rule.sets[0], .rule = 3}};
  return account;
}

TEST(AccountDictionary, EqualAccountsAreThereOnce) {
  AccountDictionary dictionary;
  EXPECT_EQ(dictionary.add(makeAccount("6")), 0U);
  auto const bytes = dictionary.countBytes();
  EXPECT_EQ(dictionary.add(makeAccount("6")), 0U);
  EXPECT_EQ(dictionary.countBytes(), bytes);
  EXPECT_EQ(dictionary.add(makeAccount("7")), 1U);
}

TEST(AccountDictionary, RulesAndTextsAreNamedByTheirIndex) {
  AccountDictionary dictionary;
  (void)dictionary.add(makeAccount("6"));
  (void)dictionary.add(makeAccount("7"));
  auto const members = dictionary.getMembers();
  EXPECT_THAT(members, HasSubstr("\"texts\":[\"6\",\n\"\",\n\"holds\",\n\"cell \\u003e 5\""));
  // The second account repeats the rule of the first, and its texts but one.
  EXPECT_THAT(members, HasSubstr("\"rules\":[[3,2,\"good\",3,[4],[[1,[[5,0]],1]],1,1,"
                                 "[[6,\"#010203\"]],[[7,\"\",2]],[]]],"));
  EXPECT_THAT(members, HasSubstr("\"accounts\":[[0,1,[0],[],[[6,\"#010203\",3]],[],[]],\n"
                                 "[8,1,[0],[],[[6,\"#010203\",3]],[],[]]]"));
}

TEST(AccountDictionary, LongTextsAreShortened) {
  AccountDictionary dictionary;
  (void)dictionary.add(makeAccount(std::string(50'000, 'x')));
  EXPECT_LT(dictionary.countBytes(), 2'000U);
}

}  // namespace
}  // namespace Zorv::Render
