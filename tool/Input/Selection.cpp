#include "tool/Input/Selection.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <string>

#include <fmt/format.h>

#include "Utils/TableRange.h"

namespace Zorv::Tool {

namespace {

std::string listSheets(Workbook::Document const& document) {
  std::string text;
  for (auto const& sheet : document.getSheets()) {
    constexpr std::size_t longest = 300;
    if (text.size() > longest) {
      return text + " and others";
    }
    text += fmt::format("{}\"{}\"", text.empty() ? "" : ", ", sheet.name);
  }
  return text;
}

std::vector<std::size_t> selectSheets(Workbook::Document const& document, Options const& options) {
  if (!options.sheet) {
    std::vector<std::size_t> all(document.getSheets().size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
  }
  auto const found = document.findSheet(*options.sheet);
  if (!found) {
    throw ContentError(fmt::format("{}: there is no sheet \"{}\"; --sheet takes one of {}",
                                   options.file, *options.sheet, listSheets(document)));
  }
  return {*found};
}

}  // namespace

std::span<Workbook::Rule const> findRulesOfSheet(Workbook::Document const& document,
                                                 std::size_t sheet) noexcept {
  return std::ranges::equal_range(document.getRules(), sheet, {}, &Workbook::Rule::sheet);
}

Selection::Selection(Workbook::Document const& document, Options const& options)
    : _document(document), _options(options), _sheets(selectSheets(document, options)) {}

std::vector<Workbook::Rule const*> Selection::getRulesByPriority(std::size_t sheet) const {
  std::vector<Workbook::Rule const*> rules;
  for (auto const& rule : findRulesOfSheet(_document, sheet)) {
    if (isSelected(rule)) {
      rules.push_back(&rule);
    }
  }
  auto const priorityOf = [](Workbook::Rule const* rule) {
    return rule->priority.value_or(std::numeric_limits<int>::max());
  };
  std::stable_sort(rules.begin(), rules.end(),
                   [&](auto const* a, auto const* b) { return priorityOf(a) < priorityOf(b); });
  return rules;
}

std::vector<Workbook::Rule const*> Selection::getRules() const {
  std::vector<Workbook::Rule const*> rules;
  for (auto const sheet : _sheets) {
    for (auto const& rule : findRulesOfSheet(_document, sheet)) {
      if (isSelected(rule)) {
        rules.push_back(&rule);
      }
    }
  }
  return rules;
}

std::vector<Workbook::Rule const*> Selection::getResolvedRules(std::size_t sheet) const {
  std::vector<Workbook::Rule const*> rules;
  for (auto const& rule : findRulesOfSheet(_document, sheet)) {
    if (rule.format != nullptr && isSelected(rule)) {
      rules.push_back(&rule);
    }
  }
  return rules;
}

bool Selection::isSelected(Workbook::Rule const& rule) const noexcept {
  // A rule whose ranges cannot be read is reported whatever the range.
  return !_options.range || rule.ranges.empty() ||
         std::any_of(rule.ranges.begin(), rule.ranges.end(), [&](TableRange const& range) {
           return !intersect(range, *_options.range).isEmpty();
         });
}

}  // namespace Zorv::Tool
