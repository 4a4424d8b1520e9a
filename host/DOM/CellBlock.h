#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "DOM/Cell.h"
#include "DOM/ColumnSet.h"
#include "Utils/Export.h"

namespace Zorv::DOM {

/// Existing cell and its position.
struct CellEntry {
  /// Row and column in one integer, in the order of the cells.
  using Key = std::uint64_t;

  static constexpr unsigned columnBits = 14;                     ///< for 16,384 columns
  static constexpr Key columnMask = (Key{1} << columnBits) - 1;  ///< of a key's column

  /// The key of a row and a column of the sheet.
  [[nodiscard]] static Key makeKey(unsigned long row, unsigned long column) noexcept {
    return (Key{row} << columnBits) | column;
  }

  Key key;    ///< the position
  Cell cell;  ///< the cell there

  /// The row, from 0.
  [[nodiscard]] unsigned long getRow() const noexcept { return key >> columnBits; }
  /// The column, from 0.
  [[nodiscard]] unsigned long getColumn() const noexcept { return key & columnMask; }
};

/// Neighbouring cells of a store, ordered by row, then by column; and a set that contains their
/// columns, by which a walk passes over cells that it does not look for.
///
/// Offsets count the cells from 0. Value type. Threads: const members may run concurrently.
class ZORV_HOST_EXPORT CellBlock {
public:
  /// The cells, until the block changes.
  [[nodiscard]] std::span<CellEntry const> getCells() const noexcept { return _cells; }
  /// A set that contains the columns of all cells; more than these where cells were removed.
  [[nodiscard]] ColumnSet getColumns() const noexcept { return _columns; }
  /// The number of cells.
  [[nodiscard]] std::size_t size() const noexcept { return _cells.size(); }
  /// The cell at an offset below size().
  [[nodiscard]] CellEntry const& operator[](std::size_t offset) const noexcept {
    return _cells[offset];
  }
  /// The first key. Requires a cell.
  [[nodiscard]] CellEntry::Key getFirstKey() const noexcept { return _cells.front().key; }
  /// The last key. Requires a cell.
  [[nodiscard]] CellEntry::Key getLastKey() const noexcept { return _cells.back().key; }

  /// The cell at an offset, to be written.
  [[nodiscard]] Cell& cellAt(std::size_t offset) noexcept { return _cells[offset].cell; }
  /// Takes memory for some cells in all.
  void reserve(std::size_t count) { _cells.reserve(count); }
  /// Adds a cell after the last one.
  void append(CellEntry&& entry) {
    _cells.push_back(std::move(entry));
    _columns.add(_cells.back().getColumn());
  }
  /// Inserts an empty cell before the one at an offset.
  void insert(std::size_t offset, CellEntry::Key key);
  /// Removes the cell at an offset.
  void remove(std::size_t offset) noexcept;
  /// Removes all cells.
  void clear() noexcept;
  /// Moves the cells from an offset on into a new block with room for so many cells as `capacity`
  /// says, or for all of them. Changes nothing where it throws.
  [[nodiscard]] CellBlock cutOff(std::size_t offset, std::size_t capacity);
  /// Takes all cells of the block that follows, if no memory is needed for it. Tells if it did.
  bool takeAll(CellBlock& next) noexcept;

  /// Adds a number of rows, modulo 2^64, to each cell's row.
  void shiftRows(unsigned long shift) noexcept;
  /// Removes the cells of the columns that are marked.
  void removeColumns(std::vector<bool> const& isRemoved) noexcept;
  /// Adds to each cell's column the number that is given for the column, modulo 2^64. The order of
  /// the cells stays as it is; see putRowsInOrder().
  void shiftColumns(std::span<unsigned long const> shifts) noexcept;

  /// Puts the cells of each row in order. Requires that the rows are. Quick where one group of a
  /// row's cells stands in the wrong place, as after a move of columns.
  void putRowsInOrder() noexcept;
  /// Takes the cell at an offset away, but for its key. A later replace() fills the place.
  [[nodiscard]] CellEntry takeOut(std::size_t offset) noexcept { return std::move(_cells[offset]); }
  /// Puts another cell in the place of the one at an offset.
  void replace(std::size_t offset, CellEntry&& entry) noexcept {
    _columns.add(entry.getColumn());
    _cells[offset] = std::move(entry);
  }

private:
  void findColumns() noexcept;

  std::vector<CellEntry> _cells;
  ColumnSet _columns;
};

}  // namespace Zorv::DOM
