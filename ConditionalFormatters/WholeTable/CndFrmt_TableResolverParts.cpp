#include "ConditionalFormatters/WholeTable/CndFrmt_TableResolverParts.h"

#include "ConditionalFormatters/CndFrmt_FormatWalk.h"

namespace Zorv::ConditionalFormatters {

TableResolverParts::TableResolverParts(ValueContextProvider const& valueContextProvider,
                                       DOM::Table const& table,
                                       ConditionalFormatRefs const& formatRefs,
                                       DOM::Styles const& styles,
                                       DOM::SharedObjectFactory const& sharedObjectFactory)
    : _formatRefs(formatRefs),
      _factory(valueContextProvider, table),
      _sources{valueContextProvider, table, _factory},
      _rangeIndex(formatRefs),
      _styleSequences(formatRefs, styles, sharedObjectFactory) {
  _conditions.reserve(formatRefs.size());
  for (ConditionalFormatRef const& formatRef : formatRefs) {
    _conditions.push_back(prepareCondition(_sources, formatRef));
  }
}

CellResolver::CellResolver(TableResolverParts const& parts, unsigned threadCount)
    : _parts(parts),
      _threadCount(threadCount),
      _formatCursor(parts._rangeIndex),
      _styleCursor(parts._styleSequences),
      _session(parts._lookups) {}

DOM::SharedCellStylePtr const& CellResolver::resolve(DOM::CellInfo const& cellInfo) {
  _styleCursor.restart();
  _holding.clear();
  FormulaValueData data{FormulaValue(), cellInfo.getCellIndex()};
  bool isRead = false;
  auto const obtainValue = [&]() -> FormulaValueData const& {
    if (!isRead) {
      data.value = _parts._sources.provider.getCellValue(cellInfo);
      isRead = true;
    }
    return data;
  };
  auto const& formats = _formatCursor.moveTo(cellInfo.getRowIndex(), cellInfo.getColIndex());
  for (FormatNumber const number : formats) {
    PreparedCondition const& condition = *_parts._conditions[number];
    auto const ask = [&](FormulaValueData const& asked) {
      return condition.holdsFor(cellInfo, asked, _session);
    };
    auto const obtainOperator = [&](ConditionalFormatRef const&) {
      condition.obtain(_threadCount);
      return &ask;
    };
    auto const onHolds = [&](ConditionalFormatRef const& formatRef) {
      _styleCursor.add(number);
      _holding.push_back(number);
      return stepAfter(formatRef.second);
    };
    if (judgeByFormat(_parts._formatRefs[number], obtainOperator, obtainValue, onHolds) ==
        WalkStep::Stop) {
      break;
    }
  }
  return _styleCursor.getStyle();
}

}  // namespace Zorv::ConditionalFormatters
