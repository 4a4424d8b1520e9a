// How a column of values follows edits of columns.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueColumn.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Distances of places from one in column 0, modulo 2^32. The low bits are the column.
using Distances = std::vector<std::uint32_t>;

/// Moves places along their rows. A loop for each run of columns becomes vector instructions, and
/// takes a fraction of a look-up of each column.
void shiftColumns(Distances& distances, LineMoves const& moves) {
  Distances const before = distances;
  for (LineRun const& run : moves.getRuns()) {
    auto const shift = static_cast<std::uint32_t>(run.shift.value_or(0));
    auto const first = static_cast<std::uint32_t>(run.first);
    auto const count = static_cast<std::uint32_t>(run.end - run.first);
    for (std::size_t index = 0; shift != 0 && index < distances.size(); ++index) {
      bool const isInRun = (before[index] & columnKeyMask) - first < count;
      distances[index] += isInRun ? shift : 0;
    }
  }
}

}  // namespace

/// The blocks of a range whose columns an edit moves apart. Meanwhile the first place of a block is
/// that of column 0 in its first row, so that its offsets tell the columns.
class ValueColumn::ColumnsApart {
public:
  explicit ColumnsApart(std::span<Block> blocks) noexcept : _blocks(blocks) {}

  void move(LineMoves const& moves) {
    bool const keepsOrder = moves.keepOrder();
    for (Block& block : _blocks) {
      beginAtColumnZero(block);
      shiftColumns(block.offsets, moves);
      // All at once, while the block is in the cache.
      if (keepsOrder) {
        beginAtFirstValue(block);
      } else {
        sortRows(block);
      }
    }
    if (!keepsOrder) {
      sortRowsAcross();
      std::ranges::for_each(_blocks, beginAtFirstValue);
    }
  }

private:
  static void beginAtColumnZero(Block& block) noexcept {
    std::uint32_t const column = static_cast<std::uint32_t>(block.first) & columnKeyMask;
    block.first -= column;
    std::ranges::for_each(block.offsets, [column](std::uint32_t& each) { each += column; });
  }
  static void beginAtFirstValue(Block& block) noexcept {
    std::uint32_t const gap = block.offsets.front();
    block.first += gap;
    std::ranges::for_each(block.offsets, [gap](std::uint32_t& each) { each -= gap; });
  }

  /// Puts the values of each row in order. The rows themselves are in order: values that lie too
  /// far behind are only to be brought forward within their row.
  static void sortRows(Block& block) {
    auto const begin = block.offsets.begin();
    for (auto next = begin + 1; next < block.offsets.end();) {
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
      auto const values = block.values.begin();
      std::rotate(values + (gap - begin), values + (next - begin), values + (end - begin));
      next = std::rotate(gap, next, end);
    }
  }

  /// The same for rows that begin in one block and end in another one.
  void sortRowsAcross() {
    std::vector<Entry> row;
    for (std::size_t block = 0; block + 1 < _blocks.size(); ++block) {
      PlaceKey const last = _blocks[block].last();
      PlaceKey const rowStart = last - columnOfKey(last);
      if (_blocks[block + 1].first != rowStart) {
        continue;
      }
      row.clear();
      forEachOfRow(block, rowStart, [&row](Block& each, std::size_t index) {
        row.push_back({each.placeAt(index), each.values[index]});
      });
      std::ranges::sort(row, {}, &Entry::place);
      forEachOfRow(block, rowStart, [entry = row.begin()](Block& each, std::size_t index) mutable {
        each.offsets[index] = static_cast<std::uint32_t>(entry->place - each.first);
        each.values[index] = (entry++)->value;
      });
    }
  }

  /// Calls `visit(block, index)` for each value of a row, which begins in a block.
  template <class Visit>
  void forEachOfRow(std::size_t first, PlaceKey rowStart, Visit visit) {
    for (Block& block : _blocks.subspan(first)) {
      if (block.first > rowStart) {
        return;
      }
      auto const rowOf = [](std::uint32_t offset) { return PlaceKey{offset} >> columnKeyBits; };
      PlaceKey const row = (rowStart - block.first) >> columnKeyBits;
      // Not equal_range: clang 14 refuses the subrange of this standard library.
      auto const begin = std::ranges::lower_bound(block.offsets, row, {}, rowOf);
      auto const end = std::ranges::upper_bound(block.offsets, row, {}, rowOf);
      for (auto index = begin; index != end; ++index) {
        visit(block, static_cast<std::size_t>(index - block.offsets.begin()));
      }
    }
  }

  std::span<Block> _blocks;
};

void ValueColumn::moveColumns(LineMoves const& moves, std::vector<TableRange> const& ranges) {
  if (moves.isEmpty()) {
    return;
  }
  if (!moves.keepOrder()) {
    cutLongBlocks();
  }
  for (auto block = _blocks.begin(); block != _blocks.end();) {
    std::size_t const range = rangeOfPlace(block->first);
    auto const end = std::find_if(block, _blocks.end(), [range](Block const& each) {
      return rangeOfPlace(each.first) != range;
    });
    if (auto const shift = moves.findShift(columnIntervalOf(ranges[range]))) {
      std::for_each(block, end, [&](Block& each) { each.first += *shift; });
    } else {
      ColumnsApart({block, end}).move(moves);
      if (!moves.keepOrder()) {
        touch(static_cast<std::size_t>(block - _blocks.begin()));
      }
    }
    block = end;
  }
  listFirstPlaces();
}

/// Cuts blocks that reach further than a distance from column 0 can tell.
void ValueColumn::cutLongBlocks() {
  for (std::size_t index = 0; index < _blocks.size(); ++index) {
    std::uint32_t const column = static_cast<std::uint32_t>(_blocks[index].first) & columnKeyMask;
    auto const& offsets = _blocks[index].offsets;
    auto const cut = std::ranges::upper_bound(offsets, ~column);
    if (cut != offsets.end()) {
      touch(index);
      cutBlock(index, static_cast<std::size_t>(cut - offsets.begin()));
    }
  }
}

}  // namespace Zorv::ConditionalFormatters
