#include "ConditionalFormatters/WholeTable/CndFrmt_CellResolver.h"

#include "ConditionalFormatters/Formats/CndFrmt_FormatWalk.h"

namespace Zorv::ConditionalFormatters {

CellResolver::CellResolver(PreparedTable const& table, PassResources const& resources,
                           OfficeUtils::Clock::TimePoint moment)
    : _table(table),
      _resources(resources),
      _steps(resources.budget),
      _formatCursor(table.getRangeIndex()),
      _styleCursor(table.getStyleSequences()),
      _pass(table.getLookups(), moment, resources.budget) {}

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
                        cellInfo.getCell() != nullptr};
  walkFormats(
      _table.getFormatRefs(), formats,
      [&](FormatIndex index) {
        _steps.count();
        PreparedCondition const& condition = prepare(index);
        return
            [&condition, this](TestedCell const& tested) { return condition.holds(tested, _pass); };
      },
      [&]() -> TestedCell const& { return cell; },
      [&](FormatIndex index) {
        _styleCursor.add(index);
        _holding.push_back(index);
      });
  return _styleCursor.getStyle();
}

}  // namespace Zorv::ConditionalFormatters
