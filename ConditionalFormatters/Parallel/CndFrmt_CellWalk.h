#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "ConditionalFormatters/Formats/CndFrmt_FormatCursor.h"
#include "ConditionalFormatters/Parallel/CndFrmt_BlockList.h"
#include "DOM/CellInfo.h"
#include "DOM/RowBlocks.h"
#include "DOM/Table.h"
#include "Utils/TableRange.h"

// Walks over cells row by row, each row from the left, cut into row blocks.
namespace Zorv::ConditionalFormatters {

/// Calls `visit(cellInfo)` for the existing cells of a range, or for all its positions.
///
/// Flattened, since GCC otherwise stops inlining in the middle of what is done for each cell.
template <class Visit>
[[gnu::flatten]] void forEachCell(DOM::Table const& table, TableRange const& range,
                                  bool existingOnly, Visit const& visit) {
  auto [cell, end] = table.getRangeIterators(range);
  if (existingOnly) {
    for (; cell != end; ++cell) {
      visit(cell.getCellInfo());
    }
    return;
  }
  for (unsigned long row = range.firstRow; row < range.endRow; ++row) {
    for (unsigned long column = range.firstColumn; column < range.endColumn; ++column) {
      CellIndex const index{RowIndex(row), ColumnIndex(column)};
      if (cell != end && cell.getCellInfo().getCellIndex() == index) {
        visit(cell.getCellInfo());
        ++cell;
      } else {
        visit(DOM::CellInfo(table, index, nullptr));
      }
    }
  }
}

/// Walks the cells that at least one of some ranges holds, each once, block by block, for one
/// thread. Borrows the table and the ranges.
class RangesWalk {
public:
  RangesWalk(DOM::Table const& table, RangeIndex const& ranges, bool existingOnly)
      : _table(table), _cursor(ranges), _existingOnly(existingOnly) {}

  /// The row blocks of the walk. A block spans all columns of the ranges.
  [[nodiscard]] static BlockList findBlocks(
      DOM::Table const& table, RangeIndex const& ranges, bool existingOnly,
      unsigned long cellsPerBlock = DOM::RowBlocks::cellsPerBlock);

  template <class Visit>
  void forEachCellOf(TableRange const& block, Visit const& visit) {
    for (unsigned long row = block.firstRow; row < block.endRow;) {
      unsigned long const endRow = std::min(_cursor.enterRow(row), block.endRow);
      visitRows(row, endRow, visit);
      row = endRow;
    }
  }

  /// How many of the ranges hold a cell that is being visited.
  [[nodiscard]] std::uint64_t countRanges(DOM::CellInfo const& cellInfo) {
    return _cursor.countRanges(cellInfo.getRowIndex(), cellInfo.getColIndex());
  }

private:
  /// Visits rows of one row interval.
  template <class Visit>
  void visitRows(unsigned long firstRow, unsigned long endRow, Visit const& visit) {
    constexpr std::size_t fewIntervals = 8;
    auto const intervals = _cursor.listColumns();
    if (intervals.empty()) {
      return;
    }
    if (intervals.size() == 1) {
      forEachCell(_table, {firstRow, intervals.front().first, endRow, intervals.front().end},
                  _existingOnly, visit);
    } else if (_existingOnly && intervals.size() > fewIntervals) {
      // To look for the cells of each interval would cost more than to pass over those between.
      TableRange const between{firstRow, intervals.front().first, endRow, intervals.back().end};
      forEachCell(_table, between, true, [&](DOM::CellInfo const& cellInfo) {
        if (!_cursor.moveTo(cellInfo.getRowIndex(), cellInfo.getColIndex()).empty()) {
          visit(cellInfo);
        }
      });
    } else {
      for (unsigned long row = firstRow; row < endRow; ++row) {
        for (ColumnInterval const& columns : intervals) {
          forEachCell(_table, {row, columns.first, row + 1, columns.end}, _existingOnly, visit);
        }
      }
    }
  }

  DOM::Table const& _table;
  FormatCursor _cursor;
  bool _existingOnly;
};

}  // namespace Zorv::ConditionalFormatters
