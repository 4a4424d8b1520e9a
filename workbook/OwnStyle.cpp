#include "workbook/OwnStyle.h"

#include <algorithm>

#include "DOM/Cell.h"
#include "workbook/TableLooks.h"

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

DOM::SharedCellStylePtr layOver(StyledTable const& table, Document const& document,
                                DOM::SharedCellStylePtr const& own, DOM::CellInfo const& cell) {
  auto const& usual = document.getDefaultCellStyle();
  return document.getCellStyleFactory().create(layOverTable(
      own ? own->get() : DOM::CellStyle(), usual ? usual->get() : DOM::CellStyle(), *table.style,
      placeRow(table, cell.getRowIndex()), placeColumn(table, cell.getColIndex())));
}

}  // namespace

DOM::SharedCellStylePtr findSharedOwnStyle(Document const& document, std::size_t sheet,
                                           DOM::CellInfo const& cell) {
  Sheet const& place = document.getSheets()[sheet];
  auto style =
      cell.getCell() != nullptr ? cell.getCell()->style : findLayoutStyle(place.layout, cell);
  style = style ? style : document.getDefaultCellStyle();
  StyledTable const* const table = findStyledTable(place, cell.getRowIndex(), cell.getColIndex());
  return table != nullptr ? layOver(*table, document, style, cell) : style;
}

DOM::CellStyle findOwnStyle(Document const& document, std::size_t sheet,
                            DOM::CellInfo const& cell) {
  auto const style = findSharedOwnStyle(document, sheet, cell);
  return style ? style->get() : DOM::CellStyle();
}

}  // namespace Zorv::Workbook
