#include "analysis/Check/CheckedSheet.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "DOM/Styles.h"
#include "analysis/Shared/ConditionKey.h"
#include "workbook/Ranges.h"

namespace Zorv::Analysis {

namespace {

DOM::CellStyle toCellStyle(DOM::Styles const& styles, UUID const& uuid) {
  DOM::CellStyle style;
  auto const found = styles.getTableStyles().find(uuid);
  if (found != styles.getTableStyles().end()) {
    style.setRunProps(found->second.getRunProps());
    style.setParaProps(found->second.getParaProps());
    style.setCellProps(found->second.getCellProps());
    style.setCellFormat(found->second.getCellFormat());
  }
  return style;
}

/// Adds the names of the properties that a group sets, which may be null.
template <class Props>
void addNames(Props const* props, std::vector<std::string_view>& names) {
  if (props == nullptr) {
    return;
  }
  auto const add = [&](auto const& member) {
    if (props->*member.member) {
      names.emplace_back(member.name);
    }
  };
  std::apply([&](auto const&... members) { (add(members), ...); }, Props::members());
}

std::string sortedAddresses(std::vector<TableRange> ranges) {
  std::ranges::sort(ranges, {}, [](TableRange const& range) {
    return std::tuple(range.firstRow, range.firstColumn, range.endRow, range.endColumn);
  });
  return DOM::A1Notation::toAddress(ranges);
}

}  // namespace

CheckedSheet::CheckedSheet(Workbook::Document const& document, std::size_t index)
    : _document(document), _index(index), _usedRange(getTable().getUsedRange()) {
  std::unordered_map<DOM::ConditionalFormat const*, Workbook::Rule const*> byFormat;
  for (Workbook::Rule const& rule : document.getRulesOfSheet(index)) {
    _allRules.push_back(&rule);
    byFormat.emplace(rule.format, &rule);
  }
  for (auto const& format : getTable().getLiveConditionalFormats()) {
    if (auto const found = byFormat.find(format.get()); found != byFormat.end()) {
      _rules.push_back(describe(*found->second));
    }
  }
}

CheckedRule CheckedSheet::describe(Workbook::Rule const& rule) {
  CheckedRule checked{.rule = &rule};
  checked.ranges = _ranges.try_emplace(sortedAddresses(rule.ranges), _ranges.size()).first->second;
  std::string key = makeConditionKey(checked.getCondition(), Workbook::findBaseCell(rule.ranges));
  if (dependsOnRanges(checked.getCondition())) {
    key += fmt::format("on {}", checked.ranges);
  }
  checked.condition = _conditions.try_emplace(std::move(key), _conditions.size()).first->second;
  DOM::CellStyle style = toCellStyle(_document.getStyles(), rule.format->getStyleUUID());
  addNames(style.getCellProps().get(), checked.properties);
  addNames(style.getRunProps().get(), checked.properties);
  addNames(style.getParaProps().get(), checked.properties);
  if (style.getCellFormat()) {
    checked.properties.emplace_back("numberFormat");
  }
  checked.style = _styles.try_emplace(std::move(style), _styles.size()).first->second;
  return checked;
}

}  // namespace Zorv::Analysis
