#include "tool/Input/Selection.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <string>

#include <fmt/format.h>

#include "DOM/Table.h"
#include "Utils/TableRange.h"

namespace Zorv::Tool {

namespace {

/// Adds rows and columns at the end of a range, up to the end of the sheet. An empty range stays
/// empty.
TableRange extend(TableRange const& range, unsigned long count) noexcept {
  if (range.isEmpty()) {
    return range;
  }
  return {range.firstRow, range.firstColumn, std::min(range.endRow + count, DOM::Table::rowCount),
          std::min(range.endColumn + count, DOM::Table::columnCount)};
}

std::string listSheets(Workbook::Document const& document) {
  std::string text;
  for (auto const& sheet : document.getSheets()) {
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

Selection::Selection(Workbook::Document const& document, Options const& options)
    : _document(document), _options(options), _sheets(selectSheets(document, options)) {}

TableRange Selection::getBounds(std::size_t sheet, unsigned long margin) const noexcept {
  auto const used = extend(_document.getSheets()[sheet].table->getUsedRange(), margin);
  return _options.range ? intersect(used, *_options.range) : used;
}

std::vector<Workbook::Rule const*> Selection::getRulesByPriority(std::size_t sheet) const {
  std::vector<Workbook::Rule const*> rules;
  for (auto const& rule : _document.getRules()) {
    if (rule.sheet == sheet && isSelected(rule)) {
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
  for (auto const& rule : _document.getRules()) {
    if (std::binary_search(_sheets.begin(), _sheets.end(), rule.sheet) && isSelected(rule)) {
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
