#include "DOM/CellStore.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <span>
#include <utility>

namespace Zorv::DOM {

namespace {

constexpr std::size_t blockCapacity = 256;

using Entry = CellStore::Entry;
using Block = std::vector<Entry>;

bool isBefore(Entry const& a, Entry const& b) noexcept { return a.key < b.key; }

/// The new columns of all columns. Columns that are removed have none.
class ColumnRemap {
public:
  ColumnRemap(CellStore::Remap const& remap, unsigned long count)
      : _isRemoved(count), _shifts(count) {
    unsigned long column = 0;
    unsigned long least = 0;  // the new column of the next one, if the order stays
    for (CellStore::LineRun const& run : remap) {
      _removes = _removes || !run.shift;
      for (; column < std::min(run.end, count); ++column) {
        _isRemoved[column] = !run.shift;
        _shifts[column] = run.shift.value_or(0);
        unsigned long const moved = column + _shifts[column];
        _keepsOrder = _keepsOrder && (!run.shift || moved >= least);
        least = run.shift ? moved + 1 : least;
      }
    }
  }

  [[nodiscard]] bool keepsOrder() const noexcept { return _keepsOrder; }

  void apply(Block& block) const noexcept {
    if (_removes) {
      std::erase_if(block, [&](Entry const& entry) { return _isRemoved[entry.getColumn()]; });
    }
    for (Entry& entry : block) {
      entry.key += _shifts[entry.getColumn()];
    }
  }

private:
  std::vector<bool> _isRemoved;
  std::vector<unsigned long> _shifts;  ///< modulo 2^64
  bool _removes = false;
  bool _keepsOrder = true;
};

/// Puts cells in order of which one group stands in the wrong place, as after a move of lines;
/// other ones are sorted.
template <class Iterator>
void putInOrder(Iterator begin, Iterator end) {
  auto const second = std::is_sorted_until(begin, end, isBefore);
  if (second == end) {
    return;
  }
  auto const gap = std::upper_bound(begin, second, *second, isBefore);
  auto const rest = std::lower_bound(second, end, *std::prev(second), isBefore);
  std::rotate(gap, second, rest);
  if (!std::is_sorted(begin, end, isBefore)) {
    std::sort(begin, end, isBefore);
  }
}

/// Puts the cells of each row in order. The rows themselves are in order.
class RowSorter {
public:
  /// Takes all memory that sorting needs.
  explicit RowSorter(std::size_t cellCount) {
    constexpr std::size_t mostCellsOfRow = 16'384;
    _row.reserve(std::min(cellCount, mostCellsOfRow));
  }

  void sort(std::vector<Block>& blocks) {
    std::size_t block = 0;
    std::size_t offset = 0;
    while (block < blocks.size()) {
      unsigned long const row = blocks[block][offset].getRow();
      std::size_t const end = findEndOfRow(blocks[block], offset, row);
      bool const goesOn = end == blocks[block].size() && block + 1 < blocks.size() &&
                          blocks[block + 1].front().getRow() == row;
      if (goesOn) {
        sortAcross(blocks, block, offset);
      } else {
        putInOrder(iteratorAt(blocks[block], offset), iteratorAt(blocks[block], end));
        offset = end;
      }
      if (offset == blocks[block].size()) {
        ++block;
        offset = 0;
      }
    }
  }

private:
  static Block::iterator iteratorAt(Block& block, std::size_t offset) noexcept {
    return block.begin() + static_cast<std::ptrdiff_t>(offset);
  }

  static std::size_t findEndOfRow(Block const& block, std::size_t offset,
                                  unsigned long row) noexcept {
    while (offset < block.size() && block[offset].getRow() == row) {
      ++offset;
    }
    return offset;
  }

  /// Sorts a row that begins at a place and goes on in further blocks. Moves the place to the end
  /// of the row.
  void sortAcross(std::vector<Block>& blocks, std::size_t& block, std::size_t& offset) {
    unsigned long const row = blocks[block][offset].getRow();
    _row.clear();
    forEachOfRow(blocks, block, offset, row,
                 [this](Entry& entry) { _row.push_back(std::move(entry)); });
    putInOrder(_row.begin(), _row.end());
    std::size_t count = 0;
    std::size_t const size = _row.size();
    while (count < size) {
      if (offset == blocks[block].size()) {
        ++block;
        offset = 0;
      }
      blocks[block][offset++] = std::move(_row[count++]);
    }
  }

  template <class Visit>
  static void forEachOfRow(std::vector<Block>& blocks, std::size_t block, std::size_t offset,
                           unsigned long row, Visit const& visit) {
    for (; block < blocks.size(); ++block, offset = 0) {
      for (; offset < blocks[block].size(); ++offset) {
        if (blocks[block][offset].getRow() != row) {
          return;
        }
        visit(blocks[block][offset]);
      }
    }
  }

