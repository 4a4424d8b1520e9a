#pragma once

#include <cstddef>

#include "DOM/Table.h"
#include "Utils/Export.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {

/// A range cut into blocks of whole rows, each of some thousand cells: the unit of work that
/// threads share out among themselves.
///
/// Block indexes count from 0, from the top. The blocks follow each other without a gap and have
/// the columns of the range; a row is never cut. Value type; all operations take constant time.
class ZORV_HOST_EXPORT RowBlocks {
public:
  /// Cells in a block of short rows of equal length. Large enough to outweigh the cost of handing
  /// a block to a thread, small enough for an even split.
  static constexpr unsigned long cellsPerBlock = 4096;

  // `most`: the cells in a block, if not as many as usual; above 0.

  /// Blocks for a walk over all positions of a range.
  [[nodiscard]] static RowBlocks ofPositions(TableRange const& range,
                                             unsigned long most = cellsPerBlock) noexcept;
  /// Blocks for a walk over the existing cells of a range. They leave out the rows above the
  /// table's first cell and below its last.
  [[nodiscard]] static RowBlocks ofCells(Table const& table, TableRange const& range,
                                         unsigned long most = cellsPerBlock) noexcept;
  /// Blocks for a walk that meets so many cells in each row of a range.
  [[nodiscard]] static RowBlocks ofRows(TableRange const& range, unsigned long cellsPerRow,
                                        unsigned long most = cellsPerBlock) noexcept;

  /// How many blocks there are.
  [[nodiscard]] std::size_t count() const noexcept;
  /// The block at an index below count().
  [[nodiscard]] TableRange at(std::size_t index) const noexcept;

private:
  RowBlocks(TableRange const& range, unsigned long cellsPerRow, unsigned long most) noexcept;

  TableRange _range;
  unsigned long _height;  ///< of a block, in rows
};

}  // namespace Zorv::DOM
