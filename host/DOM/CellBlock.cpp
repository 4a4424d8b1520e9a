#include "DOM/CellBlock.h"

#include <algorithm>
#include <iterator>

namespace Zorv::DOM {

namespace {

bool isBefore(CellEntry const& a, CellEntry const& b) noexcept { return a.key < b.key; }

std::ptrdiff_t toDifference(std::size_t offset) noexcept {
  return static_cast<std::ptrdiff_t>(offset);
}

using EntryIt = std::vector<CellEntry>::iterator;

/// Rotates one group of cells to its place; sorts where that is not enough.
void putInOrder(EntryIt first, EntryIt end) noexcept {
  auto const second = std::is_sorted_until(first, end, isBefore);
  if (second == end) {
    return;
  }
  auto const gap = std::upper_bound(first, second, *second, isBefore);
  auto const rest = std::lower_bound(second, end, *std::prev(second), isBefore);
  std::rotate(gap, second, rest);
  if (!std::is_sorted(first, end, isBefore)) {
    std::sort(first, end, isBefore);
  }
}

}  // namespace

void CellBlock::insert(std::size_t offset, CellEntry::Key key) {
  _cells.insert(_cells.begin() + toDifference(offset), CellEntry{key, {}});
  _columns.add(_cells[offset].getColumn());
}

void CellBlock::remove(std::size_t offset) noexcept {
  _cells.erase(_cells.begin() + toDifference(offset));
}

void CellBlock::clear() noexcept {
  _cells.clear();
  _columns = {};
}

CellBlock CellBlock::cutOff(std::size_t offset, std::size_t capacity) {
  auto const cut = _cells.begin() + toDifference(offset);
  CellBlock upper;
  upper.reserve(std::max(capacity, size() - offset));
  upper._cells.assign(std::make_move_iterator(cut), std::make_move_iterator(_cells.end()));
  _cells.erase(cut, _cells.end());
  findColumns();
  upper.findColumns();
  return upper;
}

bool CellBlock::takeAll(CellBlock& next) noexcept {
  if (size() + next.size() > _cells.capacity()) {
    return false;
  }
  std::ranges::move(next._cells, std::back_inserter(_cells));
  _columns.add(next._columns);
  next.clear();
  return true;
}

void CellBlock::shiftRows(unsigned long shift) noexcept {
  for (CellEntry& entry : _cells) {
    entry.key += CellEntry::Key{shift} << CellEntry::columnBits;
  }
}

void CellBlock::removeColumns(std::vector<bool> const& isRemoved) noexcept {
  std::erase_if(_cells, [&](CellEntry const& entry) { return isRemoved[entry.getColumn()]; });
}

void CellBlock::shiftColumns(std::span<unsigned long const> shifts) noexcept {
  _columns = {};
  for (CellEntry& entry : _cells) {
    // Most edits leave many cells where they are: memory that is not written stays clean.
    if (unsigned long const shift = shifts[entry.getColumn()]; shift != 0) {
      entry.key += shift;
    }
    _columns.add(entry.getColumn());
  }
}

void CellBlock::putRowsInOrder() noexcept {
  for (auto first = _cells.begin(); first != _cells.end();) {
    unsigned long const row = first->getRow();
    auto const end = std::find_if(first, _cells.end(),
                                  [row](CellEntry const& entry) { return entry.getRow() != row; });
    putInOrder(first, end);
    first = end;
  }
}

void CellBlock::findColumns() noexcept {
  _columns = {};
  for (CellEntry const& entry : _cells) {
    _columns.add(entry.getColumn());
  }
}

}  // namespace Zorv::DOM
