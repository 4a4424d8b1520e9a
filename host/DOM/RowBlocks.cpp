#include "DOM/RowBlocks.h"

#include <algorithm>

namespace Zorv::DOM {

namespace {

unsigned long widthOf(TableRange const& range) noexcept {
  return range.endColumn - std::min(range.firstColumn, range.endColumn);
}

}  // namespace

RowBlocks::RowBlocks(TableRange const& range, unsigned long cellsPerRow,
                     unsigned long most) noexcept
    : _range(range), _height(std::max(1UL, most / std::max(1UL, cellsPerRow))) {
  _range.endRow = std::max(_range.firstRow, _range.endRow);
}

RowBlocks RowBlocks::ofPositions(TableRange const& range, unsigned long most) noexcept {
  return {range, widthOf(range), most};
}

RowBlocks RowBlocks::ofCells(Table const& table, TableRange const& range,
                             unsigned long most) noexcept {
  auto const [firstRow, endRow] = table.getUsedRows();
  unsigned long const cellsPerTableRow = table.getCellCount() / std::max(1UL, endRow - firstRow);
  TableRange used = range;
  used.firstRow = std::max(range.firstRow, firstRow);
  used.endRow = std::min(range.endRow, endRow);
  return {used, std::min(widthOf(range), cellsPerTableRow), most};
}

RowBlocks RowBlocks::ofRows(TableRange const& range, unsigned long cellsPerRow,
                            unsigned long most) noexcept {
  return {range, cellsPerRow, most};
}

std::size_t RowBlocks::count() const noexcept {
  return (_range.endRow - _range.firstRow + _height - 1) / _height;
}

TableRange RowBlocks::at(std::size_t index) const noexcept {
  TableRange block = _range;
  block.firstRow += index * _height;
  block.endRow = std::min(_range.endRow, block.firstRow + _height);
  return block;
}

}  // namespace Zorv::DOM
