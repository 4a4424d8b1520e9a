#pragma once

#include <algorithm>

namespace Zorv {

/// A half-open rectangle of positions, counted from 0: the end row and the end column lie outside.
///
/// A range whose end does not lie behind its first row or column is empty.
struct TableRange {
  unsigned long firstRow = 0;     ///< inside
  unsigned long firstColumn = 0;  ///< inside
  unsigned long endRow = 0;       ///< after the last row
  unsigned long endColumn = 0;    ///< after the last column

  /// True if no position is inside.
  [[nodiscard]] constexpr bool isEmpty() const noexcept {
    return firstRow >= endRow || firstColumn >= endColumn;
  }
  /// True if the position is inside.
  [[nodiscard]] constexpr bool contains(unsigned long row, unsigned long column) const noexcept {
    return firstRow <= row && row < endRow && firstColumn <= column && column < endColumn;
  }

  friend constexpr bool operator==(TableRange const&, TableRange const&) noexcept = default;
};

/// The positions that two ranges share. Empty where there are none; its ends never lie before its
/// first row and column.
[[nodiscard]] constexpr TableRange intersect(TableRange const& a, TableRange const& b) noexcept {
  unsigned long const firstRow = std::max(a.firstRow, b.firstRow);
  unsigned long const firstColumn = std::max(a.firstColumn, b.firstColumn);
  return {firstRow, firstColumn, std::max(firstRow, std::min(a.endRow, b.endRow)),
          std::max(firstColumn, std::min(a.endColumn, b.endColumn))};
}

}  // namespace Zorv
