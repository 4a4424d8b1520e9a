#include "workbook/OwnStyle.h"

#include <algorithm>

#include "DOM/Cell.h"

namespace Zorv::Workbook {

namespace {

/// The style of a position without a cell; may be null.
DOM::SharedCellStylePtr findLayoutStyle(SheetLayout const& layout, DOM::CellInfo const& cell) {
  auto const row = std::ranges::lower_bound(layout.rows, cell.getRowIndex(), {}, &RowLayout::row);
  if (row != layout.rows.end() && row->row == cell.getRowIndex() && row->style) {
    return row->style;
  }
  auto const column = std::ranges::find_if(layout.columns, [&](ColumnLayout const& columns) {
    return columns.first <= cell.getColIndex() && cell.getColIndex() < columns.end;
  });
  return column != layout.columns.end() ? column->style : nullptr;
}

}  // namespace

DOM::SharedCellStylePtr findSharedOwnStyle(Document const& document, std::size_t sheet,
                                           DOM::CellInfo const& cell) {
  auto style = cell.getCell() != nullptr
                   ? cell.getCell()->style
                   : findLayoutStyle(document.getSheets()[sheet].layout, cell);
  return style ? style : document.getDefaultCellStyle();
}

DOM::CellStyle findOwnStyle(Document const& document, std::size_t sheet,
                            DOM::CellInfo const& cell) {
  auto const style = findSharedOwnStyle(document, sheet, cell);
  return style ? style->get() : DOM::CellStyle();
}

}  // namespace Zorv::Workbook
