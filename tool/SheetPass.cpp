#include "tool/SheetPass.h"

#include <exception>
#include <optional>
#include <utility>
#include <vector>

#include "DOM/Table.h"
#include "tool/PositionUnion.h"

namespace Zorv::Tool {

void SheetPass::resolve(TableRange const& range, Positions positions, unsigned threadCount) {
  _row = range.firstRow;
  std::optional<CellIndex> last;  // that was visited
  bool isVisiting = false;
  try {
    _styles.explain(
        range, positions,
        [&](DOM::CellInfo const& cellInfo, DOM::SharedCellStylePtr const& style,
            std::span<std::uint32_t const> formats) {
          isVisiting = true;
          add(cellInfo, style, formats);
          isVisiting = false;
          last = cellInfo.getCellIndex();
        },
        threadCount);
  } catch (std::exception const&) {
    if (isVisiting) {
      throw;
    }
    resolveRest(range, positions, last);
  }
  moveTo(range.endRow);
}

void SheetPass::add(DOM::CellInfo const& cellInfo, DOM::SharedCellStylePtr const& style,
                    std::span<std::uint32_t const> formats) {
  moveTo(cellInfo.getRowIndex());
  if (!style) {
    return;
  }
  std::vector<Workbook::Rule const*> deciding;
  for (std::uint32_t const format : formats) {
    deciding.push_back(&_conditions.ruleOf(format));
  }
  _output.add({cellInfo, style, std::move(deciding)});
}

/// A cell that cannot be resolved ends a pass; those behind it are resolved one by one, since where
/// one fails mostly others do too.
void SheetPass::resolveRest(TableRange const& range, Positions positions,
                            std::optional<CellIndex> const& last) {
  auto const resolveCell = [&](DOM::CellInfo const& cellInfo) {
    if (last && cellInfo.getCellIndex() <= *last) {
      return;
    }
    moveTo(cellInfo.getRowIndex());
    auto deciding = _conditions.findDeciding(cellInfo);
    if (deciding && !deciding->empty()) {
      _output.add({cellInfo, _styles.resolve(cellInfo), std::move(*deciding)});
    }
  };
  PositionUnion const rest({range}, range);
  if (positions == Positions::All) {
    rest.forEachPosition(_table, resolveCell);
  } else {
    rest.forEachCell(_table, resolveCell);
  }
}

void SheetPass::moveTo(unsigned long row) {
  if (row != _row) {
    _rowsDone += row - _row;
    _row = row;
    _progress.show(_rowsDone);
  }
}

}  // namespace Zorv::Tool
