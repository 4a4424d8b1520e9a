#include "DOM/CellStore.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace Zorv::DOM {

namespace {

constexpr std::size_t blockCapacity = 256;

}  // namespace

Cell& CellStore::getOrCreate(unsigned long row, unsigned long column) {
  Key const key = makeKey(row, column);
  if (_blocks.empty() || key > _blocks.back().back().key) {
    append({key, {}});
    return _blocks.back().back().cell;
  }
  std::size_t blockIndex = blockOf(key);
  std::size_t offset = offsetIn(_blocks[blockIndex], key);
  if (offset < _blocks[blockIndex].size() && _blocks[blockIndex][offset].key == key) {
    return _blocks[blockIndex][offset].cell;
  }
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
  Block const& block = _blocks[from.block];
  if (key <= block.back().key) {
    return {from.block, offsetIn(block, key)};
  }
  return lowerBound(row, column);
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
  rebuild([&remap](Key key) -> std::optional<Key> {
    auto const row = remap(key >> columnBits);
    return row ? std::optional<Key>(makeKey(*row, key & columnMask)) : std::nullopt;
  });
}

void CellStore::remapColumns(Remap const& remap) {
  rebuild([&remap](Key key) -> std::optional<Key> {
    auto const column = remap(key & columnMask);
    return column ? std::optional<Key>(makeKey(key >> columnBits, *column)) : std::nullopt;
  });
}

std::size_t CellStore::offsetIn(Block const& block, Key key) noexcept {
  auto const found = std::lower_bound(block.begin(), block.end(), key,
                                      [](Entry const& entry, Key k) { return entry.key < k; });
  return static_cast<std::size_t>(found - block.begin());
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

template <class NewKey>
void CellStore::rebuild(NewKey const& newKey) {
  std::vector<Entry> entries;
  entries.reserve(_size);
  for (Block& block : _blocks) {
    for (Entry& entry : block) {
      if (auto const key = newKey(entry.key)) {
        entries.push_back({*key, std::move(entry.cell)});
      }
    }
  }
  std::sort(entries.begin(), entries.end(),
            [](Entry const& a, Entry const& b) { return a.key < b.key; });
  *this = CellStore();
  for (Entry& entry : entries) {
    append(std::move(entry));
  }
}

}  // namespace Zorv::DOM
