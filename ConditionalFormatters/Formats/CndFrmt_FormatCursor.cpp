#include "ConditionalFormatters/Formats/CndFrmt_FormatCursor.h"

namespace Zorv::ConditionalFormatters {

namespace {

ColumnInterval columnsOf(TableRange const& range) noexcept {
  return {range.firstColumn, range.endColumn};
}

}  // namespace

FormatCursor::FormatCursor(RangeIndex const& index)
    : _index(index),
      _columnFormats(index.getColumnBorders()),
      _answers(index.getColumnBorders().size() + 1) {}

void FormatCursor::enterRowInterval(unsigned long row) {
  for (std::size_t const columnInterval : _knownColumns) {
    _answers[columnInterval].isKnown = false;
  }
  _knownColumns.clear();
  if (row < _rows.first) {
    restart();
  }
  sweepTo(row);
  _rows = _index.rowsAround(row);
  _columns = {0, 0};  // empty: the next look-up enters a column interval
}

void FormatCursor::restart() {
  _columnFormats = ColumnFormats(_index.getColumnBorders());
  _nextFirst = 0;
  _nextEnd = 0;
  _sweptEnd = 0;
}

void FormatCursor::sweepTo(unsigned long row) {
  auto const& ranges = _index.getRanges();
  auto const& byEndRow = _index.getByEndRow();
  for (; _nextEnd < ranges.size(); ++_nextEnd) {
    auto const& [range, format] = ranges[byEndRow[_nextEnd]];
    if (range.endRow > row) {
      break;
    }
    // A range that lies above the row as a whole was never entered.
    if (range.firstRow < _sweptEnd) {
      _columnFormats.remove(columnsOf(range), format);
    }
  }
  for (; _nextFirst < ranges.size(); ++_nextFirst) {
    auto const& [range, format] = ranges[_nextFirst];
    if (range.firstRow > row) {
      break;
    }
    if (range.endRow > row) {
      _columnFormats.add(columnsOf(range), format);
    }
  }
  _sweptEnd = row + 1;
}

void FormatCursor::enterColumnInterval(unsigned long column) {
  std::size_t const columnInterval = _index.columnIntervalOf(column);
  Answer& answer = _answers[columnInterval];
  if (!answer.isKnown) {
    // The first and the last interval lie beyond all ranges.
    if (columnInterval > 0 && columnInterval + 1 < _answers.size()) {
      _columnFormats.find(columnInterval - 1, answer.cover);
    }
    _knownColumns.push_back(columnInterval);
    answer.isKnown = true;
  }
  _columns = _index.columnsOf(columnInterval);
  _cover = &answer.cover;
}

}  // namespace Zorv::ConditionalFormatters
