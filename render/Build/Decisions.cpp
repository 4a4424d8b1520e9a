#include "render/Build/Decisions.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

#include "analysis/Shared/Rules.h"
#include "words/ConditionText.h"
#include "words/StyleText.h"
#include "words/VisualText.h"

namespace Zorv::Render {

namespace {

/// The colour that stands for a visual format: that of its highest values, or of its bars.
std::optional<DOM::Colour> findVisualColour(Visuals::VisualKind const& kind) {
  if (auto const* const scale = std::get_if<Visuals::ColourScale>(&kind)) {
    return scale->points.empty() ? std::nullopt : std::optional(scale->points.back().colour);
  }
  auto const* const bar = std::get_if<Visuals::DataBar>(&kind);
  return bar != nullptr ? bar->fill : std::nullopt;
}

/// The colour that a style fills with, else that of its text.
std::optional<DOM::Colour> findStyleColour(DOM::CellStyle const& style) {
  auto const fill = Words::findFillColour(style);
  return fill || !style.getRunProps() ? fill : style.getRunProps()->colour;
}

PictureRule makeRule(Workbook::Document const& document, Workbook::Rule const& rule) {
  PictureRule result;
  result.number = rule.number;
  result.text = Words::describeCondition(rule);
  result.ranges = Words::describeRanges(rule);
  result.areas = rule.ranges;
  result.priority = rule.priority;
  result.stopsWhereTrue = rule.stopIfTrue;
  if (rule.visual != nullptr) {
    result.style = Words::describeDrawing(rule.visual->kind);
    result.colour = findVisualColour(rule.visual->kind);
  } else {
    DOM::CellStyle const style = Analysis::findRuleStyle(document, rule);
    result.style = Words::describe(style);
    result.colour = findStyleColour(style);
  }
  return result;
}

}  // namespace

Decisions::Decisions(Workbook::Document const& document, std::size_t sheet,
                     Workbook::SheetRules const& rules)
    : _sheetRules(rules), _lists(1) {
  auto const all = document.getRulesOfSheet(sheet);
  if (all.empty()) {
    return;
  }
  _firstNumber = all.front().number;
  _indexByNumber.resize(all.back().number - _firstNumber + 1);
  std::vector<Workbook::Rule const*> resolved;
  for (Workbook::Rule const& rule : all) {
    if (rule.isResolved()) {
      resolved.push_back(&rule);
    }
  }
  Analysis::sortByPriority(resolved);
  for (Workbook::Rule const* rule : resolved) {
    _indexByNumber[rule->number - _firstNumber] = static_cast<std::uint32_t>(_rules.size());
    _rules.push_back(makeRule(document, *rule));
  }
}

std::uint32_t Decisions::intern(std::span<FormatIndex const> formats,
                                Workbook::VisualRules const& visuals) {
  _current.clear();
  for (FormatIndex const format : formats) {
    _current.push_back(indexOf(_sheetRules.ruleOf(format)));
  }
  for (Workbook::Rule const* rule : {visuals.scale, visuals.bar, visuals.icon}) {
    if (rule != nullptr) {
      _current.push_back(indexOf(*rule));
    }
  }
  std::ranges::sort(_current);
  if (_current != _lists[_last]) {
    auto const [entry, isNew] =
        _known.try_emplace(_current, static_cast<std::uint32_t>(_lists.size()));
    if (_current.empty()) {
      entry->second = 0;
    } else if (isNew) {
      _lists.push_back(_current);
    }
    _last = entry->second;
  }
  return _last;
}

void Decisions::countCell(std::uint32_t decision) noexcept {
  for (std::uint32_t const rule : _lists[decision]) {
    ++_rules[rule].cellCount;
  }
}

std::uint32_t Decisions::indexOf(Workbook::Rule const& rule) const noexcept {
  return _indexByNumber[rule.number - _firstNumber];
}

}  // namespace Zorv::Render
