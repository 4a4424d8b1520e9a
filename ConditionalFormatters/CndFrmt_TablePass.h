#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "Utils/TableRange.h"

namespace Zorv {
class WorkBudget;
}  // namespace Zorv

// What a pass of a TableResolver goes through, and what it tells of each cell.
namespace Zorv::ConditionalFormatters {

/// The cells that a pass visits, and how.
struct TablePass {
  /// Positions of the range that are visited.
  enum class Positions : std::uint8_t {
    Existing,   ///< cells that exist
    All,        ///< every position
    Formatted,  ///< every position in the ranges of some format, with or without a cell
    Areas,      ///< every position in the areas of the pass, with or without a cell
  };
  /// Treatment of a cell that cannot be resolved.
  enum class OnFailure : std::uint8_t {
    Stop,  ///< the exception ends the pass and reaches the caller
    Skip,  ///< the cell is visited with its failure, and the pass goes on; a lack of memory and the
           ///< end of the budget end it nevertheless
  };

  /// Nothing outside is visited.
  TableRange range;
  Positions positions = Positions::Existing;  ///< which positions of `range` are visited
  /// Threads that share the work, the caller's among them.
  unsigned threadCount = 1;
  OnFailure onFailure = OnFailure::Stop;  ///< for cells that cannot be resolved
  /// For Positions::Areas: in any order; what they share is visited once.
  std::vector<TableRange> areas = {};
  /// Budget of the pass; borrowed. It spends a step for each position, each condition that is
  /// asked, each cell that operands are collected from and each step of a formula; and memory for
  /// the collected values. WorkBudgetExceeded and WorkStopped end the pass, whatever it skips,
  /// after the cells before were visited. Null: no limits.
  WorkBudget* budget = nullptr;
};

/// The exception for which a cell could not be resolved, and the format that was evaluated.
struct CellFailure {
  FormatIndex format;            ///< the format that was evaluated
  std::exception_ptr exception;  ///< never null
};

/// A resolved cell. Borrows everything: good for the duration of a visitor's call.
struct ResolvedCell {
  DOM::CellInfo const& cellInfo;  ///< the position and its cell
  /// Null if no format holds, and for a cell that failed.
  DOM::SharedCellStylePtr const& style;
  /// The formats that hold, in order of priority up to the first that stops; for a cell that
  /// failed, those before the failure.
  std::span<FormatIndex const> formats;
  /// Null unless the pass skips failures and this cell has one.
  CellFailure const* failure;
};

/// Called for each cell of a pass; see TableResolver::visit().
using CellVisitor = std::function<void(ResolvedCell const&)>;

/// The verdict of one condition about a cell. Borrows everything, like ResolvedCell.
struct CellVerdict {
  DOM::CellInfo const& cellInfo;  ///< the position and its cell
  bool holds;                     ///< false for a cell that failed
  CellFailure const* failure;     ///< null unless the pass skips failures and this cell has one
};

/// Called for each cell of a format; see TableResolver::visitVerdicts().
using VerdictVisitor = std::function<void(CellVerdict const&)>;

}  // namespace Zorv::ConditionalFormatters
