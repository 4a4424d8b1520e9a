#include "ConditionalFormatters/Formats/CndFrmt_StyleRuns.h"

#include <utility>

namespace Zorv::ConditionalFormatters {

namespace {

DOM::SharedCellStylePtr const& styleOf(OpenStyleRun const& run) noexcept { return *run.style; }
DOM::SharedCellStylePtr const& styleOf(StyleRun const& run) noexcept { return run.style; }

void append(std::vector<OpenStyleRun>& runs, OpenStyleRun const& run) { runs.push_back(run); }
void append(std::vector<StyleRun>& runs, OpenStyleRun const& run) {
  runs.push_back({run.range, *run.style});
}

}  // namespace

template <class Run>
void StyleRunJoiner<Run>::join(OpenStyleRun const& run) {
  auto const [lowest, isNew] = _lowestRuns.emplace(run.range.firstColumn, _runs.size());
  if (!isNew) {
    Run& above = _runs[lowest->second];
    if (above.range.endRow == run.range.firstRow && above.range.endColumn == run.range.endColumn &&
        styleOf(above) == *run.style) {
      above.range.endRow = run.range.endRow;
      return;
    }
    lowest->second = _runs.size();
  }
  append(run);
}

template <class Run>
void StyleRunJoiner<Run>::append(OpenStyleRun const& run) {
  ConditionalFormatters::append(_runs, run);
}

template <class Run>
std::vector<Run> StyleRunJoiner<Run>::finalize() {
  _lowestRuns.clear();
  return std::exchange(_runs, {});
}

template class StyleRunJoiner<OpenStyleRun>;
template class StyleRunJoiner<StyleRun>;

void BlockRunsBuilder::addCell(unsigned long row, unsigned long column,
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

std::vector<OpenStyleRun> BlockRunsBuilder::finalize() {
  endRun();
  return _joiner.finalize();
}

void BlockRunsBuilder::endRun() {
  if (_unfinished) {
    _joiner.join(*_unfinished);
    _unfinished = boost::none;
  }
}

void TableRunsBuilder::addBlock(TableRange const& block, std::vector<OpenStyleRun> const& runs) {
  for (OpenStyleRun const& run : runs) {
    // Inside the block all runs are joined already: only its first and last row meet others.
    if (run.range.firstRow == block.firstRow || run.range.endRow == block.endRow) {
      _joiner.join(run);
    } else {
      _joiner.append(run);
    }
  }
}

}  // namespace Zorv::ConditionalFormatters
