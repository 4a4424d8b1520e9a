#include "ConditionalFormatters/WholeTable/CndFrmt_VerdictPass.h"

#include <cstddef>
#include <memory>
#include <vector>

#include "ConditionalFormatters/WholeTable/CndFrmt_BlockTasks.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassWalk.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// The verdicts about the cells of a block, in their order.
struct BlockVerdicts {
  std::vector<bool> holds;
  BlockFailures failures;
};

/// Judges blocks for one thread.
class VerdictWorker {
public:
  VerdictWorker(PreparedTable const& table, FormatIndex format, PassCells const& cells,
                TablePass const& pass, OfficeUtils::Clock::TimePoint moment)
      : _format(format),
        _walk(cells, pass.budget),
        _skipFailure(pass),
        _asker(table, format, cells.makeRequest(pass), moment) {}

  /// Calls the visitor for each cell of a block.
  template <class Visit>
  void visit(TableRange const& block, Visit const& visit) {
    _walk.forEachCellOf(block, [&](DOM::CellInfo const& cellInfo) {
      bool holds = false;
      auto const* const failure =
          _skipFailure([&] { holds = _asker.holdsInRanges(cellInfo); }, [&] { return _format; });
      visit(CellVerdict{cellInfo, holds, failure});
    });
  }

  void operator()(TableRange const& block, BlockVerdicts& result) {
    visit(block, [&](CellVerdict const& verdict) {
      if (verdict.failure != nullptr) {
        result.failures.add(result.holds.size(), *verdict.failure);
      }
      result.holds.push_back(verdict.holds);
    });
  }

private:
  FormatIndex _format;
  PassWalk _walk;
  FailureSkipper _skipFailure;
  ConditionAsker _asker;
};

void deliver(PassWalk& walk, TableRange const& block, BlockVerdicts const& verdicts,
             VerdictVisitor const& visitor) {
  BlockFailures::Cursor failures(verdicts.failures);
  std::size_t cell = 0;
  walk.forEachCellOf(block, [&](DOM::CellInfo const& cellInfo) {
    // The results end before the cell that ended the pass.
    if (cell < verdicts.holds.size()) {
      visitor({cellInfo, verdicts.holds[cell], failures.moveTo(cell)});
      ++cell;
    }
  });
}

}  // namespace

ConditionAsker::ConditionAsker(PreparedTable const& table, FormatIndex format,
                               PassRequest const& request, OfficeUtils::Clock::TimePoint moment)
    : _table(table),
      _format(format),
      _request(request),
      _pass(table.getLookups(), moment, request.resources) {}

bool ConditionAsker::holds(DOM::CellInfo const& cellInfo) {
  PreparedCondition const& condition = getCondition();
  return condition.holds(read(cellInfo, liesInRanges(cellInfo)), _pass);
}

bool ConditionAsker::holdsInRanges(DOM::CellInfo const& cellInfo) {
  PreparedCondition const& condition = getCondition();
  return condition.holds(read(cellInfo, true), _pass);
}

ConditionOperands ConditionAsker::findOperands(DOM::CellInfo const& cellInfo) {
  PreparedCondition const& condition = getCondition();
  return condition.findOperands(read(cellInfo, liesInRanges(cellInfo)), _pass);
}

bool ConditionAsker::liesInRanges(DOM::CellInfo const& cellInfo) const {
  return _table.liesInRanges(_format, cellInfo.getCellIndex());
}

TestedCell ConditionAsker::read(DOM::CellInfo const& cellInfo, bool isInRanges) const {
  return {{_table.getProvider().getCellValue(cellInfo), cellInfo.getCellIndex()},
          isInRanges && cellInfo.getCell() != nullptr,
          cellInfo.getCell()};
}

void judgeCells(PreparedTable const& table, FormatIndex format, TablePass const& pass,
                VerdictVisitor const& visitor) {
  PassCells const cells(table, format, pass);
  BlockList const& blocks = cells.getBlocks();
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  if (pass.threadCount <= 1) {
    VerdictWorker worker(table, format, cells, pass, moment);
    for (std::size_t block = 0; block < blocks.count(); ++block) {
      worker.visit(blocks.at(block), visitor);
    }
    return;
  }
  PassWalk walk(cells);
  runBlockTasks<BlockVerdicts>(
      blocks, pass.threadCount,
      [&] { return std::make_unique<VerdictWorker>(table, format, cells, pass, moment); },
      [&](TableRange const& block, BlockVerdicts const& verdicts) {
        deliver(walk, block, verdicts, visitor);
      });
}

}  // namespace Zorv::ConditionalFormatters
