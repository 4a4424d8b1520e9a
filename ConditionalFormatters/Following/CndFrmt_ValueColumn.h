#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_LineMoves.h"
#include "ConditionalFormatters/Following/CndFrmt_StoredPlaces.h"
#include "Utils/FloatNumber.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The values of the cells in some ranges, and the sum of their numbers, both of which follow edits
/// of values, rows and columns.
///
/// The sum is that of the numbers added one after the other in the order of their places, to the
/// bit. While all numbers are whole and small enough, no partial sum is rounded, so that a running
/// total is that sum. Otherwise the sum is continued from the first block that an edit touched.
///
/// Within a row, values are kept in the order of the identities of their columns, so that edits of
/// columns move none. Where this is not the order of the columns, and a sum depends on the order,
/// the values are put in order at last.
///
/// Twelve bytes for each value. Costs: an edit of a value, a binary search and a move within one
/// block of 1,024 values; an edit of rows, a step for each block; one of columns, a step for each
/// run of columns; the sum, constant time, or up to a millisecond for a million values; to put a
/// million values in order, some milliseconds.
class ValueColumn {
public:
  struct Entry {
    PlaceKey place;
    ValueBits value;
  };

  static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

  /// Sets the value of a place, or removes it: noValueBits. Gives the one that it had.
  ValueBits set(PlaceKey place, ValueBits value);
  [[nodiscard]] ValueBits get(PlaceKey place) const noexcept;

  /// The values in an area of a range, in the order of their places: all of them, or more than
  /// `most`. Takes a step for each value in the rows of the area.
  [[nodiscard]] std::vector<Entry> list(std::size_t range, TableRange const& area,
                                        std::size_t most = unlimited) const;

  /// The first value from a place on for which `test(bits)` is true; none if there is no such
  /// value.
  template <class Test>
  [[nodiscard]] std::optional<Entry> findFirst(PlaceKey from, Test const& test) const {
    if (_blocks.empty()) {
      return std::nullopt;
    }
    Spot spot = find(storedOfRow(rowOfPlace(from)));
    for (; spot.block < _blocks.size(); spot = {spot.block + 1, 0, false}) {
      Block const& block = _blocks[spot.block];
      for (auto value = block.values.begin() + static_cast<std::ptrdiff_t>(spot.offset);
           (value = std::find_if(value, block.values.end(), test)) != block.values.end(); ++value) {
        auto const offset = static_cast<std::size_t>(value - block.values.begin());
        if (PlaceKey const place = _places.placeOf(block.placeAt(offset)); place >= from) {
          return findFirstOfRow(std::max(from, placeOfRow(rowOfPlace(place))), test);
        }
      }
    }
    return std::nullopt;
  }

  /// Moves the values to where edits of rows put their cells, in all ranges. Requires that the rows
  /// that are gone have no values.
  void moveRows(LineMoves const& moves);
  /// The same for columns. `ranges`: those of the places, before the edits; values lie in them.
  /// Requires that CellIdentities that are as old can follow the edits.
  void moveColumns(LineMoves const& moves, std::vector<TableRange> const& ranges);

  [[nodiscard]] std::size_t size() const noexcept { return _size; }
  [[nodiscard]] std::size_t countNumbers() const noexcept { return _numberCount; }
  /// NaN where a number is NaN or infinities of both signs meet.
  [[nodiscard]] FloatNumber sum();

  /// About how many bytes it takes.
  [[nodiscard]] std::size_t countBytes() const noexcept;

private:
  static constexpr std::size_t mostInBlock = 1024;

  /// Neighbouring values of one range.
  struct Block {
    StoredPlace first;                   ///< the first place
    std::vector<std::uint32_t> offsets;  ///< of the places from the first one, ascending
    std::vector<ValueBits> values;
    double sumBefore = 0;  ///< of all numbers in the blocks before, if that is known

    [[nodiscard]] std::size_t size() const noexcept { return offsets.size(); }
    [[nodiscard]] StoredPlace placeAt(std::size_t index) const noexcept {
      return first + offsets[index];
    }
    [[nodiscard]] StoredPlace last() const noexcept { return placeAt(size() - 1); }
    /// True if a place from the first one on can be among those of the block.
    [[nodiscard]] bool reaches(StoredPlace place) const noexcept {
      return rangeOfStored(place) == rangeOfStored(first) &&
             place - first <= std::numeric_limits<std::uint32_t>::max();
    }
  };

  /// Where a place is, or would be.
  struct Spot {
    std::size_t block;
    std::size_t offset;
    bool isThere;
  };

  /// The first value of a row from a place on that passes a test. Requires that there is one.
  template <class Test>
  [[nodiscard]] Entry findFirstOfRow(PlaceKey from, Test const& test) const {
    unsigned long const row = rowOfKey(positionOfPlace(from));
    unsigned long const column = columnOfKey(positionOfPlace(from));
    auto const entries = list(rangeOfPlace(from), {row, column, row + 1, DOM::Table::columnCount});
    return *std::ranges::find_if(entries, test, &Entry::value);
  }

  /// Requires that there are blocks.
  [[nodiscard]] Spot find(StoredPlace place) const noexcept;
  [[nodiscard]] ValueBits valueAt(Spot const& spot) const noexcept;
  [[nodiscard]] static bool mayHaveColumns(Block const& block,
                                           std::span<StoredColumns const> columns);
  /// Requires that the place lies after all others.
  void append(StoredPlace place, ValueBits value);
  void insertBlock(std::size_t index, Block block);
  void insertAt(Spot spot, StoredPlace place, ValueBits value);
  void eraseAt(Spot const& spot);
  /// Cuts a block in two.
  void cutBlock(std::size_t block, std::size_t index);
  /// The values of a block from one index up to, but without, another one, at places from one on.
  [[nodiscard]] static Block slice(Block const& block, std::size_t begin, std::size_t end,
                                   StoredPlace first);
  /// The block to which a place after all others of some blocks is appended.
  [[nodiscard]] static Block& roomAtEnd(std::vector<Block>& blocks, StoredPlace place);
  /// Moves the values of a block, cut where rows beside each other are moved apart.
  static void appendMoved(Block& block, LineMoves const& moves, std::vector<Block>& moved);
  void listFirstPlaces();
  void joinSmallBlocks();
  /// Notes whether a new value stands between the values before and behind it.
  void noteOrder(StoredPlace place);
  /// Puts the values in the order of their columns.
  void restoreOrder();
  void cutLongBlocks();
  class RowOrder;
  /// Counts a value, or with -1 counts it no longer.
  void countValue(ValueBits value, int sign) noexcept;
  /// Makes the sums before the blocks after this one unknown.
  void touch(std::size_t block) noexcept { _knownSums = std::min(_knownSums, block + 1); }
  [[nodiscard]] double continueSum();

  StoredPlaces _places;
  bool _isInOrder = true;      ///< stored places ascend with the places themselves
  std::vector<Block> _blocks;  ///< none is empty
  std::vector<StoredPlace> _firstPlaces;
  std::size_t _size = 0;
  std::size_t _numberCount = 0;
  std::size_t _knownSums = 0;  ///< in so many blocks `sumBefore` is known

  // The numbers whose partial sums are not rounded.
  std::size_t _smallCount = 0;
  std::int64_t _smallTotal = 0;
  std::uint64_t _smallMagnitude = 0;  ///< the sum of their absolute values
};

}  // namespace Zorv::ConditionalFormatters
