#include "ConditionalFormatters/WholeTable/CndFrmt_StyleRunBuilder.h"

#include <utility>

namespace Zorv::ConditionalFormatters {

void StyleRunBuilder::addCell(unsigned long row, unsigned long column,
                              DOM::SharedCellStylePtr const& style) {
  if (_unfinished && _unfinished->range.firstRow == row && _unfinished->range.endColumn == column &&
      _unfinished->style == style) {
    ++_unfinished->range.endColumn;
    return;
  }
  endRun();
  if (style) {
    _unfinished = StyleRun{{row, column, row + 1, column + 1}, style};
  }
}

void StyleRunBuilder::addRuns(std::vector<StyleRun> runs) {
  endRun();
  for (StyleRun& run : runs) {
    join(std::move(run));
  }
}

std::vector<StyleRun> StyleRunBuilder::finish() {
  endRun();
  _lowestRuns.clear();
  return std::exchange(_runs, {});
}

void StyleRunBuilder::endRun() {
  if (_unfinished) {
    join(std::move(*_unfinished));
    _unfinished = boost::none;
  }
}

void StyleRunBuilder::join(StyleRun run) {
  auto const [lowest, isNew] = _lowestRuns.emplace(run.range.firstColumn, _runs.size());
  if (!isNew) {
    StyleRun& above = _runs[lowest->second];
    if (above.range.endRow == run.range.firstRow && above.range.endColumn == run.range.endColumn &&
        above.style == run.style) {
      above.range.endRow = run.range.endRow;
      return;
    }
    lowest->second = _runs.size();
  }
  _runs.push_back(std::move(run));
}

}  // namespace Zorv::ConditionalFormatters
