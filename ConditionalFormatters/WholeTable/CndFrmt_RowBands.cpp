#include "ConditionalFormatters/WholeTable/CndFrmt_RowBands.h"

#include <algorithm>

namespace Zorv::ConditionalFormatters {

namespace {

unsigned long widthOf(TableRange const& range) noexcept {
  return range.endColumn - std::min(range.firstColumn, range.endColumn);
}

}  // namespace

RowBands::RowBands(TableRange const& range, unsigned long cellsInRow) noexcept
    : _range(range), _height(std::max(1UL, usualSize / std::max(1UL, cellsInRow))) {
  _range.endRow = std::max(_range.firstRow, _range.endRow);
}

RowBands RowBands::ofPositions(TableRange const& range) noexcept { return {range, widthOf(range)}; }

RowBands RowBands::ofCells(DOM::Table const& table, TableRange const& range) noexcept {
  auto const [firstRow, endRow] = table.getUsedRows();
  unsigned long const cellsInTableRow = table.getCellCount() / std::max(1UL, endRow - firstRow);
  TableRange used = range;
  used.firstRow = std::max(range.firstRow, firstRow);
  used.endRow = std::min(range.endRow, endRow);
  return {used, std::min(widthOf(range), cellsInTableRow)};
}

std::size_t RowBands::count() const noexcept {
  return (_range.endRow - _range.firstRow + _height - 1) / _height;
}

TableRange RowBands::at(std::size_t number) const noexcept {
  TableRange band = _range;
  band.firstRow += number * _height;
  band.endRow = std::min(_range.endRow, band.firstRow + _height);
  return band;
}

}  // namespace Zorv::ConditionalFormatters
