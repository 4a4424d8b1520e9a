#pragma once

#include <exception>
#include <vector>

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"
#include "ConditionalFormatters/Parallel/CndFrmt_BlockList.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "DOM/CellInfo.h"
#include "DOM/Table.h"
#include "Utils/TableRange.h"

// The cells of a pass, in their order.
namespace Zorv::ConditionalFormatters {

/// Calls `visit(cellInfo)` for the existing cells of a range, or for all its positions, row by row,
/// each row from the left; only for those that `accepts(row, column)`.
template <class Accepts, class Visit>
void forEachCell(DOM::Table const& table, TableRange const& range, bool existingOnly,
                 Accepts const& accepts, Visit const& visit) {
  auto [cell, end] = table.getRangeIterators(range);
  auto const visitAccepted = [&](DOM::CellInfo const& cellInfo) {
    if (accepts(cellInfo.getRowIndex(), cellInfo.getColIndex())) {
      visit(cellInfo);
    }
  };
  if (existingOnly) {
    for (; cell != end; ++cell) {
      visitAccepted(cell.getCellInfo());
    }
    return;
  }
  for (unsigned long row = range.firstRow; row < range.endRow; ++row) {
    for (unsigned long column = range.firstColumn; column < range.endColumn; ++column) {
      CellIndex const index{RowIndex(row), ColumnIndex(column)};
      if (cell != end && cell.getCellInfo().getCellIndex() == index) {
        visitAccepted(cell.getCellInfo());
        ++cell;
      } else {
        visitAccepted(DOM::CellInfo(table, index, nullptr));
      }
    }
  }
}

/// Walks the cells that a pass visits, block by block, for one thread. Walks of one pass over the
/// same block visit the same cells.
class PassWalk {
public:
  using Positions = TablePass::Positions;

  PassWalk(PreparedTable const& table, TablePass const& pass)
      : _table(table.getTable()),
        _positions(pass.positions),
        _formatCursor(table.getRangeIndex()) {}

  /// The row blocks of a pass.
  [[nodiscard]] static BlockList findBlocks(PreparedTable const& table, TablePass const& pass) {
    BlockList blocks;
    if (pass.positions == Positions::Formatted) {
      for (auto const& range : RangeUnion(clip(table.listRanges(), pass.range)).cover()) {
        blocks.add(DOM::RowBlocks::ofPositions(range));
      }
    } else {
      blocks.add(pass.positions == Positions::Existing
                     ? DOM::RowBlocks::ofCells(table.getTable(), pass.range)
                     : DOM::RowBlocks::ofPositions(pass.range));
    }
    return blocks;
  }

  template <class Visit>
  void forEachCellOf(TableRange const& block, Visit const& visit) {
    if (_positions == Positions::Formatted) {
      auto const isFormatted = [this](unsigned long row, unsigned long column) {
        return !_formatCursor.moveTo(row, column).empty();
      };
      forEachCell(_table, block, false, isFormatted, visit);
    } else {
      auto const isAny = [](unsigned long, unsigned long) { return true; };
      forEachCell(_table, block, _positions == Positions::Existing, isAny, visit);
    }
  }

private:
  DOM::Table const& _table;
  Positions _positions;
  FormatCursor _formatCursor;
};

/// Turns exceptions of cells into failures if a pass skips failures.
class FailureSkipper {
public:
  explicit FailureSkipper(TablePass const& pass) noexcept
      : _skips(pass.onFailure == TablePass::OnFailure::Skip) {}

  /// Calls `attempt()`; null if it returns. If it throws and the pass skips failures, the failure,
  /// of the format that `getFormat()` names; it is valid until the next call.
  template <class Attempt, class GetFormat>
  CellFailure const* operator()(Attempt const& attempt, GetFormat const& getFormat) {
    try {
      attempt();
      return nullptr;
    } catch (...) {
      if (!_skips) {
        throw;
      }
      _failure = {getFormat(), std::current_exception()};
      return &_failure;
    }
  }

private:
  bool _skips;
  CellFailure _failure{};
};

}  // namespace Zorv::ConditionalFormatters
