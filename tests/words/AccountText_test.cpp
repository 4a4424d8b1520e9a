#include "words/AccountText.h"

#include <memory>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DOM/Table.h"

namespace Zorv::Words {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AccountTextTest : public testing::Test {
protected:
  AccountTextTest() {
    auto& sheet = document.getSheets().emplace_back();
    sheet.name = "Sheet1";
    sheet.table = std::make_unique<DOM::Table>();
    for (std::size_t number = 0; number < 2; ++number) {
      auto& rule = document.getRules().emplace_back();
      rule.number = number;
      rule.type = "dataBar";
      rule.ranges = {{0, 0, 1, 1}};
      rule.priority = 4;
    }
    account.cell = CellIndex(RowIndex(1UL), ColumnIndex(2UL));
  }

  AccountText describe() { return AccountWriter(document, locale).describe(account); }

  Workbook::Document document;
  OfficeUtils::LocaleContext locale{"en-US", OfficeUtils::DateSystem::Since1900};
  Analysis::CellAccount account;
};

TEST_F(AccountTextTest, ACellWithoutRulesSaysWhy) {
  EXPECT_EQ(describe().cell, "Sheet1!C2");
  EXPECT_EQ(describe().value, "empty");
  EXPECT_EQ(describe().absence, "The sheet has no conditional format.");
  account.rulesElsewhere = 1;
  EXPECT_EQ(describe().absence, "No conditional format is on this cell.");
}

TEST_F(AccountTextTest, TheNearestRuleIsNamedUnlessItWasAskedFor) {
  account.rulesElsewhere = 1;
  account.nearest = {
      {.rule = &document.getRules()[0], .range = {0, 0, 1, 1}, .rows = 1, .columns = 2}};
  EXPECT_THAT(describe().nearest,
              ElementsAre("rule 0 is 1 row and 2 columns away, on A1: data bar"));
  account.rules.push_back(
      {.rule = &document.getRules()[0], .visual = Analysis::VisualOutcome::NotOnThisCell});
  EXPECT_THAT(describe().nearest, ElementsAre("A1 is 1 row and 2 columns away"));
}

TEST_F(AccountTextTest, ARuleThatIsNotResolvedSaysWhy) {
  document.getRules()[0].unresolvedReason = "no ranges";
  account.rules.push_back({.rule = &document.getRules()[0]});
  auto const rule = describe().rules.at(0);
  EXPECT_EQ(rule.outcome, "is not resolved");
  EXPECT_EQ(rule.tone, Tone::Faint);
  EXPECT_THAT(rule.reasons, ElementsAre("on A1, priority 4", "no ranges"));
  EXPECT_FALSE(rule.holds);
  EXPECT_THAT(rule.sets, IsEmpty());
}

TEST_F(AccountTextTest, FailuresAreShortened) {
  auto const failure = std::make_exception_ptr(std::runtime_error(std::string(5'000, 'x')));
  EXPECT_LE(describeProblem(failure).size(), 300U);
  EXPECT_EQ(describeProblem(std::make_exception_ptr(5)), "unknown error");
}

TEST_F(AccountTextTest, WhatACellHasOfItsOwnIsApart) {
  auto props = std::make_shared<DOM::RunProps const>(DOM::RunProps{.bold = true, .italic = true});
  account.effectiveStyle.setRunProps(props);
  account.properties = {{"bold", &document.getRules()[1]}, {"italic", nullptr}};
  auto const text = describe();
  ASSERT_EQ(text.style.size(), 1U);
  EXPECT_EQ(text.style[0].phrase.text, "bold");
  EXPECT_EQ(text.style[0].rule, 1U);
  ASSERT_EQ(text.own.size(), 1U);
  EXPECT_EQ(text.own[0].text, "italic");
}

}  // namespace
}  // namespace Zorv::Words
