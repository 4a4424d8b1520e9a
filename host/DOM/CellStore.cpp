#include "DOM/CellStore.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <span>
#include <utility>

namespace Zorv::DOM {

namespace {

constexpr std::size_t blockCapacity = 256;

using Entry = CellEntry;
using Block = CellBlock;

bool isEmpty(Block const& block) noexcept { return block.size() == 0; }

/// The offset of the first cell that is not before a key.
std::size_t offsetIn(Block const& block, CellStore::Key key) noexcept {
  auto const cells = block.getCells();
  return static_cast<std::size_t>(std::ranges::lower_bound(cells, key, {}, &Entry::key) -
                                  cells.begin());
}

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
      block.removeColumns(_isRemoved);
    }
    block.shiftColumns(_shifts);
  }

private:
  std::vector<bool> _isRemoved;
  std::vector<unsigned long> _shifts;  ///< modulo 2^64
  bool _removes = false;
  bool _keepsOrder = true;
};

/// Puts the cells of rows in order that go on in several blocks. The rows themselves are in order,
/// and so are the cells of each block.
class RowSorter {
public:
  /// Takes all memory that sorting needs.
  explicit RowSorter(std::size_t cellCount) {
    constexpr std::size_t mostCellsOfRow = 16'384;
    _row.reserve(std::min(cellCount, mostCellsOfRow));
  }

  void sort(std::vector<Block>& blocks) {
    for (std::size_t next = 1; next < blocks.size(); ++next) {
      if (blocks[next - 1].getLastKey() > blocks[next].getFirstKey()) {
        sortRow(blocks, next, blocks[next][0].getRow());
      }
    }
  }

private:
  /// Sorts a row that goes on at the begin of a block.
  void sortRow(std::vector<Block>& blocks, std::size_t block, unsigned long row) {
    CellStore::Key const rowKey = Entry::makeKey(row, 0);
    std::size_t offset = 0;
    while (block > 0 && blocks[block - 1].getLastKey() >= rowKey) {
      --block;
      offset = offsetIn(blocks[block], rowKey);
    }
    _row.clear();
    takeRow(blocks, block, offset, row);
    _row.putRowsInOrder();
    std::size_t const size = _row.size();
    for (std::size_t count = 0; count < size; ++count) {
      if (offset == blocks[block].size()) {
        ++block;
        offset = 0;
      }
      blocks[block].replace(offset++, _row.takeOut(count));
    }
  }

