#include "tool/Input/Selection.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "DOM/Table.h"
#include "Utils/TableRange.h"
#include "analysis/Shared/Rules.h"
#include "tool/Input/Errors.h"

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

constexpr TableRange wholeSheet = {0, 0, DOM::Table::rowCount, DOM::Table::columnCount};

/// Index of a sheet that an option names.
std::size_t findSheet(Workbook::Document const& document, std::string const& file,
                      std::string const& name, std::string_view option) {
  auto const found = document.findSheet(name);
  if (!found) {
    throw ContentError(fmt::format("{}: there is no sheet \"{}\"; {} takes one of {}", file, name,
                                   option, listSheets(document)));
  }
  return *found;
}

}  // namespace

Selection::Selection(Workbook::Document const& document, Options const& options, std::string file)
    : _document(document), _options(options), _file(std::move(file)) {
  for (auto const& [sheet, range] : options.ranges) {
    _ranges.push_back(
        {sheet ? std::optional(findSheet(document, _file, *sheet,
                                         options.command == Command::Explain ? "CELL" : "--range"))
               : std::nullopt,
         range});
  }
  std::set<std::size_t> named;
  for (auto const& name : options.sheets) {
    named.insert(findSheet(document, _file, name, "--sheet"));
  }
  for (std::size_t sheet = 0; sheet < document.getSheets().size(); ++sheet) {
    if ((options.sheets.empty() || named.contains(sheet)) && !getRanges(sheet).empty()) {
      _sheets.push_back(sheet);
    }
  }
}

std::vector<TableRange> Selection::getRanges(std::size_t sheet) const {
  if (_ranges.empty()) {
    return {wholeSheet};
  }
  std::vector<TableRange> ranges;
  for (auto const& selected : _ranges) {
    if (selected.isOn(sheet)) {
      ranges.push_back(selected.range);
    }
  }
  return ranges;
}

bool Selection::contains(std::size_t sheet, CellIndex cell) const noexcept {
  return _ranges.empty() || std::ranges::any_of(_ranges, [&](SelectedRange const& selected) {
           return selected.isOn(sheet) &&
                  selected.range.contains(cell.getRow().get(), cell.getColumn().get());
         });
}

std::vector<Workbook::Rule const*> Selection::getRulesByPriority(std::size_t sheet) const {
  std::vector<Workbook::Rule const*> rules;
  for (auto const& rule : _document.getRulesOfSheet(sheet)) {
    if (contains(rule)) {
      rules.push_back(&rule);
    }
  }
  Analysis::sortByPriority(rules);
  return rules;
}

std::vector<Workbook::Rule const*> Selection::getRules() const {
  std::vector<Workbook::Rule const*> rules;
  for (auto const sheet : _sheets) {
    for (auto const& rule : _document.getRulesOfSheet(sheet)) {
      if (contains(rule)) {
        rules.push_back(&rule);
      }
    }
  }
  return rules;
}

std::vector<Workbook::Rule const*> Selection::getResolvedRules(std::size_t sheet) const {
  std::vector<Workbook::Rule const*> rules;
  for (auto const& rule : _document.getRulesOfSheet(sheet)) {
    if (rule.isResolved() && contains(rule)) {
      rules.push_back(&rule);
    }
  }
  return rules;
}

bool Selection::contains(Workbook::Rule const& rule) const noexcept {
  auto const meets = [&](SelectedRange const& selected) {
    return selected.isOn(rule.sheet) &&
           std::ranges::any_of(rule.ranges, [&](TableRange const& range) {
             return !intersect(range, selected.range).isEmpty();
           });
  };
  return _ranges.empty() || rule.ranges.empty() || std::ranges::any_of(_ranges, meets);
}

}  // namespace Zorv::Tool
