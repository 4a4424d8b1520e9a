#pragma once

#include <cstddef>

#include "DOM/Table.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A range cut into bands of whole rows, each of some thousand cells: what several threads share
/// out among themselves. The bands are numbered from 0, from the top.
class RowBands {
public:
  /// How many cells a band has where rows are alike and short. Enough work to outweigh handing a
  /// band over, and little enough to share out evenly.
  static constexpr unsigned long usualSize = 4096;

  /// For a walk over all positions of a range.
  [[nodiscard]] static RowBands ofPositions(TableRange const& range) noexcept;
  /// For a walk over the existing cells of a range: above the first of the table and below the last
  /// are no bands.
  [[nodiscard]] static RowBands ofCells(DOM::Table const& table, TableRange const& range) noexcept;

  [[nodiscard]] std::size_t count() const noexcept;
  [[nodiscard]] TableRange at(std::size_t number) const noexcept;

private:
  RowBands(TableRange const& range, unsigned long cellsInRow) noexcept;

  TableRange _range;
  unsigned long _height;  ///< of a band
};

}  // namespace Zorv::ConditionalFormatters