  void takeRow(std::vector<Block>& blocks, std::size_t block, std::size_t offset,
               unsigned long row) {
    for (; block < blocks.size(); ++block, offset = 0) {
      for (; offset < blocks[block].size(); ++offset) {
        if (blocks[block][offset].getRow() != row) {
          return;
        }
        _row.append(blocks[block].takeOut(offset));
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
  if (index == 0 || blocks[static_cast<std::size_t>(index) - 1].getLastKey() < key) {
    return;
  }
  Block& lower = blocks[static_cast<std::size_t>(index) - 1];
  Block upper = lower.cutOff(offsetIn(lower, key), 0);
  firstKeys.insert(firstKeys.begin() + index, upper.getFirstKey());
  blocks.insert(blocks.begin() + index, std::move(upper));
}

/// Joins neighbours that fit into one block together, as far as no memory is needed for it.
void joinSmallBlocks(std::vector<Block>& blocks) noexcept {
  std::size_t kept = 0;
  for (std::size_t next = 1; next < blocks.size(); ++next) {
    bool const fits = blocks[kept].size() + blocks[next].size() <= blockCapacity;
    if ((!fits || !blocks[kept].takeAll(blocks[next])) && ++kept != next) {
      blocks[kept] = std::move(blocks[next]);
    }
  }
  blocks.resize(std::min(blocks.size(), kept + 1));
}

/// Makes the index of first keys again, which does not grow. Gives the number of cells.
std::size_t indexBlocks(std::vector<Block>& blocks,
                        std::vector<CellStore::Key>& firstKeys) noexcept {
  std::erase_if(blocks, isEmpty);
  joinSmallBlocks(blocks);
  firstKeys.clear();
  std::size_t count = 0;
  for (Block const& block : blocks) {
    firstKeys.push_back(block.getFirstKey());
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
  auto const ahead = block.getCells().subspan(first, std::min(step + 1, block.size() - first));
  return first + static_cast<std::size_t>(std::ranges::lower_bound(ahead, key, {}, &Entry::key) -
                                          ahead.begin());
}

}  // namespace

Cell& CellStore::getOrCreate(unsigned long row, unsigned long column) {
  Key const key = Entry::makeKey(row, column);
  if (_blocks.empty() || key > _blocks.back().getLastKey()) {
    ++_layoutVersion;
    append(key);
    return _blocks.back().cellAt(_blocks.back().size() - 1);
  }
  std::size_t blockIndex = blockOf(key);
  std::size_t offset = offsetIn(_blocks[blockIndex], key);
  if (offset < _blocks[blockIndex].size() && _blocks[blockIndex][offset].key == key) {
    return _blocks[blockIndex].cellAt(offset);
  }
  ++_layoutVersion;
  blockIndex = makeRoom(blockIndex, key);
  Block& block = _blocks[blockIndex];
  offset = offsetIn(block, key);
  block.insert(offset, key);
  _firstKeys[blockIndex] = block.getFirstKey();
  ++_size;
  return block.cellAt(offset);
}

void CellStore::remove(unsigned long row, unsigned long column) {
  Key const key = Entry::makeKey(row, column);
  Position const position = lowerBound(row, column);
  if (position == end() || entryAt(position).key != key) {
    return;
  }
  ++_layoutVersion;
  auto const blockOffset = static_cast<std::ptrdiff_t>(position.block);
  Block& block = _blocks[position.block];
  block.remove(position.offset);
  if (isEmpty(block)) {
    _blocks.erase(_blocks.begin() + blockOffset);
    _firstKeys.erase(_firstKeys.begin() + blockOffset);
  } else {
    _firstKeys[position.block] = block.getFirstKey();
  }
  --_size;
}

Cell const* CellStore::find(unsigned long row, unsigned long column) const noexcept {
  Position const position = lowerBound(row, column);
  bool const found = position != end() && entryAt(position).key == Entry::makeKey(row, column);
  return found ? &entryAt(position).cell : nullptr;
}

CellStore::Position CellStore::lowerBound(unsigned long row, unsigned long column) const noexcept {
  return lowerBound(Entry::makeKey(row, column));
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
    if (block.getFirstKey() <= key && key <= block.getLastKey()) {
      return {hint.block, offsetIn(block, key)};
    }
  }
  return lowerBound(key);
}

CellStore::Position CellStore::lowerBoundFrom(Position from, unsigned long row,
                                              unsigned long column) const noexcept {
  Key const key = Entry::makeKey(row, column);
  std::size_t const endBlock = std::min(from.block + 2, _blocks.size());
  for (; from.block < endBlock; from = {from.block + 1, 0}) {
    if (key <= _blocks[from.block].getLastKey()) {
      return {from.block, searchFrom(from.offset, _blocks[from.block], key)};
    }
  }
  return lowerBound(key);
}

std::pair<unsigned long, unsigned long> CellStore::getUsedRows() const noexcept {
  if (_blocks.empty()) {
    return {0, 0};
  }
  return {_firstKeys.front() >> Entry::columnBits,
          (_blocks.back().getLastKey() >> Entry::columnBits) + 1};
}

TableRange CellStore::getUsedRange() const noexcept {
  if (_blocks.empty()) {
    return {};
  }
  Key firstColumn = std::numeric_limits<Key>::max();
  Key lastColumn = 0;
  for (Block const& block : _blocks) {
    for (Entry const& entry : block.getCells()) {
      firstColumn = std::min(firstColumn, entry.key & Entry::columnMask);
      lastColumn = std::max(lastColumn, entry.key & Entry::columnMask);
    }
  }
  auto const [firstRow, endRow] = getUsedRows();
  return {firstRow, firstColumn, endRow, lastColumn + 1};
}

void CellStore::remapRows(Remap const& remap) {
  ++_layoutVersion;
  // Cut so that each block lies in one run. Should memory be short meanwhile, all is as it was.
  for (LineRun const& run : remap) {
    cutAt(_blocks, _firstKeys, Entry::makeKey(run.end, 0));
  }
  auto run = remap.begin();
  for (std::size_t index = 0; index < _blocks.size(); ++index) {
    while (_firstKeys[index] >= Entry::makeKey(run->end, 0)) {
      ++run;
    }
    Block& block = _blocks[index];
    if (!run->shift) {
      block.clear();
    } else if (*run->shift != 0) {
      block.shiftRows(*run->shift);
    }
  }
  std::erase_if(_blocks, isEmpty);
  auto const firstKey = [](Block const& block) { return block.getFirstKey(); };
  if (!std::ranges::is_sorted(_blocks, {}, firstKey)) {
    std::ranges::sort(_blocks, {}, firstKey);
  }
  _size = indexBlocks(_blocks, _firstKeys);
}

void CellStore::remapColumns(Remap const& remap) {
  ++_layoutVersion;
  ColumnRemap const columns(remap, Entry::columnMask + 1);
  RowSorter sorter(columns.keepsOrder() ? 0 : _size);
  for (Block& block : _blocks) {
    columns.apply(block);
    if (!columns.keepsOrder()) {
      block.putRowsInOrder();
    }
  }
  if (!columns.keepsOrder()) {
    std::erase_if(_blocks, isEmpty);
    sorter.sort(_blocks);
  }
  _size = indexBlocks(_blocks, _firstKeys);
}

std::size_t CellStore::blockOf(Key key) const noexcept {
  auto const next = std::upper_bound(_firstKeys.begin(), _firstKeys.end(), key);
  return next == _firstKeys.begin() ? 0 : static_cast<std::size_t>(next - _firstKeys.begin()) - 1;
}

void CellStore::append(Key key) {
  if (_blocks.empty() || _blocks.back().size() == blockCapacity) {
    Block block;
    block.append({key, {}});
    _blocks.push_back(std::move(block));
    _firstKeys.push_back(key);
  } else {
    _blocks.back().append({key, {}});
  }
  ++_size;
}

/// Splits a full block in two. Returns the index of the block for the key.
std::size_t CellStore::makeRoom(std::size_t blockIndex, Key key) {
  if (_blocks[blockIndex].size() < blockCapacity) {
    return blockIndex;
  }
  Block upper = _blocks[blockIndex].cutOff(blockCapacity / 2, blockCapacity);
  Key const upperKey = upper.getFirstKey();
  auto const at = static_cast<std::ptrdiff_t>(blockIndex) + 1;
  _blocks.insert(_blocks.begin() + at, std::move(upper));
  _firstKeys.insert(_firstKeys.begin() + at, upperKey);
  return key < upperKey ? blockIndex : blockIndex + 1;
}

}  // namespace Zorv::DOM
