// How a column of values follows edits of rows.

#include <algorithm>
#include <iterator>
#include <utility>

#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueColumn.h"

namespace Zorv::ConditionalFormatters {

void ValueColumn::moveRows(LineMoves const& moves) {
  if (moves.isEmpty()) {
    return;
  }
  std::vector<Block> moved;
  moved.reserve(_blocks.size() + moves.getRuns().size());
  bool const keepsOrder = moves.keepOrder();
  // Up to the first block that is cut, or may come to lie elsewhere, sums stay as they are.
  std::size_t same = 0;
  for (Block& block : _blocks) {
    StoredPlace const first = block.first;
    bool const isSame = same == moved.size();
    appendMoved(block, moves, moved);
    bool const isWhole = moved.size() == same + 1 && (keepsOrder || moved.back().first == first);
    same += isSame && isWhole ? 1 : 0;
  }
  if (!keepsOrder) {
    std::ranges::sort(moved, {}, &Block::first);
  }
  _blocks = std::move(moved);
  _knownSums = std::min(_knownSums, same);
  joinSmallBlocks();
}

void ValueColumn::appendMoved(Block& block, LineMoves const& moves, std::vector<Block>& moved) {
  for (std::size_t begin = 0; begin < block.size();) {
    StoredPlace const place = block.placeAt(begin);
    PlaceKey const row = placeOfRow(rowOfStored(place));
    LineRun const& run = moves.runOf(rowOfKey(positionOfPlace(row)));
    PlaceKey const endOfRun = placeKeyOf(rangeOfPlace(row), positionKeyOf(run.end, 0));
    auto const next =
        std::lower_bound(block.offsets.begin() + static_cast<std::ptrdiff_t>(begin),
                         block.offsets.end(), storedOfRow(rowOfPlace(endOfRun)) - block.first);
    auto const end = static_cast<std::size_t>(next - block.offsets.begin());
    StoredPlace const first = place + storedOfRow(*run.shift);
    if (end - begin == block.size()) {
      block.first = first;
      moved.push_back(std::move(block));
      return;
    }
    moved.push_back(slice(block, begin, end, first));
    begin = end;
  }
}

/// Joins neighbours that are small together: edits of rows leave parts of blocks.
void ValueColumn::joinSmallBlocks() {
  constexpr std::size_t mostOfJoined = mostInBlock / 2;
  std::size_t kept = 0;
  for (std::size_t next = 1; next < _blocks.size(); ++next) {
    Block& block = _blocks[kept];
    Block& added = _blocks[next];
    if (block.size() + added.size() <= mostOfJoined && block.reaches(added.last())) {
      auto const gap = static_cast<std::uint32_t>(added.first - block.first);
      std::ranges::transform(added.offsets, std::back_inserter(block.offsets),
                             [gap](std::uint32_t offset) { return offset + gap; });
      block.values.insert(block.values.end(), added.values.begin(), added.values.end());
      _knownSums = std::min(_knownSums, kept + 1);
    } else if (++kept != next) {
      _blocks[kept] = std::move(added);
    }
  }
  _blocks.resize(std::min(_blocks.size(), kept + 1));
  listFirstPlaces();
}

void ValueColumn::listFirstPlaces() {
  _firstPlaces.clear();
  std::ranges::transform(_blocks, std::back_inserter(_firstPlaces), &Block::first);
}

}  // namespace Zorv::ConditionalFormatters
