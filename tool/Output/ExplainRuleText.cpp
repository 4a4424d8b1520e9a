#include "tool/Output/ExplainRuleText.h"

#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "words/Amounts.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

void addFormula(Words::FormulaText const& formula, ExplainLines& lines) {
  constexpr std::size_t mostLines = 16;
  if (!formula.here.empty()) {
    lines.add(1, fmt::format("here {}", formula.here));
  }
  // The last steps are those near the whole formula.
  auto const& steps = formula.steps;
  std::size_t const skipped = steps.size() - std::min(steps.size(), mostLines);
  std::size_t width = 0;
  for (auto const& step : steps) {
    width = std::max(width, Words::displayWidth(Words::toPrintable(step.text)));
  }
  constexpr std::size_t narrowestColumn = 3;
  width = std::clamp(width, narrowestColumn, lines.getWidth() / 2);
  for (std::size_t i = skipped; i < steps.size(); ++i) {
    lines.addPair(2, steps[i].text, width, steps[i].value);
  }
  if (skipped > 0 || formula.isCut) {
    lines.add(2, skipped > 0 ? fmt::format("and {} before (--format json tells them)",
                                           Words::countOf(skipped, "step"))
                             : "and parts that are left out");
  }
}

/// The properties of the rule's style: those that it decides, and those that an earlier one does.
void addStyle(Words::RuleText const& rule, ExplainLines& lines) {
  std::vector<Words::StylePhrase> taken;
  for (auto const& [phrase, takenBy] : rule.taken) {
    auto& added = taken.emplace_back(phrase);
    added.text += fmt::format(" (rule {} has set it)", takenBy);
  }
  lines.addPhrases(1, "sets ", rule.sets, "");
  lines.addPhrases(1, rule.sets.empty() ? "sets nothing: not " : "not ", taken, "");
  if (rule.sets.empty() && taken.empty()) {
    lines.add(1, "sets nothing");
  }
}

}  // namespace

void addRule(Words::RuleText const& rule, ExplainLines& lines) {
  lines.addTitle(fmt::format("Rule {} {}", rule.number, rule.outcome), rule.condition, rule.tone);
  for (auto const& reason : rule.reasons) {
    lines.add(1, reason);
  }
  for (auto const& formula : rule.formulas) {
    addFormula(formula, lines);
  }
  if (!rule.elsewhere.empty()) {
    lines.add(1, rule.elsewhere);
  }
  if (rule.holds) {
    addStyle(rule, lines);
  }
  for (auto const& doubt : rule.doubts) {
    lines.add(1, fmt::format("in doubt: {}", doubt));
  }
}

}  // namespace Zorv::Tool
