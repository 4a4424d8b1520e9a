#pragma once

#include <exception>
#include <new>
#include <optional>
#include <vector>

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"
#include "ConditionalFormatters/Parallel/CndFrmt_BlockList.h"
#include "ConditionalFormatters/Parallel/CndFrmt_CellWalk.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassRequest.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "DOM/CellInfo.h"
#include "DOM/Table.h"
#include "Utils/WorkBudget.h"

// The cells of a pass, in their order.
namespace Zorv::ConditionalFormatters {

/// The cells that a pass visits, as row blocks. Immutable; borrows the table.
class PassCells {
public:
  PassCells(PreparedTable const& table, TablePass const& pass);
  /// Only those in the ranges of a format.
  PassCells(PreparedTable const& table, FormatIndex format, TablePass const& pass);

  [[nodiscard]] BlockList const& getBlocks() const noexcept { return _blocks; }

  /// Request of the pass for these cells, which the request borrows.
  [[nodiscard]] PassRequest makeRequest(TablePass const& pass) const noexcept {
    return {{pass.threadCount, pass.budget}, _areas, _asksOneFormat};
  }

private:
  friend class PassWalk;

  void findBlocks(PreparedTable const& table, TablePass const& pass);
  /// As many as usual, but fewer where few cells are under very many formats, so that there are
  /// blocks for all threads. Under few formats, one thread for few cells is enough, and formulas
  /// that need much memory need it once.
  [[nodiscard]] unsigned long chooseCellsPerBlock(PreparedTable const& table,
                                                  TablePass const& pass) const noexcept;

  DOM::Table const& _table;
  bool _existingOnly;
  bool _asksOneFormat;
  std::vector<TableRange> _areas;     ///< in which the cells lie
  std::optional<RangeIndex> _ranges;  ///< every cell lies in one of them
  std::optional<RangeIndex> _filter;  ///< and in one of these
  BlockList _blocks;
};

/// Walks the cells of a pass, block by block, for one thread. Walks of one pass over the same block
/// visit the same cells.
class PassWalk {
public:
  /// Borrows the cells. Spends a step of the budget for each cell, if there is a budget.
  explicit PassWalk(PassCells const& cells, WorkBudget* budget = nullptr)
      : _cells(cells), _steps(budget) {
    if (cells._ranges) {
      _ranges.emplace(cells._table, *cells._ranges, cells._existingOnly);
    }
    if (cells._filter) {
      _filter.emplace(*cells._filter);
    }
  }

  template <class Visit>
  void forEachCellOf(TableRange const& block, Visit const& visit) {
    auto const visitAccepted = [&](DOM::CellInfo const& cellInfo) {
      _steps.count();
      if (!_filter || !_filter->moveTo(cellInfo.getRowIndex(), cellInfo.getColIndex()).empty()) {
        visit(cellInfo);
      }
    };
    if (_ranges) {
      _ranges->forEachCellOf(block, visitAccepted);
    } else {
      forEachCell(_cells._table, block, _cells._existingOnly, visitAccepted);
    }
  }

private:
  PassCells const& _cells;
  StepCounter _steps;
  std::optional<RangesWalk> _ranges;
  std::optional<FormatCursor> _filter;
};

/// Turns exceptions of cells into failures if a pass skips failures.
class FailureSkipper {
public:
  explicit FailureSkipper(TablePass const& pass) noexcept
      : _skips(pass.onFailure == TablePass::OnFailure::Skip) {}

  /// Calls `attempt()`; null if it returns. If it throws and the pass skips failures, the failure,
  /// of the format that `getFormat()` names; it is valid until the next call. A lack of memory and
  /// the end of a budget are no failures of a cell, and thrown on.
  template <class Attempt, class GetFormat>
  CellFailure const* operator()(Attempt const& attempt, GetFormat const& getFormat) {
    try {
      attempt();
      return nullptr;
    } catch (std::bad_alloc const&) {
      throw;
    } catch (WorkEnded const&) {
      throw;
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
