#include "ConditionalFormatters/WholeTable/CndFrmt_EqualCells.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include <boost/sort/pdqsort/pdqsort.hpp>

namespace Zorv::ConditionalFormatters {

namespace {

bool hasClass(ValueBits value) noexcept { return value != noValueBits && value != nanBits; }

}  // namespace

void EqualCells::change(PositionKey position, ValueBits before, ValueBits now, bool isEditing) {
  CellIdentity const cell = _identities.identityOf(position);
  remove(before, cell, isEditing);
  add(now, cell, isEditing);
}

void EqualCells::prefetch(ValueBits value) const noexcept {
  if (isTextBits(value)) {
    _texts.prefetch(textOfBits(value));
  } else if (hasClass(value)) {
    _classes.prefetch(value);
  }
}

void EqualCells::markAgain(PositionKey position, ValueBits value) {
  if (hasClass(value)) {
    std::uint64_t const count =
        isTextBits(value) ? _texts.count(textOfBits(value)) : _classes.count(value);
    mark(_identities.identityOf(position), count > 1, false);
  }
}

std::vector<CellIndex> EqualCells::takeFlipped() {
  // Branchless: comparisons of random cells are mispredicted.
  boost::sort::pdqsort_branchless(_notes.begin(), _notes.end());
  std::vector<CellIndex> flipped;
  for (auto note = _notes.begin(); note != _notes.end();) {
    auto const next =
        std::find_if(note, _notes.end(), [&](CellIdentity each) { return each != *note; });
    // After an even number of changes it is as before.
    auto const position = (next - note) % 2 == 1 ? _identities.find(*note) : std::nullopt;
    if (position) {
      flipped.push_back(cellIndexOfKey(*position));
    }
    note = next;
  }
  if (!std::ranges::is_sorted(flipped)) {  // only after edits of lines
    std::ranges::sort(flipped);
  }
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
  auto const row = static_cast<std::uint32_t>(rowOfIdentity(cell));
  auto const column = static_cast<std::uint32_t>(columnOfIdentity(cell));
  bool const changes = isRepeated ? _repeated.insert(row, column) : _repeated.erase(row, column);
  if (changes && isEditing) {
    _notes.push_back(cell);
  }
}

}  // namespace Zorv::ConditionalFormatters
