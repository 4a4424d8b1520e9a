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

/// Walks the cells in the ranges of one format that a pass visits.
class VerdictWalk {
public:
  VerdictWalk(PreparedTable const& table, FormatIndex format, TablePass const& pass)
      : _table(table.getTable()),
        _positions(table.getOrCreatePositions(format)),
        _existingOnly(pass.positions == TablePass::Positions::Existing) {}

  [[nodiscard]] static BlockList findBlocks(PreparedTable const& table, FormatIndex format,
                                            TablePass const& pass) {
    BlockList blocks;
    auto const ranges = clip(table.getFormatRefs()[format].first, pass.range);
    for (auto const& range : RangeUnion(ranges).cover()) {
      blocks.add(pass.positions == TablePass::Positions::Existing
                     ? DOM::RowBlocks::ofCells(table.getTable(), range)
                     : DOM::RowBlocks::ofPositions(range));
    }
    return blocks;
  }

  template <class Visit>
  void forEachCellOf(TableRange const& block, Visit const& visit) const {
    auto const isInRanges = [this](unsigned long row, unsigned long column) {
      return _positions.contains(row, column);
    };
    forEachCell(_table, block, _existingOnly, isInRanges, visit);
  }

private:
  DOM::Table const& _table;
  RangeUnion const& _positions;
  bool _existingOnly;
};

/// Judges blocks for one thread.
class VerdictWorker {
public:
  VerdictWorker(PreparedTable const& table, FormatIndex format, TablePass const& pass,
                OfficeUtils::Clock::TimePoint moment)
      : _format(format),
        _walk(table, format, pass),
        _skipFailure(pass),
        _asker(table, format, pass.threadCount, moment) {}

  /// Calls the visitor for each cell of a block.
  template <class Visit>
  void visit(TableRange const& block, Visit const& visit) {
    _walk.forEachCellOf(block, [&](DOM::CellInfo const& cellInfo) {
      bool holds = false;
      auto const* const failure =
          _skipFailure([&] { holds = _asker.holds(cellInfo); }, [&] { return _format; });
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
  VerdictWalk _walk;
  FailureSkipper _skipFailure;
  ConditionAsker _asker;
};

void deliver(VerdictWalk const& walk, TableRange const& block, BlockVerdicts const& verdicts,
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

ConditionAsker::ConditionAsker(PreparedTable const& table, FormatIndex format, unsigned threadCount,
                               OfficeUtils::Clock::TimePoint moment)
    : _table(table),
      _format(format),
      _threadCount(threadCount),
      _pass(table.getLookups(), moment) {}

bool ConditionAsker::holds(DOM::CellInfo const& cellInfo) {
  PreparedCondition const& condition = getCondition();
  return condition.holds(read(cellInfo), _pass);
}

ConditionOperands ConditionAsker::findOperands(DOM::CellInfo const& cellInfo) {
  PreparedCondition const& condition = getCondition();
  return condition.findOperands(read(cellInfo), _pass);
}

TestedCell ConditionAsker::read(DOM::CellInfo const& cellInfo) const {
  auto const isCollected = [&] {
    return cellInfo.getCell() != nullptr && _table.getOrCreatePositions(_format).contains(
                                                cellInfo.getRowIndex(), cellInfo.getColIndex());
  };
  return {{_table.getProvider().getCellValue(cellInfo), cellInfo.getCellIndex()}, isCollected()};
}

void judgeCells(PreparedTable const& table, FormatIndex format, TablePass const& pass,
                VerdictVisitor const& visitor) {
  BlockList const blocks = VerdictWalk::findBlocks(table, format, pass);
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  if (pass.threadCount <= 1) {
    VerdictWorker worker(table, format, pass, moment);
    for (std::size_t block = 0; block < blocks.count(); ++block) {
      worker.visit(blocks.at(block), visitor);
    }
    return;
  }
  VerdictWalk const walk(table, format, pass);
  runBlockTasks<BlockVerdicts>(
      blocks, pass.threadCount,
      [&] { return std::make_unique<VerdictWorker>(table, format, pass, moment); },
      [&](TableRange const& block, BlockVerdicts const& verdicts) {
        deliver(walk, block, verdicts, visitor);
      });
}

}  // namespace Zorv::ConditionalFormatters
