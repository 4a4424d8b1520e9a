#include "tool/RuleCounts.h"

#include "tool/ConditionText.h"
#include "tool/UnknownFunctions.h"

namespace Zorv::Tool {

RuleCounts::RuleCounts(std::vector<Workbook::Rule const*> const& rules)
    : read(rules.size()), unknownFunctions(findUnknownFunctions(rules)) {
  for (auto const* rule : rules) {
    if (rule->format) {
      ++resolved;
    } else {
      ++notResolvedByKind[describeType(rule->type)];
    }
  }
}

}  // namespace Zorv::Tool
