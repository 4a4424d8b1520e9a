#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_LineMoves.h"
#include "Utils/FloatNumber.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A place in the order in which the cells of some ranges are added up: the index of the range,
/// then the position. A cell of two ranges has two places.
using PlaceKey = std::uint64_t;

/// Requires fewer than 2^30 ranges.
[[nodiscard]] constexpr PlaceKey placeKeyOf(std::size_t range, PositionKey position) noexcept {
  return (PlaceKey{range} << positionKeyBits) + position;
}
[[nodiscard]] constexpr PositionKey positionOfPlace(PlaceKey place) noexcept {
  return place & ((PlaceKey{1} << positionKeyBits) - 1);
}
[[nodiscard]] constexpr std::size_t rangeOfPlace(PlaceKey place) noexcept {
  return place >> positionKeyBits;
}

/// The values of the cells in some ranges, and the sum of their numbers, both of which follow edits
/// of values, rows and columns.
///
/// The sum is that of the numbers added one after the other in the order of their places, to the
/// bit. While all numbers are whole and small enough, no partial sum is rounded, so that a running
/// total is that sum. Otherwise the sum is continued from the first block that an edit touched.
///
/// Twelve bytes for each value. Costs: an edit of a value, a binary search and a move within one
/// block of 1,024 values; an edit of rows, a step for each block; one of columns likewise where
/// ranges move as a whole, and else a step for each value of the range; the sum, constant time, or
/// up to a millisecond for a million values.
class ValueColumn {
public:
  struct Entry {
    PlaceKey place;
    ValueBits value;
  };

  static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

  /// Appends a value. Requires a place after all others.
  void append(PlaceKey place, ValueBits value);
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
    for (Spot spot = find(from); spot.block < _blocks.size(); spot = {spot.block + 1, 0, false}) {
      Block const& block = _blocks[spot.block];
      auto const first = block.values.begin() + static_cast<std::ptrdiff_t>(spot.offset);
      auto const found = std::find_if(first, block.values.end(), test);
      if (found != block.values.end()) {
        auto const offset = static_cast<std::size_t>(found - block.values.begin());
        return Entry{block.placeAt(offset), *found};
      }
    }
    return std::nullopt;
  }

  /// Moves the values to where edits of rows put their cells, in all ranges. Requires that the rows
  /// that are gone have no values.
  void moveRows(LineMoves const& moves);
  /// The same for columns. `ranges`: those of the places, before the edits; values lie in them.
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
    PlaceKey first;                      ///< the first place
    std::vector<std::uint32_t> offsets;  ///< of the places from the first one, ascending
    std::vector<ValueBits> values;
    double sumBefore = 0;  ///< of all numbers in the blocks before, if that is known

    [[nodiscard]] std::size_t size() const noexcept { return offsets.size(); }
    [[nodiscard]] PlaceKey placeAt(std::size_t index) const noexcept {
      return first + offsets[index];
    }
    [[nodiscard]] PlaceKey last() const noexcept { return placeAt(size() - 1); }
    /// True if a place from the first one on can be among those of the block.
    [[nodiscard]] bool reaches(PlaceKey place) const noexcept {
      return rangeOfPlace(place) == rangeOfPlace(first) &&
             place - first <= std::numeric_limits<std::uint32_t>::max();
    }
  };

  /// Where a place is, or would be.
  struct Spot {
    std::size_t block;
    std::size_t offset;
    bool isThere;
  };

  /// Requires that there are blocks.
  [[nodiscard]] Spot find(PlaceKey place) const noexcept;
  [[nodiscard]] ValueBits valueAt(Spot const& spot) const noexcept;
  [[nodiscard]] static bool hasColumns(Block const& block, LineInterval const& columns) noexcept;
  void insertBlock(std::size_t index, Block block);
  void insertAt(Spot spot, PlaceKey place, ValueBits value);
  void eraseAt(Spot const& spot);
  /// Cuts a block in two.
  void cutBlock(std::size_t block, std::size_t index);
  /// The values of a block from one index up to, but without, another one, at places from one on.
  [[nodiscard]] static Block slice(Block const& block, std::size_t begin, std::size_t end,
                                   PlaceKey first);
  /// The block to which a place after all others of some blocks is appended.
  [[nodiscard]] static Block& roomAtEnd(std::vector<Block>& blocks, PlaceKey place);
  /// Moves the values of a block, cut where rows beside each other are moved apart.
  static void appendMoved(Block& block, LineMoves const& moves, std::vector<Block>& moved);
  /// Where columns of a range do not stay together.
  class ColumnsApart;
  void cutLongBlocks();
  void listFirstPlaces();
  void joinSmallBlocks();
  /// Counts a value, or with -1 counts it no longer.
  void countValue(ValueBits value, int sign) noexcept;
  /// Makes the sums before the blocks after this one unknown.
  void touch(std::size_t block) noexcept { _knownSums = std::min(_knownSums, block + 1); }
  [[nodiscard]] double continueSum();

  std::vector<Block> _blocks;  ///< none is empty
  std::vector<PlaceKey> _firstPlaces;
  std::size_t _size = 0;
  std::size_t _numberCount = 0;
  std::size_t _knownSums = 0;  ///< in so many blocks `sumBefore` is known

  // The numbers whose partial sums are not rounded.
  std::size_t _smallCount = 0;
  std::int64_t _smallTotal = 0;
  std::uint64_t _smallMagnitude = 0;  ///< the sum of their absolute values
};

}  // namespace Zorv::ConditionalFormatters
