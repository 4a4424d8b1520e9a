#include "tool/Output/RuleCounts.h"

#include "words/ConditionText.h"

namespace Zorv::Tool {

RuleCounts::RuleCounts(std::vector<Workbook::Rule const*> const& rules) : read(rules.size()) {
  for (auto const* rule : rules) {
    if (rule->isResolved()) {
      ++resolved;
      doubtful += rule->doubts.empty() ? 0 : 1;
      unknownFunctions.insert(rule->unknownFunctions.begin(), rule->unknownFunctions.end());
      continue;
    }
    auto& ofKind = notResolvedByKind[Words::describeType(rule->type)];
    if (++ofKind.count == 1) {
      ofKind.reason = rule->unresolvedReason;
    }
    ofKind.hasOthers = ofKind.hasOthers || ofKind.reason != rule->unresolvedReason;
  }
}

}  // namespace Zorv::Tool
