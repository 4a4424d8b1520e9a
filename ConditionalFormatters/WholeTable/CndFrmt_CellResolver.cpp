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
  TestedCell cell{{FormulaValue(), {RowIndex(0), ColumnIndex(0)}}, cellInfo.getCell() != nullptr};
  bool isRead = false;
  auto const getCell = [&]() -> TestedCell const& {
    if (!isRead) {
      cell.data.value = _table.getProvider().getCellValue(cellInfo);
      // Set after the value, to avoid a store-forwarding stall.
      cell.data.cellIndex = cellInfo.getCellIndex();
      isRead = true;
    }
    return cell;
  };
  walkFormats(
      _table.getFormatRefs(), _formatCursor.moveTo(cellInfo.getRowIndex(), cellInfo.getColIndex()),
      [&](FormatIndex index) {
        _steps.count();
        _lastEvaluated = index;
        PreparedCondition const& condition = _table.getOrCreateCondition(index, _resources);
        return
            [&condition, this](TestedCell const& tested) { return condition.holds(tested, _pass); };
      },
      getCell,
      [&](FormatIndex index) {
        _styleCursor.add(index);
        _holding.push_back(index);
      });
  return _styleCursor.getStyle();
}

}  // namespace Zorv::ConditionalFormatters
