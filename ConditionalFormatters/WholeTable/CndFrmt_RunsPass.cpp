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
  RunsWorker(PreparedTable const& table, PassCells const& cells, TablePass const& pass,
             OfficeUtils::Clock::TimePoint moment)
      : _walk(cells, pass.budget),
        _skipFailure(pass),
        _cells(table, cells.makeRequest(pass), moment) {}

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
  PassCells const cells(table, pass);
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  TableRunsBuilder runs;
  runBlockTasks<std::vector<OpenStyleRun>>(
      cells.getBlocks(), pass.threadCount,
      [&] { return std::make_unique<RunsWorker>(table, cells, pass, moment); },
      [&](TableRange const& block, std::vector<OpenStyleRun> const& ofBlock) {
        runs.addBlock(block, ofBlock);
      });
  return runs.finalize();
}

}  // namespace Zorv::ConditionalFormatters
