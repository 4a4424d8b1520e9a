#pragma once

namespace Zorv {

/// A half-open rectangle of positions, counted from 0: the end row and the end column lie outside.
struct TableRange {
  unsigned long firstRow = 0;
  unsigned long firstColumn = 0;
  unsigned long endRow = 0;
  unsigned long endColumn = 0;

  [[nodiscard]] constexpr bool contains(unsigned long row, unsigned long column) const noexcept {
    return firstRow <= row && row < endRow && firstColumn <= column && column < endColumn;
  }

  friend constexpr bool operator==(TableRange const&, TableRange const&) noexcept = default;
};

}  // namespace Zorv
