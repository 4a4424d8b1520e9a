#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"

namespace Zorv::ConditionalFormatters {

/// A format by its place among its table's formats, which is its priority, from 0.
using FormatNumber = std::uint32_t;
using FormatNumbers = std::vector<FormatNumber>;

/// Which formats' ranges hold a position, without trying each: years of copying and pasting leave
/// thousands of ranges.
///
/// Where the ranges begin and end parts the sheet's rows into bands and its columns into slabs,
/// both numbered from 0: all positions in which a band crosses a slab have the same formats.
///
/// Immutable. Threads: may be asked from several threads at once.
class RangeIndex {
public:
  explicit RangeIndex(ConditionalFormatRefs const& formatRefs);
  RangeIndex(RangeIndex const&) = delete;
  RangeIndex& operator=(RangeIndex const&) = delete;
  ~RangeIndex();

  [[nodiscard]] std::size_t bandOf(unsigned long row) const noexcept;
  [[nodiscard]] std::size_t slabOf(unsigned long column) const noexcept;
  [[nodiscard]] std::size_t getSlabCount() const noexcept { return _columnBorders.size() + 1; }
  /// The row or column at which a band or slab begins, and the one at which the next begins.
  [[nodiscard]] std::pair<unsigned long, unsigned long> rowsOf(std::size_t band) const noexcept;
  [[nodiscard]] std::pair<unsigned long, unsigned long> columnsOf(std::size_t slab) const noexcept;

  /// Writes the formats of a band in a slab, in order of priority and each once. Logarithmic in the
  /// number of ranges, and `n log n` in the number of those found.
  void findFormats(std::size_t band, std::size_t slab, FormatNumbers& formats) const;

  /// Whether a range of the format holds a position. Logarithmic in the number of ranges, and
  /// linear in the number of those that hold it.
  [[nodiscard]] bool holds(FormatNumber format, unsigned long row, unsigned long column) const;

private:
  // Defined with the code: the library behind it takes long to compile.
  struct Tree;

  std::vector<unsigned long> _rowBorders;  ///< ascending: where a range begins or has ended
  std::vector<unsigned long> _columnBorders;
  std::unique_ptr<Tree const> _tree;
};

/// Asks a RangeIndex for the formats of one position after the other, and remembers the answers of
/// the band that it is in: a walk in row order costs one search for each crossing of a band and a
/// slab that it meets.
class FormatCursor {
public:
  /// Borrows the index, which must outlive the cursor.
  explicit FormatCursor(RangeIndex const& index);

  /// The formats of which a range holds the position, in order of priority; valid until the next
  /// call.
  [[nodiscard]] FormatNumbers const& moveTo(unsigned long row, unsigned long column) {
    if (row < _rows.first || row >= _rows.second) {
      enterBand(row);
    }
    if (column < _columns.first || column >= _columns.second) {
      enterSlab(column);
    }
    return *_formats;
  }

private:
  struct Answer {
    bool isKnown = false;
    FormatNumbers formats;
  };

  void enterBand(unsigned long row);
  void enterSlab(unsigned long column);

  RangeIndex const& _index;
  std::size_t _band = 0;
  std::pair<unsigned long, unsigned long> _rows{0, 0};
  std::pair<unsigned long, unsigned long> _columns{0, 0};
  std::vector<Answer> _answers;  ///< of the band, by slab
  std::vector<std::size_t> _knownSlabs;
  FormatNumbers const* _formats = nullptr;
};

}  // namespace Zorv::ConditionalFormatters
