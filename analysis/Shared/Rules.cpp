#include "analysis/Shared/Rules.h"

#include <algorithm>
#include <utility>

#include "ConditionalFormatters/CndFrmt_StyleHierarchy.h"

namespace Zorv::Analysis {

DOM::CellStyle findRuleStyle(Workbook::Document const& document, Workbook::Rule const& rule) {
  DOM::CellStyle style;
  style.setParentUUID(rule.format->getStyleUUID());
  return DOM::getOverridenAllPropsWithParentStyles(document.getStyles(), style,
                                                   DOM::TrackChangesViewMode::Final);
}

void sortByPriority(std::vector<Workbook::Rule const*>& rules) {
  std::ranges::stable_sort(rules, {}, [](Workbook::Rule const* rule) {
    return std::pair(!rule->priority.has_value(), rule->priority.value_or(0));
  });
}

}  // namespace Zorv::Analysis
