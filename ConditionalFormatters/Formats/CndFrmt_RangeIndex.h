#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"

namespace Zorv::ConditionalFormatters {

/// Spatial index from positions to the formats whose ranges hold them.
///
/// The borders of the ranges cut the sheet's rows into row intervals and its columns into column
/// intervals, both with indices from 0: all positions in which a row interval crosses a column
/// interval have the same formats.
///
/// Immutable. Borrows the formats. Threads: may be asked from several threads at once.
class RangeIndex {
public:
  explicit RangeIndex(ConditionalFormatRefs const& formatRefs);
  RangeIndex(RangeIndex const&) = delete;
  RangeIndex& operator=(RangeIndex const&) = delete;
  ~RangeIndex();

  [[nodiscard]] std::size_t rowIntervalOf(unsigned long row) const noexcept;
  [[nodiscard]] std::size_t columnIntervalOf(unsigned long column) const noexcept;
  [[nodiscard]] std::size_t getColumnIntervalCount() const noexcept {
    return _columnBorders.size() + 1;
  }
  /// The half-open bounds of an interval.
  [[nodiscard]] std::pair<unsigned long, unsigned long> rowsOf(
      std::size_t rowInterval) const noexcept;
  [[nodiscard]] std::pair<unsigned long, unsigned long> columnsOf(
      std::size_t columnInterval) const noexcept;

  /// Writes the formats of a crossing, in order of priority and each once. Logarithmic in the
  /// number of ranges, and `n log n` in the number of formats found.
  void findFormats(std::size_t rowInterval, std::size_t columnInterval,
                   FormatIndices& formats) const;

private:
  // Defined in the source file: the tree is slow to compile.
  struct Tree;

  ConditionalFormatRefs const& _formatRefs;
  std::vector<unsigned long> _rowBorders;  ///< first and end rows of the ranges, ascending
  std::vector<unsigned long> _columnBorders;
  std::unique_ptr<Tree const> _tree;
};

/// Finds the formats of one position after the other. Keeps the answers for the current row
/// interval: a walk in row order costs one search for each crossing that it meets.
class FormatCursor {
public:
  /// Borrows the index, which must outlive the cursor.
  explicit FormatCursor(RangeIndex const& index);

  /// The formats whose ranges hold the position, in order of priority. Valid until the next call.
  [[nodiscard]] FormatIndices const& moveTo(unsigned long row, unsigned long column) {
    if (row < _rows.first || row >= _rows.second) {
      enterRowInterval(row);
    }
    if (column < _columns.first || column >= _columns.second) {
      enterColumnInterval(column);
    }
    return *_formats;
  }

private:
  struct Answer {
    bool isKnown = false;
    FormatIndices formats;
  };

  void enterRowInterval(unsigned long row);
  void enterColumnInterval(unsigned long column);

  RangeIndex const& _index;
  std::size_t _rowInterval = 0;
  std::pair<unsigned long, unsigned long> _rows{0, 0};
  std::pair<unsigned long, unsigned long> _columns{0, 0};
  std::vector<Answer> _answers;  ///< of the row interval, by column interval
  std::vector<std::size_t> _knownColumns;
  FormatIndices const* _formats = nullptr;
};

}  // namespace Zorv::ConditionalFormatters
