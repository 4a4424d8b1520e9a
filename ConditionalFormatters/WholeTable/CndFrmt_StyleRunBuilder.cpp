#include "ConditionalFormatters/WholeTable/CndFrmt_StyleRunBuilder.h"

#include <utility>

namespace Zorv::ConditionalFormatters {

void StyleRunBuilder::addCell(unsigned long row, unsigned long column,
                              DOM::SharedCellStylePtr const& style) {
  if (_unfinished && _unfinished->range.firstRow == row && _unfinished->range.endColumn == column &&
      *_unfinished->style == style) {
    ++_unfinished->range.endColumn;
    return;
  }
  endRun();
  if (style) {
    _unfinished = OpenStyleRun{{row, column, row + 1, column + 1}, &style};
  }
}

void StyleRunBuilder::addRuns(TableRange const& band, std::vector<OpenStyleRun> const& runs) {
  endRun();
  for (OpenStyleRun const& run : runs) {
    // Inside the band all runs are joined; others can only go on above it or below.
    if (run.range.firstRow == band.firstRow || run.range.endRow == band.endRow) {
      join(run);
    } else {
      _runs.push_back(run);
    }
  }
}

std::vector<OpenStyleRun> StyleRunBuilder::finish() {
  endRun();
  _lowestRuns.clear();
  return std::exchange(_runs, {});
}

void StyleRunBuilder::endRun() {
  if (_unfinished) {
    join(*_unfinished);
    _unfinished = boost::none;
  }
}

void StyleRunBuilder::join(OpenStyleRun const& run) {
  auto const [lowest, isNew] = _lowestRuns.emplace(run.range.firstColumn, _runs.size());
  if (!isNew) {
    OpenStyleRun& above = _runs[lowest->second];
    if (above.range.endRow == run.range.firstRow && above.range.endColumn == run.range.endColumn &&
        *above.style == *run.style) {
      above.range.endRow = run.range.endRow;
      return;
    }
    lowest->second = _runs.size();
  }
  _runs.push_back(run);
}

}  // namespace Zorv::ConditionalFormatters
