#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/Formats/CndFrmt_ColumnFormats.h"
#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"

namespace Zorv::ConditionalFormatters {

/// Finds the formats of one position after the other.
///
/// Sweeps over the rows: it keeps the ranges that the current row crosses, and the answers for the
/// current row interval. A walk in row order enters and leaves each range once, which costs
/// `n log n` for n ranges in all, and then one search for each crossing of intervals that it meets,
/// however the ranges overlap. A step upwards begins a new sweep.
class FormatCursor {
public:
  /// Borrows the index, which must outlive the cursor.
  explicit FormatCursor(RangeIndex const& index);

  /// The formats whose ranges hold the position, in order of priority. Valid until the next call.
  [[nodiscard]] FormatIndices const& moveTo(unsigned long row, unsigned long column) {
    return findCover(row, column).formats;
  }

  /// How many ranges hold the position.
  [[nodiscard]] std::uint64_t countRanges(unsigned long row, unsigned long column) {
    return findCover(row, column).intervalCount;
  }

  /// Goes to a row. The end of its row interval, which lies outside: up to there, everything below
  /// stays the same.
  unsigned long enterRow(unsigned long row) {
    if (row < _rows.first || row >= _rows.second) {
      enterRowInterval(row);
    }
    return _rows.second;
  }

  /// The number of columns of the current row that some range holds.
  [[nodiscard]] unsigned long getWidth() const noexcept { return _columnFormats.width(); }

  /// These columns, as intervals that do not touch, ascending.
  [[nodiscard]] std::vector<ColumnInterval> listColumns() const { return _columnFormats.list(); }

private:
  struct Answer {
    bool isKnown = false;
    ColumnFormats::Cover cover;
  };

  ColumnFormats::Cover const& findCover(unsigned long row, unsigned long column) {
    enterRow(row);
    if (column < _columns.first || column >= _columns.second) {
      enterColumnInterval(column);
    }
    return *_cover;
  }
  void enterRowInterval(unsigned long row);
  void enterColumnInterval(unsigned long column);
  /// Begins a new sweep above the first row.
  void restart();
  /// Leaves the ranges that end above a row, and enters those that cross it.
  void sweepTo(unsigned long row);

  RangeIndex const& _index;
  ColumnFormats _columnFormats;
  std::size_t _nextFirst = 0;   ///< the next range to enter
  std::size_t _nextEnd = 0;     ///< the next range to leave, by end row
  unsigned long _sweptEnd = 0;  ///< ranges whose first row lies above were entered
  std::pair<unsigned long, unsigned long> _rows{0, 0};
  std::pair<unsigned long, unsigned long> _columns{0, 0};
  std::vector<Answer> _answers;  ///< of the row interval, by column interval
  std::vector<std::size_t> _knownColumns;
  ColumnFormats::Cover const* _cover = nullptr;
};

}  // namespace Zorv::ConditionalFormatters
