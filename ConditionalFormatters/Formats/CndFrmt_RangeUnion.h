#pragma once

#include <cstdint>
#include <vector>

#include "ConditionalFormatters/Formats/CndFrmt_ColumnCoverage.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The positions that lie in at least one of some ranges.
///
/// Immutable. Cost: making it takes `n log n` for n ranges, and its parts.
class RangeUnion {
public:
  explicit RangeUnion(std::vector<TableRange> const& ranges);

  /// Logarithmic in the number of parts.
  [[nodiscard]] bool contains(unsigned long row, unsigned long column) const noexcept;

  /// Ranges that hold every position, and at most seven other positions for each. They do not
  /// overlap; visiting one after the other, row by row, each row from the left, visits the union in
  /// that order.
  [[nodiscard]] std::vector<TableRange> cover() const;

private:
  /// Neighbouring rows in which the same columns belong to the union.
  struct Band {
    unsigned long firstRow;
    unsigned long endRow;
    unsigned long width;                  ///< number of columns
    std::vector<ColumnInterval> columns;  ///< ascending, not touching, at least one

    [[nodiscard]] std::uint64_t size() const noexcept { return width * (endRow - firstRow); }
    [[nodiscard]] TableRange getBounds() const noexcept {
      return {firstRow, columns.front().first, endRow, columns.back().end};
    }
    /// Adds each interval of each row.
    void appendRows(std::vector<TableRange>& ranges) const;
  };

  std::vector<Band> _bands;  ///< ascending
};

/// The number of positions in the union of some ranges. `n log n` for n ranges; needs no memory for
/// the parts of the union.
[[nodiscard]] std::uint64_t countPositions(std::vector<TableRange> const& ranges);

/// The parts of ranges that lie inside bounds, without empty ones.
[[nodiscard]] std::vector<TableRange> clip(std::vector<TableRange> const& ranges,
                                           TableRange const& bounds);

}  // namespace Zorv::ConditionalFormatters
