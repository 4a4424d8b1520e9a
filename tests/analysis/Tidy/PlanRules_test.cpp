#include "analysis/Tidy/PlanRules.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DOM/A1Notation.h"

namespace Zorv::Analysis {
namespace {

constexpr std::uint64_t bold = 1U << 10U;

PlanRule makeRule(std::size_t condition, char const* ranges,
                  std::uint64_t properties = fillProperty, bool stops = false) {
  PlanRule rule;
  rule.condition = condition;
  rule.effect.properties = properties;
  rule.effect.look = condition;
  rule.effect.stops = stops;
  rule.mayJoin = true;
  rule.ranges = DOM::A1Notation::parseRanges(ranges).value();
  return rule;
}

bool canAlways(std::size_t /*rule*/, CellIndex /*base*/) { return true; }

/// `0+2 A1:A9, 1 B1, dropped 3 by 1`.
std::string describePlan(std::vector<PlanRule> const& rules,
                         CanMoveBase const& canMoveBase = canAlways) {
  RulesPlan const plan = planRules(rules, canMoveBase, nullptr);
  std::string text;
  for (KeptRule const& kept : plan.kept) {
    text += (text.empty() ? "" : ", ") + std::to_string(kept.rule);
    for (std::size_t const joined : kept.joined) {
      text += "+" + std::to_string(joined);
    }
    text += " " + DOM::A1Notation::toAddress(kept.ranges);
  }
  for (DroppedRule const& dropped : plan.dropped) {
    text += ", dropped " + std::to_string(dropped.rule);
    text += dropped.cover ? " by " + std::to_string(*dropped.cover) : "";
  }
  return text;
}

TEST(PlanRules, JoinsFragments) {
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), makeRule(1, "A5:A9"), makeRule(1, "B1:B9")}),
            "0+1+2 A1:B9");
}

TEST(PlanRules, KeepsRulesOfOtherConditionsLooksAndStopsApart) {
  auto other = makeRule(1, "A5:A9");
  other.effect.look = 7;
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), makeRule(2, "A5:A9")}), "0 A1:A4, 1 A5:A9");
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), other}), "0 A1:A4, 1 A5:A9");
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), makeRule(1, "A5:A9", fillProperty, true)}),
            "0 A1:A4, 1 A5:A9");
}

TEST(PlanRules, JoinsPairsOfRulesThatAlternate) {
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), makeRule(2, "A1:A4"), makeRule(1, "A5:A9"),
                          makeRule(2, "A5:A9")}),
            "0+2 A1:A9, 1+3 A1:A9");
}

TEST(PlanRules, DoesNotMoveARulePastOneThatDecidesTheSameOnTheSameCells) {
  // Upwards, rule 2 would pass rule 1 on A5; downwards, rule 0 would pass it on A4.
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), makeRule(2, "A4:A5"), makeRule(1, "A5:A9")}),
            "0 A1:A4, 1 A4:A5, 2 A5:A9");
}

TEST(PlanRules, MovesARuleDownwardsIfItCannotMoveUpwards) {
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), makeRule(2, "A5:A6"), makeRule(1, "A5:A9")}),
            "1 A5:A6, 2+0 A1:A9");
}

TEST(PlanRules, MovesARulePastOneThatSetsOtherProperties) {
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), makeRule(2, "A1:A9", bold), makeRule(1, "A5:A9")}),
            "0+2 A1:A9, 1 A1:A9");
}

TEST(PlanRules, MovesNoRulePastOneThatStops) {
  EXPECT_EQ(
      describePlan({makeRule(1, "A1:A4"), makeRule(2, "A1:A9", bold, true), makeRule(1, "A5:A9")}),
      "0 A1:A4, 1 A1:A9, 2 A5:A9");
}

TEST(PlanRules, MovesARulePastAnObstacleOnCellsThatItHasAlready) {
  // On A4 rule 2 does nothing, since rule 0 has done it.
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), makeRule(2, "A4"), makeRule(1, "A4:A9")}),
            "0+2 A1:A9, 1 A4");
}

