#include "tool/SheetConditions.h"

#include <exception>
#include <utility>

#include "ConditionalFormatters/CndFrmt_FormatWalk.h"
#include "DOM/Table.h"

namespace Zorv::Tool {

namespace CF = ConditionalFormatters;

SheetConditions::SheetConditions(CF::ValueContextProvider const& provider, DOM::Table const& table,
                                 std::vector<Workbook::Rule const*> const& rules,
                                 OnFailure onFailure)
    : _provider(provider), _factory(provider, table), _onFailure(std::move(onFailure)) {
  for (auto const* rule : rules) {
    if (rule->format) {
      _conditions[rule->format].rule = rule;
    }
  }
}

std::optional<bool> SheetConditions::holds(Workbook::Rule const& rule,
                                           DOM::CellInfo const& cellInfo) {
  try {
    auto const ranges = DOM::convertToTableRanges(cellInfo.getTable(), rule.format->getRanges());
    auto const& condition = obtainOperator({ranges, *rule.format});
    return (*condition)(obtainValue(cellInfo));
  } catch (std::exception const& error) {
    _onFailure(rule, cellInfo, error.what());
    return std::nullopt;
  }
}

std::optional<std::vector<Workbook::Rule const*>> SheetConditions::findDeciding(
    CF::ConditionalFormatRefs const& formatRefs, DOM::CellInfo const& cellInfo) {
  std::vector<Workbook::Rule const*> deciding;
  Workbook::Rule const* current = nullptr;
  try {
    CF::walkFormats(
        formatRefs, cellInfo,
        [&](CF::ConditionalFormatRef const& formatRef) -> OperatorPtr const& {
          current = &ruleOf(formatRef.second);
          return obtainOperator(formatRef);
        },
        [&] { return obtainValue(cellInfo); },
        [&](CF::ConditionalFormatRef const& formatRef) {
          deciding.push_back(current);
          return CF::stepAfter(formatRef.second);
        });
  } catch (std::exception const& error) {
    _onFailure(*current, cellInfo, error.what());
    return std::nullopt;
  }
  return deciding;
}

SheetConditions::OperatorPtr const& SheetConditions::obtainOperator(
    CF::ConditionalFormatRef const& formatRef) {
  auto& entry = _conditions.at(&formatRef.second.get());
  if (!entry.condition) {
    entry.condition = _factory.create(formatRef);
  }
  return entry.condition;
}

CF::FormulaValueData SheetConditions::obtainValue(DOM::CellInfo const& cellInfo) const {
  return {_provider.getCellValue(cellInfo), cellInfo.getCellIndex()};
}

}  // namespace Zorv::Tool
