#include "ConditionalFormatters/WholeTable/CndFrmt_ResolvePass.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "ConditionalFormatters/WholeTable/CndFrmt_BlockTasks.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellResolver.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassWalk.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

namespace {

DOM::SharedCellStylePtr const noStyle;

/// The resolved cells of a block, in their order.
struct BlockCells {
  struct Resolved {
    DOM::SharedCellStylePtr const* style;
    std::size_t formatEnd;  ///< in `formats`
  };

  std::vector<Resolved> cells;
  FormatIndices formats;  ///< of all cells, one after the other
  BlockFailures failures;
};

/// Resolves blocks for one thread.
class ResolveWorker {
public:
  ResolveWorker(PreparedTable const& table, PassCells const& cells, TablePass const& pass,
                OfficeUtils::Clock::TimePoint moment)
      : _walk(cells, pass.budget),
        _skipFailure(pass),
        _cells(table, cells.makeRequest(pass), moment) {}

  /// Calls the visitor for each cell of a block.
  template <class Visit>
  void visit(TableRange const& block, Visit const& visit) {
    _walk.forEachCellOf(block, [&](DOM::CellInfo const& cellInfo) {
      DOM::SharedCellStylePtr const* style = &noStyle;
      auto const* const failure = _skipFailure([&] { style = &_cells.resolve(cellInfo); },
                                               [&] { return _cells.getLastEvaluated(); });
      visit(ResolvedCell{cellInfo, *style, _cells.getHolding(), failure});
    });
  }

  void operator()(TableRange const& block, BlockCells& result) {
    collect(block, result, [](ResolvedCell const& /*cell*/) {});
  }

  /// Fills the result. A cell for which `work(cell)` throws is not in it.
  template <class Work>
  void collect(TableRange const& block, BlockCells& result, Work const& work) {
    result.cells.reserve(DOM::RowBlocks::cellsPerBlock);
    visit(block, [&](ResolvedCell const& cell) {
      work(cell);
      if (cell.failure != nullptr) {
        result.failures.add(result.cells.size(), *cell.failure);
      }
      // One by one: most cells have a format or none.
      for (FormatIndex const format : cell.formats) {
        result.formats.push_back(format);
      }
      result.cells.push_back({&cell.style, result.formats.size()});
    });
  }

private:
  PassWalk _walk;
  FailureSkipper _skipFailure;
  CellResolver _cells;
};

/// The resolved cells of a block, and what a worker has found for them.
struct WorkedCells {
  BlockCells cells;
  std::unique_ptr<BlockFindings> findings;
};

/// Resolves blocks for one thread, and has a worker work on their cells.
class WorkedCellsWorker {
public:
  WorkedCellsWorker(std::unique_ptr<ResolveWorker> resolver, std::unique_ptr<CellWorker> worker)
      : _resolver(std::move(resolver)), _worker(std::move(worker)) {}

  void operator()(TableRange const& block, WorkedCells& result) {
    result.findings = _worker->beginBlock();
    _resolver->collect(block, result.cells, [&](ResolvedCell const& cell) { _worker->work(cell); });
  }

private:
  std::unique_ptr<ResolveWorker> _resolver;
  std::unique_ptr<CellWorker> _worker;
};

/// Hands the cells of one block after the other to a visitor. They are walked again beside their
/// results, which is cheaper than handing each of them from one thread to another.
class CellDelivery {
public:
  explicit CellDelivery(PassCells const& cells) : _walk(cells) {}

  template <class Visitor>
  void deliver(TableRange const& block, BlockCells const& cells, Visitor const& visitor) {
    std::span<FormatIndex const> const formats = cells.formats;
    BlockFailures::Cursor failures(cells.failures);
    std::size_t cell = 0;
    std::size_t begin = 0;
    _walk.forEachCellOf(block, [&](DOM::CellInfo const& cellInfo) {
      // The results end before the cell that ended the pass.
      if (cell < cells.cells.size()) {
        auto const [style, end] = cells.cells[cell];
        visitor(ResolvedCell{cellInfo, *style, formats.subspan(begin, end - begin),
                             failures.moveTo(cell)});
        begin = end;
        ++cell;
      }
    });
  }

private:
  PassWalk _walk;
};

}  // namespace

void resolveCells(PreparedTable const& table, TablePass const& pass, CellVisitor const& visitor) {
  PassCells const cells(table, pass);
  BlockList const& blocks = cells.getBlocks();
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  if (pass.threadCount <= 1) {
    ResolveWorker worker(table, cells, pass, moment);
    for (std::size_t block = 0; block < blocks.count(); ++block) {
      worker.visit(blocks.at(block), visitor);
    }
    return;
  }
  CellDelivery delivery(cells);
  runBlockTasks<BlockCells>(
      blocks, pass.threadCount,
      [&] { return std::make_unique<ResolveWorker>(table, cells, pass, moment); },
      [&](TableRange const& block, BlockCells const& results) {
        delivery.deliver(block, results, visitor);
      });
}

void resolveCells(PreparedTable const& table, TablePass const& pass,
                  MakeCellWorker const& makeWorker) {
  PassCells const cells(table, pass);
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  CellDelivery delivery(cells);
  runBlockTasks<WorkedCells>(
      cells.getBlocks(), pass.threadCount,
      [&] {
        return std::make_unique<WorkedCellsWorker>(
            std::make_unique<ResolveWorker>(table, cells, pass, moment), makeWorker());
      },
      [&](TableRange const& block, WorkedCells const& results) {
        delivery.deliver(block, results.cells,
                         [&](ResolvedCell const& cell) { results.findings->visit(cell); });
      });
}

}  // namespace Zorv::ConditionalFormatters
