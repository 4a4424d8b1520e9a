#include "ConditionalFormatters/WholeTable/CndFrmt_RepeatMarks.h"

#include <algorithm>

namespace Zorv::ConditionalFormatters {

void RepeatMarks::set(PositionKey cell, bool isRepeated, bool isEditing) {
  auto const row = static_cast<std::uint32_t>(rowOfKey(cell));
  auto const column = static_cast<std::uint32_t>(columnOfKey(cell));
  if (isEditing) {
    _notes.push_back({cell, _repeated.contains(row, column)});
  }
  if (isRepeated) {
    _repeated.insert(row, column);
  } else {
    _repeated.erase(row, column);
  }
}

std::vector<CellIndex> RepeatMarks::takeFlipped() {
  // Of several notes about a cell the first is from before the change.
  std::ranges::stable_sort(_notes, {}, &Before::cell);
  auto const end = std::unique(_notes.begin(), _notes.end(),
                               [](Before const& a, Before const& b) { return a.cell == b.cell; });
  std::vector<CellIndex> flipped;
  for (auto before = _notes.begin(); before != end; ++before) {
    CellIndex const cell = cellIndexOfKey(before->cell);
    if (contains(cell) != before->wasRepeated) {
      flipped.push_back(cell);
    }
  }
  _notes.clear();
  return flipped;
}

}  // namespace Zorv::ConditionalFormatters
