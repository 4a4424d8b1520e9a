// How a column of values follows edits of columns, and the order of values within rows.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueColumn.h"

namespace Zorv::ConditionalFormatters {

void ValueColumn::moveColumns(LineMoves const& moves, std::vector<TableRange> const& ranges) {
  if (moves.isEmpty()) {
    return;
  }
  _places.follow(moves);
  bool const staysInOrder =
      moves.keepOrder() || std::ranges::all_of(ranges, [&](TableRange const& range) {
        return moves.findShift(columnIntervalOf(range)).has_value();
      });
  _isInOrder = _isInOrder && staysInOrder;
}

void ValueColumn::noteOrder(StoredPlace stored) {
  if (!_isInOrder || _places.areInOrder()) {
    return;
  }
  Spot const spot = find(stored);
  Block const& block = _blocks[spot.block];
  PlaceKey const place = _places.placeOf(stored);
  bool const isFirst = spot.block == 0 && spot.offset == 0;
  if (!isFirst) {
    StoredPlace const before =
        spot.offset > 0 ? block.placeAt(spot.offset - 1) : _blocks[spot.block - 1].last();
    _isInOrder = _places.placeOf(before) < place;
  }
  bool const isLast = spot.block + 1 == _blocks.size() && spot.offset + 1 == block.size();
  if (!isLast) {
    StoredPlace const next = spot.offset + 1 < block.size() ? block.placeAt(spot.offset + 1)
                                                            : _firstPlaces[spot.block + 1];
    _isInOrder = _isInOrder && place < _places.placeOf(next);
  }
}

/// Puts the values of blocks in the order of their columns, row by row. Meanwhile the first place
/// of a block is that of column 0 in its first row, so that its offsets tell the columns.
class ValueColumn::RowOrder {
public:
  /// Requires blocks that reach no further than an offset from column 0 can tell.
  RowOrder(std::span<Block> blocks, std::span<StoredColumns const> columns) : _blocks(blocks) {
    for (StoredColumns const& each : columns) {
      std::fill(_distances.begin() + each.first, _distances.begin() + each.end,
                static_cast<std::uint32_t>(each.column) - each.first);
    }
  }

  void restore() {
    for (Block& block : _blocks) {
      // All at once, while the block is in the cache.
      beginAtColumnZero(block);
      renumber(block.offsets);
      sortRows(block);
    }
    sortRowsAcross();
    std::ranges::for_each(_blocks, beginAtFirstValue);
  }

private:
  static void beginAtColumnZero(Block& block) noexcept {
    std::uint32_t const column = static_cast<std::uint32_t>(block.first) & storedColumnMask;
    block.first -= column;
    std::ranges::for_each(block.offsets, [column](std::uint32_t& each) { each += column; });
  }
  static void beginAtFirstValue(Block& block) noexcept {
    std::uint32_t const gap = block.offsets.front();
    block.first += gap;
    std::ranges::for_each(block.offsets, [gap](std::uint32_t& each) { each -= gap; });
  }

  /// Puts the columns where their identities were.
  void renumber(std::vector<std::uint32_t>& offsets) const {
    std::ranges::for_each(
        offsets, [this](std::uint32_t& each) { each += _distances[each & storedColumnMask]; });
  }

  struct Stored {
    StoredPlace place;
    ValueBits value;
  };

  /// Puts the values of each row in order. The rows themselves are in order.
  static void sortRows(Block& block) {
    if (!bringForward(block)) {
      sortAll(block);
    }
  }

  /// Brings values that lie too far behind forward within their row. False if that takes long: too
  /// many columns have changed their order.
  static bool bringForward(Block& block) {
    constexpr std::ptrdiff_t mostSteps = 16 * mostInBlock;
    std::ptrdiff_t steps = 0;
    auto const begin = block.offsets.begin();
    for (auto next = begin + 1; next < block.offsets.end() && steps < mostSteps;) {
      if (*next >= *std::prev(next)) {
        ++next;
        continue;
      }
      auto gap = std::prev(next);
      while (gap != begin && *std::prev(gap) > *next) {
        --gap;
      }
      auto end = next + 1;
      while (end < block.offsets.end() && *std::prev(end) < *end && *end < *gap) {
        ++end;
      }
      steps += end - gap;
      auto const values = block.values.begin();
      std::rotate(values + (gap - begin), values + (next - begin), values + (end - begin));
      next = std::rotate(gap, next, end);
    }
    return steps < mostSteps;
  }

  static void sortAll(Block& block) {
    std::vector<Stored> all;
    for (std::size_t index = 0; index < block.size(); ++index) {
      all.push_back({block.offsets[index], block.values[index]});
    }
    std::ranges::sort(all, {}, &Stored::place);
    for (std::size_t index = 0; index < block.size(); ++index) {
      block.offsets[index] = static_cast<std::uint32_t>(all[index].place);
      block.values[index] = all[index].value;
    }
  }

  /// The same for rows that begin in one block and end in another one.
  void sortRowsAcross() {
    std::vector<Stored> row;
    for (std::size_t block = 0; block + 1 < _blocks.size(); ++block) {
      StoredPlace const rowStart = storedOfRow(rowOfStored(_blocks[block].last()));
      if (_blocks[block + 1].first != rowStart) {
        continue;
      }
      row.clear();
      forEachOfRow(block, rowStart, [&row](Block& each, std::size_t index) {
        row.push_back({each.placeAt(index), each.values[index]});
      });
      std::ranges::sort(row, {}, &Stored::place);
      forEachOfRow(block, rowStart, [entry = row.begin()](Block& each, std::size_t index) mutable {
        each.offsets[index] = static_cast<std::uint32_t>(entry->place - each.first);
        each.values[index] = (entry++)->value;
      });
    }
  }

  /// Calls `visit(block, index)` for each value of a row, which begins in a block.
  template <class Visit>
  void forEachOfRow(std::size_t first, StoredPlace rowStart, Visit visit) {
    for (Block& block : _blocks.subspan(first)) {
      if (block.first > rowStart) {
        return;
      }
      PlaceRow const row = rowOfStored(rowStart - block.first);
      // Not equal_range: clang 14 refuses the subrange of this standard library.
      auto const begin = std::ranges::lower_bound(block.offsets, row, {}, rowOfStored);
      auto const end = std::ranges::upper_bound(block.offsets, row, {}, rowOfStored);
      for (auto index = begin; index != end; ++index) {
        visit(block, static_cast<std::size_t>(index - block.offsets.begin()));
      }
    }
  }

  std::span<Block> _blocks;
  /// From the identities of columns to these, modulo 2^32.
  std::vector<std::uint32_t> _distances = std::vector<std::uint32_t>(storedColumnMask + 1);
};

void ValueColumn::restoreOrder() {
  if (_isInOrder) {
    return;
  }
  cutLongBlocks();
  RowOrder(_blocks, _places.getRuns()).restore();
  _places = StoredPlaces();
  _isInOrder = true;
  _knownSums = 0;
  listFirstPlaces();
}

/// Cuts blocks that reach further than a distance from column 0 can tell.
void ValueColumn::cutLongBlocks() {
  for (std::size_t index = 0; index < _blocks.size(); ++index) {
    std::uint32_t const column =
        static_cast<std::uint32_t>(_blocks[index].first) & storedColumnMask;
    auto const& offsets = _blocks[index].offsets;
    auto const cut = std::ranges::upper_bound(offsets, ~storedColumnMask - column);
    if (cut != offsets.end()) {
      cutBlock(index, static_cast<std::size_t>(cut - offsets.begin()));
    }
  }
}

}  // namespace Zorv::ConditionalFormatters
