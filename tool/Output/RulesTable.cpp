#include <ostream>
#include <string>

#include <fmt/format.h>

#include "ConditionalFormatters/CndFrmt_StyleHierarchy.h"
#include "tool/Output/RulesOutput.h"
#include "tool/Text/ConditionText.h"
#include "tool/Text/StyleText.h"
#include "tool/Text/TextTable.h"

namespace Zorv::Tool {

void printRulesTable(Selection const& selection, std::ostream& out) {
  auto const& document = selection.getDocument();
  TextTable table({"SHEET", "PRIORITY", "STOPS", "RANGES", "CONDITION", "STYLE"});
  for (auto const sheet : selection.getSheets()) {
    for (auto const* rule : selection.getRulesByPriority(sheet)) {
      table.addRow({document.getSheets()[sheet].name,
                    rule->priority ? std::to_string(*rule->priority) : "-",
                    rule->stopIfTrue ? "yes" : "-", describeRanges(*rule), describeCondition(*rule),
                    rule->format ? describe(findStyle(document, *rule))
                                 : fmt::format("not resolved: {}", rule->unresolvedReason)});
    }
  }
  out << table.format();
}

DOM::CellStyle findStyle(Workbook::Document const& document, Workbook::Rule const& rule) {
  DOM::CellStyle style;
  style.setParentUUID(rule.format->getStyleUUID());
  return DOM::getOverridenAllPropsWithParentStyles(document.getStyles(), style,
                                                   DOM::TrackChangesViewMode::Final);
}

}  // namespace Zorv::Tool
