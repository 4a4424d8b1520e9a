#include "render/Build/Decisions.h"

#include <algorithm>
#include <utility>

#include "workbook/Quote.h"

namespace Zorv::Render {

namespace {

/// The rule as the file names it, and its formulas.
std::string describeRule(Workbook::Rule const& rule) {
  std::string text = rule.type;
  if (!rule.operatorText.empty()) {
    text += " " + rule.operatorText;
  }
  for (std::string const& formula : rule.formulas) {
    text += " " + Workbook::quote(formula);
  }
  return text;
}

}  // namespace

Decisions::Decisions(Workbook::Document const& document, std::size_t sheet,
                     Analysis::SheetRules const& rules)
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
    _rules.push_back({.number = rule->number,
                      .text = describeRule(*rule),
                      .ranges = rule->rangeText,
                      .cellCount = 0});
  }
}

std::uint32_t Decisions::intern(std::span<FormatIndex const> formats,
                                Analysis::VisualRules const& visuals) {
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
