#include "ConditionalFormatters/WholeTable/CndFrmt_RunsPass.h"

#include <memory>

#include "ConditionalFormatters/Formats/CndFrmt_StyleRuns.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_BlockTasks.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellResolver.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassWalk.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Resolves blocks into runs, for one thread.
class RunsWorker {
public:
  RunsWorker(PreparedTable const& table, TablePass const& pass,
             OfficeUtils::Clock::TimePoint moment)
      : _walk(table, pass), _skipFailure(pass), _cells(table, pass.threadCount, moment) {}

  void operator()(TableRange const& block, std::vector<OpenStyleRun>& result) {
    BlockRunsBuilder runs;
    _walk.forEachCellOf(block, [&](DOM::CellInfo const& cellInfo) {
      _skipFailure(
          [&] {
            runs.addCell(cellInfo.getRowIndex(), cellInfo.getColIndex(), _cells.resolve(cellInfo));
          },
          [&] { return _cells.getLastEvaluated(); });
    });
    result = runs.finalize();
  }

private:
  PassWalk _walk;
  FailureSkipper _skipFailure;
  CellResolver _cells;
};

}  // namespace

std::vector<StyleRun> resolveIntoRuns(PreparedTable const& table, TablePass const& pass) {
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  TableRunsBuilder runs;
  runBlockTasks<std::vector<OpenStyleRun>>(
      PassWalk::findBlocks(table, pass), pass.threadCount,
      [&] { return std::make_unique<RunsWorker>(table, pass, moment); },
      [&](TableRange const& block, std::vector<OpenStyleRun> const& ofBlock) {
        runs.addBlock(block, ofBlock);
      });
  return runs.finalize();
}

}  // namespace Zorv::ConditionalFormatters
