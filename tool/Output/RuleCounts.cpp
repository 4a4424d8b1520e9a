#include "tool/Output/RuleCounts.h"

#include "tool/Output/UnknownFunctions.h"
#include "tool/Text/ConditionText.h"

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
