#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A range, and the format that it belongs to.
struct FormatRange {
  TableRange range;
  FormatIndex format;
};

/// Ranges in the order in which a sweep over the rows enters and leaves them; see FormatCursor.
///
/// The borders of the ranges cut the sheet's rows into row intervals and its columns into column
/// intervals: all positions in which a row interval crosses a column interval lie in the same
/// ranges. Column intervals have indices from 0; the one at index i ends before border i.
///
/// Immutable. Cost: `n log n` for n ranges. Threads: may be asked from several threads at once.
class RangeIndex {
public:
  explicit RangeIndex(std::vector<FormatRange> ranges);
  /// The ranges of all formats.
  explicit RangeIndex(ConditionalFormatRefs const& formatRefs);
  /// Ranges of one format, with the index 0.
  explicit RangeIndex(std::vector<TableRange> const& ranges);

  /// By first row, then by format; without empty ranges.
  [[nodiscard]] std::vector<FormatRange> const& getRanges() const noexcept { return _ranges; }
  /// Indices of the ranges by end row, then by format from the last.
  [[nodiscard]] std::vector<std::size_t> const& getByEndRow() const noexcept { return _byEndRow; }

  [[nodiscard]] std::size_t columnIntervalOf(unsigned long column) const noexcept;
  [[nodiscard]] std::span<unsigned long const> getColumnBorders() const noexcept {
    return _columnBorders;
  }
  /// The half-open bounds of the row interval of a row, and of a column interval.
  [[nodiscard]] std::pair<unsigned long, unsigned long> rowsAround(
      unsigned long row) const noexcept;
  [[nodiscard]] std::pair<unsigned long, unsigned long> columnsOf(
      std::size_t columnInterval) const noexcept;

private:
  std::vector<FormatRange> _ranges;
  std::vector<std::size_t> _byEndRow;
  std::vector<unsigned long> _rowBorders;  ///< first and end rows of the ranges, ascending
  std::vector<unsigned long> _columnBorders;
};

}  // namespace Zorv::ConditionalFormatters
