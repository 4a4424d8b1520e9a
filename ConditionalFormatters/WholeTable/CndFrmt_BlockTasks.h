#pragma once

#include <cstddef>
#include <exception>
#include <optional>
#include <utility>

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/Parallel/CndFrmt_BlockList.h"
#include "ConditionalFormatters/Parallel/CndFrmt_OrderedTasks.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The result of one block: of all its cells, or of those before the one that ended the pass.
template <class Result>
struct BlockOutcome {
  Result result;
  std::exception_ptr failure;
};

/// Runs a pass block by block.
///
/// Each thread makes a worker by `makeWorker()`, which adds the results of a block's cells to a
/// result by `worker(block, result)`. `deliver(block, result)` is called for the blocks in their
/// order. If a worker throws, the result is delivered as far as it got, and the pass ends.
template <class Result, class MakeWorker, class Deliver>
void runBlockTasks(BlockList const& blocks, unsigned threadCount, MakeWorker const& makeWorker,
                   Deliver const& deliver) {
  auto const makeTaskWorker = [&] {
    return [&blocks, worker = makeWorker()](std::size_t index) mutable {
      BlockOutcome<Result> outcome;
      try {
        (*worker)(blocks.at(index), outcome.result);
      } catch (...) {
        outcome.failure = std::current_exception();
      }
      return outcome;
    };
  };
  std::size_t delivered = 0;
  auto const deliverOutcome = [&](BlockOutcome<Result> const& outcome) {
    deliver(blocks.at(delivered++), outcome.result);
    if (outcome.failure) {
      std::rethrow_exception(outcome.failure);
    }
  };
  OrderedTasks(blocks.count(), threadCount, makeTaskWorker, deliverOutcome).run();
}

/// Failures of a block's cells, by the index of the cell in the block.
class BlockFailures {
public:
  void add(std::size_t cell, CellFailure failure) {
    _failures.emplace_back(cell, std::move(failure));
  }

  /// Finds the failures of one cell after the other.
  class Cursor {
  public:
    explicit Cursor(BlockFailures const& failures) noexcept
        : _next(failures._failures.begin()), _end(failures._failures.end()) {}

    /// The failure of a cell, or null.
    [[nodiscard]] CellFailure const* moveTo(std::size_t cell) noexcept {
      return _next != _end && _next->first == cell ? &(_next++)->second : nullptr;
    }

  private:
    std::vector<std::pair<std::size_t, CellFailure>>::const_iterator _next;
    std::vector<std::pair<std::size_t, CellFailure>>::const_iterator _end;
  };

private:
  std::vector<std::pair<std::size_t, CellFailure>> _failures;  ///< ascending
};

}  // namespace Zorv::ConditionalFormatters