TEST(PlanRules, DropsARuleThatAnEarlierOneCovers) {
  EXPECT_EQ(describePlan({makeRule(1, "A1:B9"), makeRule(2, "A1:A9"), makeRule(1, "A2:A5")}),
            "0 A1:B9, 1 A1:A9, dropped 2 by 0");
}

TEST(PlanRules, DropsARuleOfAnyLookThatAnEarlierOneStops) {
  auto later = makeRule(1, "A2:A5");
  later.effect.look = 7;
  EXPECT_EQ(describePlan({makeRule(1, "A1:A9", fillProperty, true), later}),
            "0 A1:A9, dropped 1 by 0");
  EXPECT_EQ(describePlan({makeRule(1, "A1:A9"), later}), "0 A1:A9, 1 A2:A5");
}

TEST(PlanRules, DropsARuleThatNeverHolds) {
  auto never = makeRule(2, "A1:A9", fillProperty, true);
  never.neverHolds = true;
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), never, makeRule(1, "A5:A9")}),
            "0+2 A1:A9, dropped 1");
  never.isFixed = true;
  EXPECT_EQ(describePlan({never}), "0 A1:A9");
}

TEST(PlanRules, KeepsALaterRuleThatStopsWhereTheEarlierOneDoesNot) {
  EXPECT_EQ(describePlan({makeRule(1, "A1:A9"), makeRule(1, "A1:A9", fillProperty, true)}),
            "0 A1:A9, 1 A1:A9");
}

TEST(PlanRules, JoinsNoRulesWhoseRangesAreTheirMeaning) {
  auto first = makeRule(1, "A1:A9");
  auto second = makeRule(1, "A1:A9");
  first.mayJoin = second.mayJoin = false;
  EXPECT_EQ(describePlan({first, second}), "0 A1:A9, dropped 1 by 0");
  second.ranges = first.ranges;
  second.condition = 2;
  EXPECT_EQ(describePlan({first, second}), "0 A1:A9, 1 A1:A9");
}

TEST(PlanRules, LeavesFixedRulesAloneAndMovesNothingPastUnknownOnes) {
  auto fixed = makeRule(1, "A5:A9");
  fixed.isFixed = true;
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), fixed, makeRule(1, "A5:A9")}),
            "0+2 A1:A9, 1 A5:A9");
  fixed.effect.isUnknown = true;
  EXPECT_EQ(describePlan({makeRule(1, "A1:A5"), fixed, makeRule(1, "A5:A9")}),
            "0 A1:A5, 1 A5:A9, 2 A5:A9");
}

TEST(PlanRules, AsksWhetherTheFormulasCanBeWrittenForTheNewBase) {
  auto const canNever = [](std::size_t /*rule*/, CellIndex /*base*/) { return false; };
  EXPECT_EQ(describePlan({makeRule(1, "A1:A4"), makeRule(1, "A5:A9")}, canNever), "0+1 A1:A9");
  EXPECT_EQ(describePlan({makeRule(1, "B5"), makeRule(1, "C3")}, canNever), "0 B5, 1 C3");
  // The later rule has the base of both.
  EXPECT_EQ(describePlan({makeRule(1, "A5:A9"), makeRule(1, "A1:A4")}, canNever), "1+0 A1:A9");
}

TEST(PlanRules, TriesAgainWhatALaterJoinMakesPossible) {
  // Neither of the first two has the base of both; the third has that of all.
  auto const canNever = [](std::size_t /*rule*/, CellIndex /*base*/) { return false; };
  EXPECT_EQ(describePlan({makeRule(1, "B5"), makeRule(1, "C3"), makeRule(1, "A1")}, canNever),
            "2+0+1 A1 C3 B5");
}

TEST(PlanRules, EndsWithItsBudget) {
  std::vector<PlanRule> rules;
  for (std::size_t at = 0; at < 3'000; ++at) {
    rules.push_back(makeRule(1, "A1:A9"));
    rules.back().effect.look = at;
  }
  WorkBudget budget({.steps = 10'000});
  EXPECT_THROW(static_cast<void>(planRules(rules, canAlways, &budget)), WorkBudgetExceeded);
}

}  // namespace
}  // namespace Zorv::Analysis
