#include "ConditionalFormatters/WholeTable/CndFrmt_PassWalk.h"

#include <algorithm>

#include "ConditionalFormatters/Formats/CndFrmt_Positions.h"

namespace Zorv::ConditionalFormatters {

namespace {

using Positions = TablePass::Positions;

std::vector<TableRange> findAreas(TablePass const& pass) {
  return pass.positions == Positions::Areas ? clip(pass.areas, pass.range)
                                            : std::vector{pass.range};
}

}  // namespace

PassCells::PassCells(PreparedTable const& table, TablePass const& pass)
    : _table(table.getTable()),
      _existingOnly(pass.positions == Positions::Existing),
      _asksOneFormat(false),
      _areas(findAreas(pass)) {
  if (pass.positions == Positions::Formatted) {
    _ranges.emplace(clip(table.listRanges(), pass.range));
  } else if (pass.positions == Positions::Areas) {
    _ranges.emplace(_areas);
  }
  findBlocks(table, pass);
}

PassCells::PassCells(PreparedTable const& table, FormatIndex format, TablePass const& pass)
    : _table(table.getTable()),
      _existingOnly(pass.positions == Positions::Existing),
      _asksOneFormat(true),
      _areas(findAreas(pass)) {
  auto const& ofFormat = table.getFormatRefs()[format].first;
  if (pass.positions == Positions::Areas) {
    _ranges.emplace(_areas);
    _filter.emplace(ofFormat);
  } else {
    _ranges.emplace(clip(ofFormat, pass.range));
  }
  findBlocks(table, pass);
}

void PassCells::findBlocks(PreparedTable const& table, TablePass const& pass) {
  unsigned long const most = chooseCellsPerBlock(table, pass);
  if (_ranges) {
    _blocks = RangesWalk::findBlocks(_table, *_ranges, _existingOnly, most);
  } else {
    _blocks.add(_existingOnly ? DOM::RowBlocks::ofCells(_table, pass.range, most)
                              : DOM::RowBlocks::ofPositions(pass.range, most));
  }
}

unsigned long PassCells::chooseCellsPerBlock(PreparedTable const& table,
                                             TablePass const& pass) const noexcept {
  constexpr unsigned long fewFormats = 16;
  constexpr unsigned long fewCells = 128;
  constexpr unsigned long blocksPerThread = 4;
  unsigned long const usual = DOM::RowBlocks::cellsPerBlock;
  unsigned long const formats = _asksOneFormat ? 1 : table.getFormatRefs().size();
  if (pass.threadCount <= 1 || formats == 0) {
    return usual;
  }
  unsigned long positions = 0;
  for (TableRange const& area : _areas) {
    positions += std::min(area.endRow - area.firstRow, DOM::Table::rowCount) *
                 std::min(area.endColumn - area.firstColumn, DOM::Table::columnCount);
  }
  unsigned long const least = std::clamp(usual * fewFormats / formats, fewCells, usual);
  return std::clamp(positions / (blocksPerThread * pass.threadCount), least, usual);
}

}  // namespace Zorv::ConditionalFormatters
