#include "analysis/Shared/SheetRules.h"

#include <algorithm>
#include <functional>
#include <map>
#include <tuple>
#include <utility>

#include "ConditionalFormatters/CndFrmt_StyleHierarchy.h"

namespace Zorv::Analysis {

namespace {

bool decidesBefore(Workbook::Rule const* a, Workbook::Rule const* b) noexcept {
  auto const rank = [](Workbook::Rule const& rule) {
    return std::tuple(!rule.priority, rule.priority.value_or(0), rule.number);
  };
  return rank(*a) < rank(*b);
}

}  // namespace

SheetRules::SheetRules(Workbook::Document const& document, std::size_t sheet,
                       ConditionalFormatters::ConditionalFormatRefs const& formatRefs)
    : _rules(formatRefs.size()) {
  for (std::size_t format = 0; format < formatRefs.size(); ++format) {
    _formats.emplace_back(&formatRefs[format].second.get(), format);
  }
  std::ranges::sort(_formats, std::less<>());
  std::map<Visuals::VisualFormat const*, Workbook::Rule const*> byVisual;
  for (auto const& rule : document.getRulesOfSheet(sheet)) {
    if (rule.format != nullptr) {
      _rules[formatOf(rule)] = &rule;
    }
    if (rule.visual != nullptr) {
      byVisual.emplace(rule.visual, &rule);
    }
  }
  for (auto const& visual : document.getSheets()[sheet].visualFormats) {
    _visualRules.push_back(byVisual.at(visual.get()));
  }
}

VisualRules SheetRules::rulesOf(Visuals::CellVisuals const& visuals) const noexcept {
  auto const ruleOf = [this](auto const& shown) {
    return shown ? &ruleOfVisual(shown->format) : nullptr;
  };
  return {ruleOf(visuals.scale), ruleOf(visuals.bar), ruleOf(visuals.icon)};
}

void SheetRules::listDeciding(std::span<ConditionalFormatters::FormatIndex const> formats,
                              VisualRules const& visuals,
                              std::vector<Workbook::Rule const*>& deciding) const {
  deciding.clear();
  for (auto const* rule : {visuals.scale, visuals.bar, visuals.icon}) {
    if (rule != nullptr) {
      deciding.push_back(rule);
    }
  }
  bool const hasVisuals = !deciding.empty();
  for (auto const format : formats) {
    deciding.push_back(&ruleOf(format));
  }
  // Formats come in the order of priority already.
  if (hasVisuals) {
    std::ranges::sort(deciding, decidesBefore);
  }
}

std::size_t SheetRules::formatOf(Workbook::Rule const& rule) const noexcept {
  auto const found =
      std::ranges::lower_bound(_formats, rule.format, std::less<>(),
                               &std::pair<DOM::ConditionalFormat const*, std::size_t>::first);
  return found->second;
}

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
