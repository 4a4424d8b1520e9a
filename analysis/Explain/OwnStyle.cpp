#include "analysis/Explain/OwnStyle.h"

#include <algorithm>

#include "DOM/Cell.h"

namespace Zorv::Analysis {

namespace {

/// The style of a position without a cell; may be null.
DOM::SharedCellStylePtr findLayoutStyle(Workbook::SheetLayout const& layout,
                                        DOM::CellInfo const& cell) {
  auto const row =
      std::ranges::lower_bound(layout.rows, cell.getRowIndex(), {}, &Workbook::RowLayout::row);
  if (row != layout.rows.end() && row->row == cell.getRowIndex() && row->style) {
    return row->style;
  }
  auto const column =
      std::ranges::find_if(layout.columns, [&](Workbook::ColumnLayout const& columns) {
        return columns.first <= cell.getColIndex() && cell.getColIndex() < columns.end;
      });
  return column != layout.columns.end() ? column->style : nullptr;
}

}  // namespace

DOM::SharedCellStylePtr findSharedOwnStyle(Workbook::Document const& document, std::size_t sheet,
                                           DOM::CellInfo const& cell) {
  auto style = cell.getCell() != nullptr
                   ? cell.getCell()->style
                   : findLayoutStyle(document.getSheets()[sheet].layout, cell);
  return style ? style : document.getDefaultCellStyle();
}

DOM::CellStyle findOwnStyle(Workbook::Document const& document, std::size_t sheet,
                            DOM::CellInfo const& cell) {
  auto const style = findSharedOwnStyle(document, sheet, cell);
  return style ? style->get() : DOM::CellStyle();
}

}  // namespace Zorv::Analysis
