#include "ConditionalFormatters/WholeTable/CndFrmt_TableResolverParts.h"

#include <stdexcept>
#include <string>

#include "ConditionalFormatters/CndFrmt_FormatWalk.h"

namespace Zorv::ConditionalFormatters {

namespace {

[[noreturn]] void throwNoSuchFormat(std::size_t format, std::size_t count) {
  std::string message = "there is no conditional format at place ";
  message += std::to_string(format);
  message += "; the table has ";
  message += std::to_string(count);
  throw std::out_of_range(message);
}

}  // namespace

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

bool TableResolverParts::holds(std::size_t format, DOM::CellInfo const& cellInfo) const {
  if (format >= _conditions.size()) {
    throwNoSuchFormat(format, _conditions.size());
  }
  PreparedCondition const& condition = *_conditions[format];
  condition.obtain(1);
  FormulaValueData const data{_sources.provider.getCellValue(cellInfo), cellInfo.getCellIndex()};
  Formulas::EvaluationSession session(_lookups);
  bool const isInRanges = _rangeIndex.holds(static_cast<FormatNumber>(format),
                                            cellInfo.getRowIndex(), cellInfo.getColIndex());
  // The value of a cell elsewhere was not collected, like one without a cell.
  return condition.holdsFor(
      isInRanges ? cellInfo : DOM::CellInfo(cellInfo.getTable(), data.cellIndex, nullptr), data,
      session);
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
  FormulaValueData data{FormulaValue(), {RowIndex(0), ColumnIndex(0)}};
  bool isRead = false;
  auto const obtainValue = [&]() -> FormulaValueData const& {
    if (!isRead) {
      data.value = _parts._sources.provider.getCellValue(cellInfo);
      // Not before: what was just written in parts, as this was, is slow to read at once.
      data.cellIndex = cellInfo.getCellIndex();
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
