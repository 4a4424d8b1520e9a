#include "ConditionalFormatters/WholeTable/CndFrmt_PassWalk.h"

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
  findBlocks(pass);
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
  findBlocks(pass);
}

void PassCells::findBlocks(TablePass const& pass) {
  if (_ranges) {
    _blocks = RangesWalk::findBlocks(_table, *_ranges, _existingOnly);
  } else {
    _blocks.add(_existingOnly ? DOM::RowBlocks::ofCells(_table, pass.range)
                              : DOM::RowBlocks::ofPositions(pass.range));
  }
}

}  // namespace Zorv::ConditionalFormatters
