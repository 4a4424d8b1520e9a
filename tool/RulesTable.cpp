#include <ostream>
#include <string>

#include <fmt/format.h>

#include "tool/ConditionText.h"
#include "tool/RulesOutput.h"
#include "tool/StyleText.h"
#include "tool/TextTable.h"

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

}  // namespace Zorv::Tool
