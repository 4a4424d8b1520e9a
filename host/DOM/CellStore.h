#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "DOM/Cell.h"
#include "DOM/CellBlock.h"
#include "DOM/ColumnSet.h"
#include "Utils/Export.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {

/// Sparse store of the existing cells, ordered by row, then by column.
///
/// Cells are stored in blocks of bounded size; the first key of each block is indexed. A look-up is
/// two binary searches, an insertion moves at most one block, and appending in order takes constant
/// time. Threads: const members may run concurrently.
class ZORV_HOST_EXPORT CellStore {
public:
  /// Row and column in one integer, in the order of the cells.
  using Key = CellEntry::Key;
  /// Cell and its position.
  using Entry = CellEntry;

  /// Place of a cell in the store; valid until the store changes.
  struct Position {
    std::size_t block = 0;   ///< index of a block
    std::size_t offset = 0;  ///< index in the block

    friend bool operator==(Position const&, Position const&) noexcept = default;
  };

  /// Neighbouring rows or columns that an edit moves by one distance, or removes.
  struct LineRun {
    unsigned long end;                   ///< the line after the last one
    std::optional<unsigned long> shift;  ///< modulo 2^64; none: the lines are removed
  };
  /// Where an edit puts all lines of an axis: runs of neighbours, each of which begins where the
  /// one before ends. Lines after the last run must have no cells. No two lines go to one place.
  using Remap = std::vector<LineRun>;

  /// The number of cells.
  [[nodiscard]] std::size_t size() const noexcept { return _size; }

  /// The cell at a row and a column; created if there is none.
  Cell& getOrCreate(unsigned long row, unsigned long column);
  /// Removes a cell, if it is there.
  void remove(unsigned long row, unsigned long column);
  /// The cell at a row and a column, or null.
  [[nodiscard]] Cell const* find(unsigned long row, unsigned long column) const noexcept;

  /// Look-up for a cell that is likely to be at or near `hint`: constant time for the cell at the
  /// hint and the next one, one binary search for another one of the same block. Any position is a
  /// valid hint, also one of an earlier state of the store. Sets the hint to the first cell that is
  /// not before the row and the column.
  [[nodiscard]] Cell const* find(unsigned long row, unsigned long column,
                                 Position& hint) const noexcept {
    Key const key = Entry::makeKey(row, column);
    if (!isInside(hint) || entryAt(hint).key != key) {
      hint = searchNear(hint, key);
    }
    return isInside(hint) && entryAt(hint).key == key ? &entryAt(hint).cell : nullptr;
  }

  /// The first cell that is not before a row and a column, in the order of the cells.
  [[nodiscard]] Position lowerBound(unsigned long row, unsigned long column) const noexcept;
  /// lowerBound() for a result that is known not to lie before `from`. The cost grows with the
  /// logarithm of the distance.
  [[nodiscard]] Position lowerBoundFrom(Position from, unsigned long row,
                                        unsigned long column) const noexcept;
  /// The place after the last cell.
  [[nodiscard]] Position end() const noexcept { return {_blocks.size(), 0}; }
  /// The place of the next cell.
  [[nodiscard]] Position next(Position position) const noexcept {
    return normalised({position.block, position.offset + 1});
  }

  /// The cell at a place that is not the end.
  [[nodiscard]] Entry const& entryAt(Position position) const noexcept {
    return _blocks[position.block][position.offset];
  }
  /// The cells from a position to the end of its block; empty only at the end of the store.
  [[nodiscard]] std::span<Entry const> getStretch(Position position) const noexcept {
    return position.block < _blocks.size()
               ? _blocks[position.block].getCells().subspan(position.offset)
               : std::span<Entry const>();
  }

  /// A place, if its block may have cells of some columns, or begins not before `endRow`; otherwise
  /// the begin of the next such block, or the end. The cost grows with the blocks passed over.
  [[nodiscard]] Position skipBlocks(Position from, ColumnSet columns,
                                    unsigned long endRow) const noexcept {
    while (from.block < _blocks.size() && !_blocks[from.block].getColumns().mayMeet(columns) &&
           _firstKeys[from.block] >> Entry::columnBits < endRow) {
      from = {from.block + 1, 0};
    }
    return from;
  }

  /// The first row with a cell and the row after the last one. Constant time.
  [[nodiscard]] std::pair<unsigned long, unsigned long> getUsedRows() const noexcept;
  /// The smallest range that contains every cell; empty without cells. Linear.
  [[nodiscard]] TableRange getUsedRange() const noexcept;

  /// Changes the row of every cell. Linear in the cells of rows that move.
  void remapRows(Remap const& remap);
  /// The same for columns. Linear, plus a sort where the order of columns changes.
  void remapColumns(Remap const& remap);

  /// A number that is another one after each change that may move cells in memory, or destroys
  /// them: what was borrowed from the cells before is lost then.
  [[nodiscard]] std::uint64_t getLayoutVersion() const noexcept { return _layoutVersion; }

private:
  using Block = CellBlock;

  [[nodiscard]] Position lowerBound(Key key) const noexcept;
  [[nodiscard]] std::size_t blockOf(Key key) const noexcept;
  [[nodiscard]] Position normalised(Position position) const noexcept {
    bool const inside = position.offset < _blocks[position.block].size();
    return inside ? position : Position{position.block + 1, 0};
  }
  [[nodiscard]] bool isInside(Position position) const noexcept {
    return position.block < _blocks.size() && position.offset < _blocks[position.block].size();
  }
  /// The first cell that is not before a key; searches near a position first.
  [[nodiscard]] Position searchNear(Position hint, Key key) const noexcept;
  void append(Key key);
  std::size_t makeRoom(std::size_t blockIndex, Key key);

  std::vector<Block> _blocks;   ///< none is empty
  std::vector<Key> _firstKeys;  ///< first key of each block
  std::size_t _size = 0;
  std::uint64_t _layoutVersion = 0;
};

}  // namespace Zorv::DOM
