#include <string>

#include <fmt/format.h>

#include "records/JsonText.h"
#include "tool/Output/FieldLines.h"
#include "tool/Output/JsonDocument.h"
#include "tool/Output/RulesOutput.h"
#include "words/ConditionText.h"
#include "words/RuleEffect.h"

// Rules one a line, each line complete in itself.
namespace Zorv::Tool {

namespace {

std::string describeProblem(Workbook::Rule const& rule) {
  return rule.isResolved() ? fmt::format("{}", fmt::join(rule.doubts, ", "))
                           : rule.unresolvedReason;
}

void printRuleFields(Workbook::Document const& document, Workbook::Rule const& rule,
                     FieldLines& lines) {
  lines.addLine({document.getSheets()[rule.sheet].name, std::to_string(rule.number), rule.type,
                 rule.priority ? std::to_string(*rule.priority) : "", rule.stopIfTrue ? "1" : "0",
                 Words::listRanges(rule), Words::describeCondition(rule),
                 fmt::format("{}", fmt::join(rule.formulas, " ; ")),
                 Words::describeEffect(document, rule), rule.isResolved() ? "1" : "0",
                 describeProblem(rule)});
}

}  // namespace

void printRulesFields(Selection const& selection, bool isFirstFile, OutputBuffer& out) {
  FieldLines lines(selection, out);
  if (isFirstFile) {
    lines.addHeadings({"sheet", "rule", "kind", "priority", "stop", "ranges", "condition",
                       "formulas", "style", "resolved", "problem"});
  }
  for (auto const sheet : selection.getSheets()) {
    for (auto const* rule : selection.getRulesByPriority(sheet)) {
      printRuleFields(selection.getDocument(), *rule, lines);
    }
  }
}

void printRulesJsonLines(Selection const& selection, OutputBuffer& out) {
  for (auto const sheet : selection.getSheets()) {
    auto const front = beginJsonLine(selection, selection.getDocument().getSheets()[sheet]);
    for (auto const* rule : selection.getRulesByPriority(sheet)) {
      // The rule's members follow those of the line.
      out.text() +=
          front + ',' + Records::toJsonText(selection.getDocument(), *rule).substr(1) + '\n';
      out.endEntry();
    }
  }
}

}  // namespace Zorv::Tool
