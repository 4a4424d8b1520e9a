#include <string>

#include <fmt/format.h>

#include "analysis/Shared/Rules.h"
#include "tool/Output/ColumnWidths.h"
#include "tool/Output/RulesOutput.h"
#include "tool/Text/TextTable.h"
#include "words/ConditionText.h"
#include "words/RuleEffect.h"
#include "words/StyleText.h"

namespace Zorv::Tool {

namespace {

/// Effect of a resolved rule, with its doubts; else the reason why it is not resolved.
std::string describeResult(Workbook::Document const& document, Workbook::Rule const& rule) {
  if (!rule.isResolved()) {
    return fmt::format("not resolved: {}", rule.unresolvedReason);
  }
  auto const style = Words::describeEffect(document, rule);
  return rule.doubts.empty()
             ? style
             : fmt::format("{} (in doubt: {})", style, fmt::join(rule.doubts, ", "));
}

std::optional<DOM::Colour> findSwatch(Workbook::Document const& document,
                                      Workbook::Rule const& rule) {
  return rule.format != nullptr ? Words::findFillColour(Analysis::findRuleStyle(document, rule))
                                : std::nullopt;
}

}  // namespace

void printRulesTable(Selection const& selection, Terminal const& terminal, OutputBuffer& out) {
  auto const& document = selection.getDocument();
  TextTable table({{"SHEET", ColumnWidths::name},
                   {"RULE", ColumnWidths::number},
                   {"PRIORITY", ColumnWidths::number},
                   {"STOPS", ColumnWidths::number},
                   {"RANGES", ColumnWidths::name},
                   {"CONDITION", ColumnWidths::condition},
                   {"STYLE", ColumnWidths::style, true}},
                  out, terminal);
  for (auto const sheet : selection.getSheets()) {
    for (auto const* rule : selection.getRulesByPriority(sheet)) {
      table.addRow({document.getSheets()[sheet].name, std::to_string(rule->number),
                    rule->priority ? std::to_string(*rule->priority) : "-",
                    rule->stopIfTrue ? "yes" : "-", Words::describeRanges(*rule),
                    Words::describeCondition(*rule), describeResult(document, *rule)},
                   findSwatch(document, *rule));
    }
  }
  table.finish();
}

}  // namespace Zorv::Tool
