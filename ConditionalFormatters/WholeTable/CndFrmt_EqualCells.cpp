#include "ConditionalFormatters/WholeTable/CndFrmt_EqualCells.h"

#include <algorithm>
#include <cstdint>

namespace Zorv::ConditionalFormatters {

namespace {

bool hasClass(ValueBits value) noexcept { return value != noValueBits && value != nanBits; }

}  // namespace

void EqualCells::change(PositionKey position, ValueBits before, ValueBits now, bool isEditing) {
  CellIdentity const cell = _identities.identityOf(position);
  remove(before, cell, isEditing);
  add(now, cell, isEditing);
}

void EqualCells::markAgain(PositionKey position, ValueBits value) {
  if (hasClass(value)) {
    std::uint64_t const count =
        isTextBits(value) ? _texts.count(textOfBits(value)) : _classes.count(value);
    mark(_identities.identityOf(position), count > 1, false);
  }
}

std::vector<CellIndex> EqualCells::takeFlipped() {
  // Of several notes about a cell the first is from before the change.
  std::ranges::stable_sort(_notes, {}, &Before::cell);
  auto const end = std::unique(_notes.begin(), _notes.end(),
                               [](Before const& a, Before const& b) { return a.cell == b.cell; });
  std::vector<CellIndex> flipped;
  for (auto before = _notes.begin(); before != end; ++before) {
    auto const position = _identities.find(before->cell);
    if (position && isMarked(before->cell) != before->wasRepeated) {
      flipped.push_back(cellIndexOfKey(*position));
    }
  }
  std::ranges::sort(flipped);
  _notes.clear();
  return flipped;
}

void EqualCells::add(ValueBits value, CellIdentity cell, bool isEditing) {
  if (!hasClass(value)) {
    return;
  }
  OtherCells const others =
      isTextBits(value) ? _texts.add(textOfBits(value), cell) : _classes.add(value, cell);
  if (others.count == 1) {
    mark(others.only, true, isEditing);
  }
  if (others.count > 0) {
    mark(cell, true, isEditing);
  }
}

void EqualCells::remove(ValueBits value, CellIdentity cell, bool isEditing) {
  if (!hasClass(value)) {
    return;
  }
  OtherCells const others =
      isTextBits(value) ? _texts.remove(textOfBits(value), cell) : _classes.remove(value, cell);
  if (others.count == 1) {
    mark(others.only, false, isEditing);
  }
  mark(cell, false, isEditing);
}

void EqualCells::mark(CellIdentity cell, bool isRepeated, bool isEditing) {
  if (!_marksRepeated) {
    return;
  }
  if (isEditing) {
    _notes.push_back({cell, isMarked(cell)});
  }
  auto const row = static_cast<std::uint32_t>(rowOfIdentity(cell));
  auto const column = static_cast<std::uint32_t>(columnOfIdentity(cell));
  if (isRepeated) {
    _repeated.insert(row, column);
  } else {
    _repeated.erase(row, column);
  }
}

}  // namespace Zorv::ConditionalFormatters