  Block _row;  ///< that goes on in several blocks
};

/// Cuts a block in two, so that no block has cells on both sides of a key.
void cutAt(std::vector<Block>& blocks, std::vector<CellStore::Key>& firstKeys, CellStore::Key key) {
  blocks.reserve(blocks.size() + 1);
  firstKeys.reserve(blocks.size() + 1);
  auto const index = std::ranges::lower_bound(firstKeys, key) - firstKeys.begin();
  if (index == 0 || blocks[static_cast<std::size_t>(index) - 1].back().key < key) {
    return;
  }
  Block& lower = blocks[static_cast<std::size_t>(index) - 1];
  auto const cut =
      std::lower_bound(lower.begin(), lower.end(), key,
                       [](Entry const& entry, CellStore::Key bound) { return entry.key < bound; });
  Block upper;
  upper.reserve(static_cast<std::size_t>(lower.end() - cut));
  upper.assign(std::make_move_iterator(cut), std::make_move_iterator(lower.end()));
  lower.erase(cut, lower.end());
  firstKeys.insert(firstKeys.begin() + index, upper.front().key);
  blocks.insert(blocks.begin() + index, std::move(upper));
}

/// Joins neighbours that fit into one block together, as far as no memory is needed for it.
void joinSmallBlocks(std::vector<Block>& blocks) noexcept {
  std::size_t kept = 0;
  for (std::size_t next = 1; next < blocks.size(); ++next) {
    Block& block = blocks[kept];
    std::size_t const size = block.size() + blocks[next].size();
    if (size <= blockCapacity && size <= block.capacity()) {
      std::ranges::move(blocks[next], std::back_inserter(block));
    } else if (++kept != next) {
      blocks[kept] = std::move(blocks[next]);
    }
  }
  blocks.resize(std::min(blocks.size(), kept + 1));
}

/// Makes the index of first keys again, which does not grow. Gives the number of cells.
std::size_t indexBlocks(std::vector<Block>& blocks,
                        std::vector<CellStore::Key>& firstKeys) noexcept {
  std::erase_if(blocks, [](Block const& block) { return block.empty(); });
  joinSmallBlocks(blocks);
  firstKeys.clear();
  std::size_t count = 0;
  for (Block const& block : blocks) {
    firstKeys.push_back(block.front().key);
    count += block.size();
  }
  return count;
}

/// The offset of the first cell that is not before a key; it is known not to lie before another
/// offset. The cost grows with the logarithm of the distance.
std::size_t searchFrom(std::size_t first, Block const& block, CellStore::Key key) noexcept {
  std::size_t step = 1;
  while (first + step < block.size() && block[first + step].key < key) {
    first += step;
    step *= 2;
  }
  auto const ahead = std::span(block).subspan(first, std::min(step + 1, block.size() - first));
  return first + static_cast<std::size_t>(std::ranges::lower_bound(ahead, key, {}, &Entry::key) -
                                          ahead.begin());
}

}  // namespace

Cell& CellStore::getOrCreate(unsigned long row, unsigned long column) {
  Key const key = makeKey(row, column);
  if (_blocks.empty() || key > _blocks.back().back().key) {
    ++_layoutVersion;
    append({key, {}});
    return _blocks.back().back().cell;
  }
  std::size_t blockIndex = blockOf(key);
  std::size_t offset = offsetIn(_blocks[blockIndex], key);
  if (offset < _blocks[blockIndex].size() && _blocks[blockIndex][offset].key == key) {
    return _blocks[blockIndex][offset].cell;
  }
  ++_layoutVersion;
  blockIndex = makeRoom(blockIndex, key);
  Block& block = _blocks[blockIndex];
  offset = offsetIn(block, key);
  block.insert(block.begin() + static_cast<std::ptrdiff_t>(offset), Entry{key, {}});
  _firstKeys[blockIndex] = block.front().key;
  ++_size;
  return block[offset].cell;
}

void CellStore::remove(unsigned long row, unsigned long column) {
  Key const key = makeKey(row, column);
  Position const position = lowerBound(row, column);
  if (position == end() || entryAt(position).key != key) {
    return;
  }
  ++_layoutVersion;
  auto const blockOffset = static_cast<std::ptrdiff_t>(position.block);
  Block& block = _blocks[position.block];
  block.erase(block.begin() + static_cast<std::ptrdiff_t>(position.offset));
  if (block.empty()) {
    _blocks.erase(_blocks.begin() + blockOffset);
    _firstKeys.erase(_firstKeys.begin() + blockOffset);
  } else {
    _firstKeys[position.block] = block.front().key;
  }
  --_size;
}

Cell const* CellStore::find(unsigned long row, unsigned long column) const noexcept {
  Position const position = lowerBound(row, column);
  bool const found = position != end() && entryAt(position).key == makeKey(row, column);
  return found ? &entryAt(position).cell : nullptr;
}

CellStore::Position CellStore::lowerBound(unsigned long row, unsigned long column) const noexcept {
  return lowerBound(makeKey(row, column));
}

CellStore::Position CellStore::lowerBound(Key key) const noexcept {
  if (_blocks.empty()) {
    return end();
  }
  std::size_t const block = blockOf(key);
  return normalised({block, offsetIn(_blocks[block], key)});
}

CellStore::Position CellStore::searchNear(Position hint, Key key) const noexcept {
  if (isInside(hint)) {
    Position const after = next(hint);
    if (entryAt(hint).key < key && isInside(after) && key <= entryAt(after).key) {
      return after;
    }
    Block const& block = _blocks[hint.block];
    if (block.front().key <= key && key <= block.back().key) {
      return {hint.block, offsetIn(block, key)};
    }
  }
  return lowerBound(key);
}

CellStore::Position CellStore::lowerBoundFrom(Position from, unsigned long row,
                                              unsigned long column) const noexcept {
  Key const key = makeKey(row, column);
  std::size_t const endBlock = std::min(from.block + 2, _blocks.size());
  for (; from.block < endBlock; from = {from.block + 1, 0}) {
    if (key <= _blocks[from.block].back().key) {
      return {from.block, searchFrom(from.offset, _blocks[from.block], key)};
    }
  }
  return lowerBound(key);
}

std::pair<unsigned long, unsigned long> CellStore::getUsedRows() const noexcept {
  if (_blocks.empty()) {
    return {0, 0};
  }
  return {_firstKeys.front() >> columnBits, (_blocks.back().back().key >> columnBits) + 1};
}

TableRange CellStore::getUsedRange() const noexcept {
  if (_blocks.empty()) {
    return {};
  }
  Key firstColumn = std::numeric_limits<Key>::max();
  Key lastColumn = 0;
  for (Block const& block : _blocks) {
    for (Entry const& entry : block) {
      firstColumn = std::min(firstColumn, entry.key & columnMask);
      lastColumn = std::max(lastColumn, entry.key & columnMask);
    }
  }
  auto const [firstRow, endRow] = getUsedRows();
  return {firstRow, firstColumn, endRow, lastColumn + 1};
}

void CellStore::remapRows(Remap const& remap) {
  ++_layoutVersion;
  // Cut so that each block lies in one run. Should memory be short meanwhile, all is as it was.
  for (LineRun const& run : remap) {
    cutAt(_blocks, _firstKeys, makeKey(run.end, 0));
  }
  auto run = remap.begin();
  for (std::size_t index = 0; index < _blocks.size(); ++index) {
    while (_firstKeys[index] >= makeKey(run->end, 0)) {
      ++run;
    }
    Block& block = _blocks[index];
    if (!run->shift) {
      block.clear();
    } else if (*run->shift != 0) {
      for (Entry& entry : block) {
        entry.key += Key{*run->shift} << columnBits;
      }
    }
  }
  std::erase_if(_blocks, [](Block const& block) { return block.empty(); });
  auto const firstKey = [](Block const& block) { return block.front().key; };
  if (!std::ranges::is_sorted(_blocks, {}, firstKey)) {
    std::ranges::sort(_blocks, {}, firstKey);
  }
  _size = indexBlocks(_blocks, _firstKeys);
}

void CellStore::remapColumns(Remap const& remap) {
  ++_layoutVersion;
  ColumnRemap const columns(remap, columnMask + 1);
  RowSorter sorter(columns.keepsOrder() ? 0 : _size);
  for (Block& block : _blocks) {
    columns.apply(block);
  }
  if (!columns.keepsOrder()) {
    std::erase_if(_blocks, [](Block const& block) { return block.empty(); });
    sorter.sort(_blocks);
  }
  _size = indexBlocks(_blocks, _firstKeys);
}

std::size_t CellStore::offsetIn(Block const& block, Key key) noexcept {
  return static_cast<std::size_t>(std::ranges::lower_bound(block, key, {}, &Entry::key) -
                                  block.begin());
}

std::size_t CellStore::blockOf(Key key) const noexcept {
  auto const next = std::upper_bound(_firstKeys.begin(), _firstKeys.end(), key);
  return next == _firstKeys.begin() ? 0 : static_cast<std::size_t>(next - _firstKeys.begin()) - 1;
}

void CellStore::append(Entry entry) {
  if (_blocks.empty() || _blocks.back().size() == blockCapacity) {
    Key const key = entry.key;
    Block block;
    block.push_back(std::move(entry));
    _blocks.push_back(std::move(block));
    _firstKeys.push_back(key);
  } else {
    _blocks.back().push_back(std::move(entry));
  }
  ++_size;
}

/// Splits a full block in two. Returns the index of the block for the key.
std::size_t CellStore::makeRoom(std::size_t blockIndex, Key key) {
  if (_blocks[blockIndex].size() < blockCapacity) {
    return blockIndex;
  }
  Block upper;
  upper.reserve(blockCapacity);
  auto const middle = _blocks[blockIndex].begin() + blockCapacity / 2;
  upper.assign(std::make_move_iterator(middle), std::make_move_iterator(_blocks[blockIndex].end()));
  _blocks[blockIndex].erase(middle, _blocks[blockIndex].end());
  Key const upperKey = upper.front().key;
  auto const at = static_cast<std::ptrdiff_t>(blockIndex) + 1;
  _blocks.insert(_blocks.begin() + at, std::move(upper));
  _firstKeys.insert(_firstKeys.begin() + at, upperKey);
  return key < upperKey ? blockIndex : blockIndex + 1;
}

}  // namespace Zorv::DOM
