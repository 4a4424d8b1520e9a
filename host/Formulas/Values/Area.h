#pragma once

#include <cstdint>

#include "Utils/TableRange.h"

namespace Zorv::Formulas {

class TableContext;

/// A rectangle of one table's cells, half-open and never empty. Borrows the table's context.
struct Area {
  TableContext const* table = nullptr;
  std::uint32_t firstRow = 0;
  std::uint32_t firstColumn = 0;
  std::uint32_t endRow = 0;
  std::uint32_t endColumn = 0;

  [[nodiscard]] constexpr std::uint32_t height() const noexcept { return endRow - firstRow; }
  [[nodiscard]] constexpr std::uint32_t width() const noexcept { return endColumn - firstColumn; }
  /// How many positions it has.
  [[nodiscard]] constexpr std::uint64_t size() const noexcept {
    return std::uint64_t{height()} * width();
  }
  [[nodiscard]] constexpr bool isSingleCell() const noexcept {
    return height() == 1 && width() == 1;
  }
  [[nodiscard]] constexpr TableRange toTableRange() const noexcept {
    return {firstRow, firstColumn, endRow, endColumn};
  }
  /// The area of a range that is not empty and lies in the sheet.
  [[nodiscard]] static constexpr Area of(TableContext const& table,
                                         TableRange const& range) noexcept {
    return {&table, static_cast<std::uint32_t>(range.firstRow),
            static_cast<std::uint32_t>(range.firstColumn), static_cast<std::uint32_t>(range.endRow),
            static_cast<std::uint32_t>(range.endColumn)};
  }
  /// One of its cells, by the distance from its first one.
  [[nodiscard]] constexpr Area cellAt(std::uint32_t row, std::uint32_t column) const noexcept {
    return {table, firstRow + row, firstColumn + column, firstRow + row + 1,
            firstColumn + column + 1};
  }

  friend constexpr bool operator==(Area const&, Area const&) noexcept = default;
};

}  // namespace Zorv::Formulas
