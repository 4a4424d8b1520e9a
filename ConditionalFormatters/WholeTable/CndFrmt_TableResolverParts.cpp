#include "ConditionalFormatters/WholeTable/CndFrmt_TableResolverParts.h"

#include "ConditionalFormatters/CndFrmt_FormatWalk.h"

namespace Zorv::ConditionalFormatters {

TableResolverParts::TableResolverParts(ValueContextProvider const& valueContextProvider,
                                       DOM::Table const& table,
                                       ConditionalFormatRefs const& formatRefs,
                                       DOM::Styles const& styles,
                                       DOM::SharedObjectFactory const& sharedObjectFactory)
    : _valueContextProvider(valueContextProvider),
      _table(table),
      _formatRefs(formatRefs),
      _factory(valueContextProvider, table),
      _rangeIndex(formatRefs),
      _styleSequences(formatRefs, styles, sharedObjectFactory) {
  for (ConditionalFormatRef const& formatRef : formatRefs) {
    _conditions.emplace_back(_factory, formatRef);
  }
}

CellResolver::CellResolver(TableResolverParts const& parts)
    : _parts(parts), _formatCursor(parts._rangeIndex), _styleCursor(parts._styleSequences) {}

DOM::SharedCellStylePtr const& CellResolver::resolve(DOM::CellInfo const& cellInfo) {
  _holding.clear();
  FormulaValueData data{FormulaValue(), cellInfo.getCellIndex()};
  bool isRead = false;
  auto const obtainValue = [&]() -> FormulaValueData const& {
    if (!isRead) {
      data.value = _parts._valueContextProvider.getCellValue(cellInfo);
      isRead = true;
    }
    return data;
  };
  auto const& formats = _formatCursor.moveTo(cellInfo.getRowIndex(), cellInfo.getColIndex());
  for (FormatNumber const number : formats) {
    PreparedCondition const& condition = _parts._conditions[number];
    auto const ask = [&](FormulaValueData const& asked) { return condition(asked, _session); };
    auto const obtainOperator = [&](ConditionalFormatRef const&) {
      condition.obtainOperator();
      return &ask;
    };
    auto const onHolds = [&](ConditionalFormatRef const& formatRef) {
      _parts._styleSequences.append(_holding, number);
      return stepAfter(formatRef.second);
    };
    if (judgeByFormat(_parts._formatRefs[number], obtainOperator, obtainValue, onHolds) ==
        WalkStep::Stop) {
      break;
    }
  }
  return _styleCursor.styleOf(_holding);
}

}  // namespace Zorv::ConditionalFormatters
