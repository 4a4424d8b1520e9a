#include "workbook/SheetRules.h"

#include <algorithm>
#include <functional>
#include <map>
#include <tuple>

namespace Zorv::Workbook {

namespace {

bool decidesBefore(Rule const* a, Rule const* b) noexcept {
  auto const rank = [](Rule const& rule) {
    return std::tuple(!rule.priority, rule.priority.value_or(0), rule.number);
  };
  return rank(*a) < rank(*b);
}

}  // namespace

SheetRules::SheetRules(Document const& document, std::size_t sheet,
                       ConditionalFormatters::ConditionalFormatRefs const& formatRefs)
    : _rules(formatRefs.size()) {
  for (std::size_t format = 0; format < formatRefs.size(); ++format) {
    _formats.emplace_back(&formatRefs[format].second.get(), format);
  }
  std::ranges::sort(_formats, std::less<>());
  std::map<Visuals::VisualFormat const*, Rule const*> byVisual;
  for (auto const& rule : document.getRulesOfSheet(sheet)) {
    if (rule.format != nullptr) {
      _rules[formatOf(rule)] = &rule;
    }
    if (rule.visual != nullptr) {
      byVisual.emplace(rule.visual, &rule);
    }
  }
  for (auto const& visual : document.getSheets()[sheet].visualFormats) {
    auto const rule = byVisual.find(visual.get());
    _visualRules.push_back(rule != byVisual.end() ? rule->second : nullptr);
  }
}

VisualRules SheetRules::rulesOf(Visuals::CellVisuals const& visuals) const noexcept {
  auto const ruleOf = [this](auto const& shown) {
    return shown ? _visualRules[shown->format] : nullptr;
  };
  return {ruleOf(visuals.scale), ruleOf(visuals.bar), ruleOf(visuals.icon)};
}

void SheetRules::listDeciding(std::span<ConditionalFormatters::FormatIndex const> formats,
                              VisualRules const& visuals,
                              std::vector<Rule const*>& deciding) const {
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

std::size_t SheetRules::formatOf(Rule const& rule) const noexcept {
  auto const found =
      std::ranges::lower_bound(_formats, rule.format, std::less<>(),
                               &std::pair<DOM::ConditionalFormat const*, std::size_t>::first);
  return found->second;
}

}  // namespace Zorv::Workbook
