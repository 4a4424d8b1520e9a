// How operands of ranges follow edits of rows.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedOperands.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Rows of one of the ranges.
struct RowsOfRange {
  std::size_t range;
  unsigned long first;
  unsigned long end;
};

/// The rows whose values edits take away from ranges, and those that they bring.
struct RowDifferences {
  std::vector<RowsOfRange> gone;   ///< where they were
  std::vector<RowsOfRange> added;  ///< where they are
  bool hasMovedOut = false;        ///< some of those that are gone lie elsewhere now
};

void addRows(std::size_t range, unsigned long first, unsigned long end,
             std::vector<RowsOfRange>& rows) {
  if (first < end) {
    rows.push_back({range, first, end});
  }
}

void addDifferences(std::size_t range, TableRange const& before, TableRange const& after,
                    RowMoves const& moves, RowDifferences& differences) {
  std::vector<RowsOfRange> kept;
  for (RowRun const& run : moves.getRuns()) {
    unsigned long const first = std::max(before.firstRow, run.first);
    unsigned long const end = std::min(before.endRow, run.end);
    if (first >= end) {
      continue;
    }
    if (!run.shift) {
      addRows(range, first, end, differences.gone);
      continue;
    }
    unsigned long const shift = *run.shift;
    unsigned long const keptFirst = std::clamp(after.firstRow, first + shift, end + shift);
    unsigned long const keptEnd = std::clamp(after.endRow, keptFirst, end + shift);
    addRows(range, first, keptFirst - shift, differences.gone);
    addRows(range, keptEnd - shift, end, differences.gone);
    differences.hasMovedOut =
        differences.hasMovedOut || keptFirst - shift != first || keptEnd - shift != end;
    kept.push_back({range, keptFirst, keptEnd});
  }
  std::ranges::sort(kept, {}, &RowsOfRange::first);
  unsigned long next = after.firstRow;
  for (RowsOfRange const& rows : kept) {
    addRows(range, next, std::min(rows.first, after.endRow), differences.added);
    next = std::max(next, rows.end);
  }
  addRows(range, next, after.endRow, differences.added);
}

std::uint64_t countPositions(std::vector<RowsOfRange> const& rows,
                             std::vector<TableRange> const& ranges) noexcept {
  std::uint64_t count = 0;
  for (RowsOfRange const& each : rows) {
    TableRange const& range = ranges[each.range];
    count += std::uint64_t{each.end - each.first} * (range.endColumn - range.firstColumn);
  }
  return count;
}

bool haveSameColumns(std::vector<TableRange> const& a, std::vector<TableRange> const& b) noexcept {
  return std::ranges::equal(a, b, [](TableRange const& left, TableRange const& right) {
    return left.firstColumn == right.firstColumn && left.endColumn == right.endColumn;
  });
}

}  // namespace

bool FollowedOperands::rowsChanged(RowMoves const& moves, std::vector<TableRange> const& ranges) {
  if (!haveSameColumns(_ranges, ranges) || !_equal.canFollow(moves)) {
    return false;
  }
  RowDifferences differences;
  for (std::size_t range = 0; range < ranges.size(); ++range) {
    addDifferences(range, _ranges[range], ranges[range], moves, differences);
  }
  // A cell that leaves one of several ranges may still be one of another, and repeat a value there.
  if (differences.hasMovedOut && _needs.occurrences && ranges.size() > 1) {
    return false;
  }
  if (countPositions(differences.gone, _ranges) + countPositions(differences.added, ranges) >
      mostToRead()) {
    return false;
  }
  _isEditing = true;
  if (_answers) {
    _answers->startEdit();
  }
  for (RowsOfRange const& rows : differences.gone) {
    removeRows(rows.range, rows.first, rows.end);
  }
  _column.moveRows(moves);
  _equal.moveRows(moves);
  if (_answers) {
    _answers->rowsMoved();
  }
  _ranges = ranges;
  for (RowsOfRange const& rows : differences.added) {
    TableRange const& range = ranges[rows.range];
    readArea(rows.range, {rows.first, range.firstColumn, rows.end, range.endColumn});
  }
  _isEditing = false;
  _equal.forgetNotes();
  settle();
  return true;
}

void FollowedOperands::removeRows(std::size_t range, unsigned long first, unsigned long end) {
  auto const removed = _column.list(placeKeyOf(range, positionKeyOf(first, 0)),
                                    placeKeyOf(range, positionKeyOf(end, 0)));
  for (ValueColumn::Entry const& entry : removed) {
    setValue(entry.place, noValueBits);
  }
}

}  // namespace Zorv::ConditionalFormatters
