#include "analysis/Shared/SheetRules.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace Zorv::Analysis {

SheetRules::SheetRules(Workbook::Document const& document, std::size_t sheet,
                       ConditionalFormatters::ConditionalFormatRefs const& formatRefs)
    : _rules(formatRefs.size()) {
  for (std::size_t format = 0; format < formatRefs.size(); ++format) {
    _formats.emplace_back(&formatRefs[format].second.get(), format);
  }
  std::ranges::sort(_formats, std::less<>());
  for (auto const& rule : document.getRulesOfSheet(sheet)) {
    if (rule.format != nullptr) {
      _rules[formatOf(rule)] = &rule;
    }
  }
}

std::size_t SheetRules::formatOf(Workbook::Rule const& rule) const noexcept {
  auto const found =
      std::ranges::lower_bound(_formats, rule.format, std::less<>(),
                               &std::pair<DOM::ConditionalFormat const*, std::size_t>::first);
  return found->second;
}

void sortByPriority(std::vector<Workbook::Rule const*>& rules) {
  std::ranges::stable_sort(rules, {}, [](Workbook::Rule const* rule) {
    return std::pair(!rule->priority.has_value(), rule->priority.value_or(0));
  });
}

}  // namespace Zorv::Analysis
