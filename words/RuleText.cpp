#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "analysis/Shared/Rules.h"
#include "words/AccountText.h"
#include "words/Amounts.h"
#include "words/ConditionText.h"
#include "words/OperandText.h"
#include "words/Printable.h"
#include "words/ValueText.h"
#include "words/VisualText.h"

namespace Zorv::Words {

namespace {

using Analysis::FormatOutcome;
using Analysis::RuleAccount;

struct OutcomeWords {
  std::string text;
  Tone tone;
};

OutcomeWords describeVisualOutcome(Analysis::VisualOutcome outcome, RuleAccount const& rule,
                                   Visuals::CellVisuals const& visuals) {
  switch (outcome) {
    case Analysis::VisualOutcome::Draws:
      return {"draws " + describeOf(visuals, rule.rule->visual->kind), Tone::Good};
    case Analysis::VisualOutcome::Failed:
      return {"cannot be drawn", Tone::Bad};
    case Analysis::VisualOutcome::NotReached:
      return {"is not reached", Tone::Faint};
    case Analysis::VisualOutcome::NotOnThisCell:
      return {"is not on this cell", Tone::Faint};
    case Analysis::VisualOutcome::NoNumber:
    case Analysis::VisualOutcome::NoCondition:
      break;
  }
  return {"draws nothing", Tone::Plain};
}

OutcomeWords describeOutcome(RuleAccount const& rule, Visuals::CellVisuals const& visuals) {
  if (rule.visual) {
    return describeVisualOutcome(*rule.visual, rule, visuals);
  }
  if (!rule.outcome) {
    return {"is not resolved", Tone::Faint};
  }
  switch (*rule.outcome) {
    case FormatOutcome::Holds:
      return {"holds", Tone::Good};
    case FormatOutcome::DoesNotHold:
      return {"does not hold", Tone::Plain};
    case FormatOutcome::Failed:
      return {"cannot be evaluated", Tone::Bad};
    case FormatOutcome::NotReached:
      return {"is not reached", Tone::Faint};
    case FormatOutcome::NotOnThisCell:
      break;
  }
  return {"is not on this cell", Tone::Faint};
}

std::string describeTraced(Formulas::TracedValue const& traced,
                           OfficeUtils::LocaleContext const& locale) {
  using Kind = Formulas::TracedValue::Kind;
  switch (traced.kind) {
    case Kind::Single:
      return describeValue(traced.value,
                           traced.isDate ? NumberMeaning::Date : NumberMeaning::Number, locale);
    case Kind::Ranges:
      return countOf(traced.rangeCount, "range");
    case Kind::Function:
      return "a function";
    case Kind::Range:
    case Kind::Array:
      break;
  }
  auto const count = traced.rows * traced.columns;
  auto text = countOf(count, traced.kind == Kind::Range ? "cell" : "value") + ": ";
  for (auto const& value : traced.firstValues) {
    text += describeValue(value, NumberMeaning::Number, locale) + ", ";
  }
  text += "...";
  if (traced.firstValues.size() == count) {
    constexpr std::size_t end = std::string_view(", ...").size();
    text.resize(text.size() - end);
  }
  return text;
}

FormulaText describeFormula(Analysis::FormulaAccount const& formula,
                            OfficeUtils::LocaleContext const& locale) {
  auto const& trace = formula.trace;
  FormulaText text;
  if (trace.steps.empty() || trace.text != trace.steps.back().text) {
    text.here = trace.text;
  }
  for (auto const& step : trace.steps) {
    text.steps.push_back({.text = step.text, .value = describeTraced(step.value, locale)});
  }
  text.isCut = trace.isCut;
  return text;
}

std::string describePlace(Workbook::Rule const& rule) {
  auto const priority =
      rule.priority ? fmt::format("priority {}", *rule.priority) : std::string("no priority");
  return fmt::format("on {}, {}{}", describeRanges(rule), priority,
                     rule.stopIfTrue ? ", stops where it holds" : "");
}

void addReasons(RuleAccount const& rule, RuleWords const& words, RuleText& text) {
  text.reasons.push_back(words.place);
  if (!rule.rule->isResolved()) {
    text.reasons.push_back(rule.rule->unresolvedReason);
  }
  if (rule.visual == Analysis::VisualOutcome::NoNumber) {
    text.reasons.emplace_back("the value is no number");
  }
  if (rule.visual == Analysis::VisualOutcome::NoCondition) {
    text.reasons.emplace_back("its own formula is not true");
  }
  if (rule.endedBy != nullptr) {
    text.reasons.push_back(fmt::format("rule {} {}", rule.endedBy->number,
                                       rule.endedBy->visual != nullptr ? "draws before it"
                                       : rule.endedBy->stopIfTrue      ? "holds and stops"
                                                                       : "cannot be evaluated"));
  }
  if (rule.holdsByItself) {
    text.reasons.push_back(
        fmt::format("by itself it {}", *rule.holdsByItself ? "holds" : "does not hold"));
  }
  if (rule.failure) {
    text.reasons.push_back(describeProblem(rule.failure));
  }
}

/// The properties of the rule's style: those that it decides, and those that an earlier one does.
void addStyle(RuleAccount const& rule, RuleWords const& words, RuleText& text) {
  for (auto const& phrase : words.style) {
    auto const found =
        std::ranges::find(rule.properties, phrase.property, &Analysis::PropertyAccount::name);
    if (found != rule.properties.end() && found->takenBy != nullptr) {
      text.taken.push_back({.phrase = phrase, .takenBy = found->takenBy->number});
    } else if (found != rule.properties.end()) {
      text.sets.push_back(phrase);
    }
  }
}

}  // namespace

RuleWords makeRuleWords(Workbook::Document const& document, Workbook::Rule const& rule) {
  return {.condition = describeCondition(rule),
          .place = describePlace(rule),
          .style = rule.format != nullptr ? listPhrases(Analysis::findRuleStyle(document, rule))
                                          : std::vector<StylePhrase>()};
}

RuleText describeRule(RuleAccount const& rule, RuleWords const& words,
                      Analysis::CellAccount const& cell, NumberMeaning meaning,
                      OfficeUtils::LocaleContext const& locale) {
  auto [outcome, tone] = describeOutcome(rule, cell.visuals);
  RuleText text;
  text.number = rule.rule->number;
  text.outcome = std::move(outcome);
  text.tone = tone;
  text.condition = words.condition;
  addReasons(rule, words, text);
  FormulaValue const value = cell.content != nullptr ? cell.content->value : FormulaValue();
  if (auto test = describeTest(rule, value, meaning, locale); !test.empty()) {
    text.reasons.push_back(std::move(test));
  }
  for (auto const& formula : rule.formulas) {
    text.formulas.push_back(describeFormula(formula, locale));
  }
  if (rule.elsewhere) {
    text.elsewhere =
        fmt::format("in other programs it {}: {}",
                    rule.elsewhere->holds ? "holds" : "does not hold", rule.elsewhere->reason);
  }
  text.holds = rule.outcome == FormatOutcome::Holds;
  if (text.holds) {
    addStyle(rule, words, text);
  }
  text.doubts = rule.rule->doubts;
  return text;
}

std::string describeProblem(std::exception_ptr const& problem) {
  constexpr std::size_t widestMessage = 300;
  try {
    std::rethrow_exception(problem);
  } catch (std::exception const& error) {
    return shorten(error.what(), widestMessage);
  } catch (...) {
    return "unknown error";
  }
}

}  // namespace Zorv::Words
