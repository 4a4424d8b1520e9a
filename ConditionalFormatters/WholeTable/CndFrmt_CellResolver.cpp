#include "ConditionalFormatters/WholeTable/CndFrmt_CellResolver.h"

#include "ConditionalFormatters/Formats/CndFrmt_FormatWalk.h"

namespace Zorv::ConditionalFormatters {

CellResolver::CellResolver(PreparedTable const& table, PassRequest const& request,
                           OfficeUtils::Clock::TimePoint moment)
    : _table(table),
      _request(request),
      _steps(request.resources.budget),
      _formatCursor(table.getRangeIndex()),
      _styleCursor(table.getStyleSequences()),
      _pass(table.getLookups(), moment, request.resources) {
  if (table.hasSharedVerdicts()) {
    _lineVerdicts.emplace(table);
  }
}

DOM::SharedCellStylePtr const& CellResolver::resolve(DOM::CellInfo const& cellInfo) {
  _styleCursor.restart();
  _holding.clear();
  FormatIndices const& formats =
      _formatCursor.moveTo(cellInfo.getRowIndex(), cellInfo.getColIndex());
  if (formats.empty()) {
    return _styleCursor.getStyle();
  }
  // The first condition is prepared before the value is read, as an operator is made before it is
  // asked.
  prepare(formats.front());
  TestedCell const cell{{_table.getProvider().getCellValue(cellInfo), cellInfo.getCellIndex()},
                        cellInfo.getCell() != nullptr,
                        cellInfo.getCell()};
  if (_lineVerdicts) {
    walk(_lineVerdicts->select(cellInfo, formats), cell,
         [&](FormatIndex index, PreparedCondition const& condition) {
           return _lineVerdicts->ask(index, condition, cell, _pass);
         });
  } else {
    walk(formats, cell, [&](FormatIndex /*index*/, PreparedCondition const& condition) {
      return condition.holds(cell, _pass);
    });
  }
  return _styleCursor.getStyle();
}

template <class Ask>
void CellResolver::walk(FormatIndices const& formats, TestedCell const& cell, Ask const& ask) {
  walkFormats(
      _table.getFormatRefs(), formats,
      [&](FormatIndex index) {
        _steps.count();
        PreparedCondition const& condition = prepare(index);
        return [&condition, &ask, index](TestedCell const& /*tested*/) {
          return ask(index, condition);
        };
      },
      [&]() -> TestedCell const& { return cell; },
      [&](FormatIndex index) {
        _styleCursor.add(index);
        _holding.push_back(index);
      });
}

}  // namespace Zorv::ConditionalFormatters
