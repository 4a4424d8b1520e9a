#include "tool/Output/ExplainRuleText.h"

#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "OfficeUtils/NumberFormat.h"
#include "tool/Output/OperandText.h"
#include "tool/Output/Problem.h"
#include "tool/Output/RulesOutput.h"
#include "tool/Text/Amounts.h"
#include "tool/Text/ConditionText.h"
#include "tool/Text/Printable.h"
#include "tool/Text/StyleText.h"
#include "tool/Text/VisualText.h"

namespace Zorv::Tool {

namespace {

using Analysis::FormatOutcome;
using Analysis::RuleAccount;
using Tone = ExplainLines::Tone;

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

/// What numbers of the cell mean, by its number format.
NumberMeaning meaningOf(Analysis::CellAccount const& cell) {
  auto const& format = cell.effectiveStyle.getCellFormat();
  auto const number = cell.content != nullptr
                          ? FormulaModel::asFormulaNumberOpt(cell.content->value)
                          : boost::optional<FormulaModel::FormulaNumber>();
  if (!format || !number) {
    return NumberMeaning::Number;
  }
  auto const compiled = OfficeUtils::NumberFormat::compile(format->code);
  return compiled && compiled->showsDate(number->value.get()) ? NumberMeaning::Date
                                                              : NumberMeaning::Number;
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

void addTrace(Analysis::FormulaAccount const& formula, OfficeUtils::LocaleContext const& locale,
              ExplainLines& lines) {
  constexpr std::size_t mostLines = 16;
  auto const& trace = formula.trace;
  if (trace.steps.empty() || trace.text != trace.steps.back().text) {
    lines.add(1, fmt::format("here {}", trace.text));
  }
  // The last steps are those near the whole formula.
  std::size_t const skipped = trace.steps.size() - std::min(trace.steps.size(), mostLines);
  std::size_t width = 0;
  for (auto const& step : trace.steps) {
    width = std::max(width, displayWidth(toPrintable(step.text)));
  }
  constexpr std::size_t narrowestColumn = 3;
  width = std::clamp(width, narrowestColumn, lines.getWidth() / 2);
  for (std::size_t i = skipped; i < trace.steps.size(); ++i) {
    auto const& step = trace.steps[i];
    lines.addPair(2, step.text, width, describeTraced(step.value, locale));
  }
  if (skipped > 0 || trace.isCut) {
    lines.add(2, skipped > 0 ? fmt::format("and {} before (--format json tells them)",
                                           countOf(skipped, "step"))
                             : "and parts that are left out");
  }
}

/// The properties of the rule's style: those that it decides, and those that an earlier one does.
void addStyle(RuleAccount const& rule, Workbook::Document const& document, ExplainLines& lines) {
  std::vector<StylePhrase> sets;
  std::vector<StylePhrase> taken;
  for (auto& phrase : listPhrases(findStyle(document, *rule.rule))) {
    auto const found =
        std::ranges::find(rule.properties, phrase.property, &Analysis::PropertyAccount::name);
    if (found != rule.properties.end() && found->takenBy != nullptr) {
      phrase.text += fmt::format(" (rule {} has set it)", found->takenBy->number);
      taken.push_back(std::move(phrase));
    } else if (found != rule.properties.end()) {
      sets.push_back(std::move(phrase));
    }
  }
  lines.addPhrases(1, "sets ", sets, "");
  lines.addPhrases(1, sets.empty() ? "sets nothing: not " : "not ", taken, "");
  if (sets.empty() && taken.empty()) {
    lines.add(1, "sets nothing");
  }
}

void addReason(RuleAccount const& rule, ExplainLines& lines) {
  if (!rule.rule->isResolved()) {
    lines.add(1, rule.rule->unresolvedReason);
  }
  if (rule.visual == Analysis::VisualOutcome::NoNumber) {
    lines.add(1, "the value is no number");
  }
  if (rule.visual == Analysis::VisualOutcome::NoCondition) {
    lines.add(1, "its own formula is not true");
  }
  if (rule.endedBy != nullptr) {
    lines.add(1, fmt::format("rule {} {}", rule.endedBy->number,
                             rule.endedBy->visual != nullptr ? "draws before it"
                             : rule.endedBy->stopIfTrue      ? "holds and stops"
                                                             : "cannot be evaluated"));
  }
  if (rule.holdsByItself) {
    lines.add(1, fmt::format("by itself it {}", *rule.holdsByItself ? "holds" : "does not hold"));
  }
  if (rule.failure) {
    lines.add(1, describeProblem(rule.failure));
  }
}

std::string describePlace(Workbook::Rule const& rule) {
  auto const priority =
      rule.priority ? fmt::format("priority {}", *rule.priority) : std::string("no priority");
  return fmt::format("on {}, {}{}", describeRanges(rule), priority,
                     rule.stopIfTrue ? ", stops where it holds" : "");
}

}  // namespace

void addRule(RuleAccount const& rule, Analysis::CellAccount const& cell,
             Workbook::Document const& document, OfficeUtils::LocaleContext const& locale,
             ExplainLines& lines) {
  auto const [outcome, tone] = describeOutcome(rule, cell.visuals);
  lines.addTitle(fmt::format("Rule {} {}", rule.rule->number, outcome),
                 describeCondition(*rule.rule), tone);
  lines.add(1, describePlace(*rule.rule));
  addReason(rule, lines);
  FormulaValue const value = cell.content != nullptr ? cell.content->value : FormulaValue();
  if (auto const test = describeTest(rule, value, meaningOf(cell), locale); !test.empty()) {
    lines.add(1, test);
  }
  for (auto const& formula : rule.formulas) {
    addTrace(formula, locale, lines);
  }
  if (rule.elsewhere) {
    lines.add(
        1, fmt::format("in other programs it {}: {}",
                       rule.elsewhere->holds ? "holds" : "does not hold", rule.elsewhere->reason));
  }
  if (rule.outcome == FormatOutcome::Holds) {
    addStyle(rule, document, lines);
  }
  for (auto const& doubt : rule.rule->doubts) {
    lines.add(1, fmt::format("in doubt: {}", doubt));
  }
}

}  // namespace Zorv::Tool
