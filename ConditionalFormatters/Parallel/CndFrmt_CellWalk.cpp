#include "ConditionalFormatters/Parallel/CndFrmt_CellWalk.h"

#include <algorithm>
#include <cstdint>

#include "DOM/RowBlocks.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Gathers rows until they make a block, so that narrow row intervals do not become a block each.
class BlockGatherer {
public:
  BlockGatherer(TableRange const& bounds, unsigned long cellsPerBlock) noexcept
      : _rows(bounds), _cellsPerBlock(cellsPerBlock) {
    _rows.endRow = _rows.firstRow;
  }

  /// Adds the rows from the end of the last ones up to `endRow`, with so many cells in each.
  void add(unsigned long firstRow, unsigned long endRow, unsigned long cellsPerRow) {
    if (_cellCount == 0) {
      _rows.firstRow = firstRow;
    }
    _rows.endRow = endRow;
    _cellCount += std::uint64_t{cellsPerRow} * (endRow - firstRow);
    if (_cellCount >= _cellsPerBlock) {
      finishBlock();
    }
  }

  void finishBlock() {
    if (_cellCount > 0) {
      _blocks.add(DOM::RowBlocks::ofRows(_rows, _cellCount / (_rows.endRow - _rows.firstRow),
                                         _cellsPerBlock));
      _cellCount = 0;
    }
  }

  [[nodiscard]] BlockList const& getBlocks() const noexcept { return _blocks; }

private:
  BlockList _blocks;
  TableRange _rows;  ///< of the block that is not full yet
  unsigned long _cellsPerBlock;
  std::uint64_t _cellCount = 0;
};

}  // namespace

BlockList RangesWalk::findBlocks(DOM::Table const& table, RangeIndex const& ranges,
                                 bool existingOnly, unsigned long cellsPerBlock) {
  if (ranges.getRanges().empty()) {
    return {};
  }
  auto const [usedFirstRow, usedEndRow] = table.getUsedRows();
  TableRange bounds{ranges.getRanges().front().range.firstRow, ranges.getColumnBorders().front(),
                    ranges.getRanges()[ranges.getByEndRow().back()].range.endRow,
                    ranges.getColumnBorders().back()};
  unsigned long mostCellsPerRow = bounds.endColumn - bounds.firstColumn;
  if (existingOnly) {
    bounds.firstRow = std::max(bounds.firstRow, usedFirstRow);
    bounds.endRow = std::min(bounds.endRow, usedEndRow);
    mostCellsPerRow = 1 + table.getCellCount() / std::max(1UL, usedEndRow - usedFirstRow);
  }
  FormatCursor cursor(ranges);
  BlockGatherer gatherer(bounds, cellsPerBlock);
  for (unsigned long row = bounds.firstRow; row < bounds.endRow;) {
    unsigned long const endRow = std::min(cursor.enterRow(row), bounds.endRow);
    if (cursor.getWidth() > 0) {
      gatherer.add(row, endRow, std::min(cursor.getWidth(), mostCellsPerRow));
    } else {
      gatherer.finishBlock();
    }
    row = endRow;
  }
  gatherer.finishBlock();
  return gatherer.getBlocks();
}

}  // namespace Zorv::ConditionalFormatters
