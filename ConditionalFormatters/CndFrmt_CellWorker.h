#pragma once

#include <functional>
#include <memory>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/CndFrmt_TablePass.h"

// What a pass does with its cells in its own threads, besides resolving them.
namespace Zorv::ConditionalFormatters {

/// Findings of a CellWorker for the cells of one row block.
class CNDFRMT_EXPORT BlockFindings {
public:
  BlockFindings() = default;
  BlockFindings(BlockFindings const&) = delete;
  BlockFindings& operator=(BlockFindings const&) = delete;
  virtual ~BlockFindings();

  /// Called once for each cell of the block that the worker took, in order. Any thread of the pass
  /// calls it, but never two at once, even of different blocks. The worker may be gone by then. No
  /// lock is held and no moment is pinned meanwhile. An exception ends the pass.
  virtual void visit(ResolvedCell const& cell) = 0;
};

/// Works on the cells that one thread of a pass resolves.
class CNDFRMT_EXPORT CellWorker {
public:
  CellWorker() = default;
  CellWorker(CellWorker const&) = delete;
  CellWorker& operator=(CellWorker const&) = delete;
  virtual ~CellWorker();

  /// Begins a row block. The findings outlive the worker; it fills them until the next block.
  [[nodiscard]] virtual std::unique_ptr<BlockFindings> beginBlock() = 0;

  /// Takes the next cell of the block, row by row, each row from the left. An exception ends the
  /// pass after the cells before this one were visited.
  virtual void work(ResolvedCell const& cell) = 0;
};

/// Makes the worker of a thread. Called by each thread of a pass, also by several at once.
using MakeCellWorker = std::function<std::unique_ptr<CellWorker>()>;

}  // namespace Zorv::ConditionalFormatters
