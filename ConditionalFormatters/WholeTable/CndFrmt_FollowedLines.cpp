// How operands of ranges follow edits of rows and columns.

#include <algorithm>
#include <cstddef>
#include <vector>

#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedOperands.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// The lines that edits take away from a range, and those that they bring.
struct LineDifferences {
  std::vector<LineInterval> gone;   ///< where they were
  std::vector<LineInterval> added;  ///< where they are
};

void addLines(LineInterval const& lines, std::vector<LineInterval>& intervals) {
  if (!lines.isEmpty()) {
    intervals.push_back(lines);
  }
}

LineDifferences findDifferences(LineInterval const& before, LineInterval const& after,
                                LineMoves const& moves) {
  LineDifferences differences;
  std::vector<LineInterval> kept;
  for (LineRun const& run : moves.getRuns()) {
    LineInterval const lines{std::max(before.first, run.first), std::min(before.end, run.end)};
    if (lines.isEmpty()) {
      continue;
    }
    if (!run.shift) {
      addLines(lines, differences.gone);
      continue;
    }
    unsigned long const shift = *run.shift;
    unsigned long const first = std::clamp(after.first, lines.first + shift, lines.end + shift);
    unsigned long const end = std::clamp(after.end, first, lines.end + shift);
    addLines({lines.first, first - shift}, differences.gone);
    addLines({end - shift, lines.end}, differences.gone);
    kept.push_back({first, end});
  }
  std::ranges::sort(kept, {}, &LineInterval::first);
  unsigned long next = after.first;
  for (LineInterval const& lines : kept) {
    addLines({next, std::min(lines.first, after.end)}, differences.added);
    next = std::max(next, lines.end);
  }
  addLines({next, after.end}, differences.added);
  return differences;
}

/// The parts of a range in some of its rows, and in some of its columns. They may overlap.
std::vector<TableRange> findParts(TableRange const& range, std::vector<LineInterval> const& rows,
                                  std::vector<LineInterval> const& columns) {
  std::vector<TableRange> parts;
  parts.reserve(rows.size() + columns.size());
  for (LineInterval const& each : rows) {
    parts.push_back({each.first, range.firstColumn, each.end, range.endColumn});
  }
  for (LineInterval const& each : columns) {
    parts.push_back({range.firstRow, each.first, range.endRow, each.end});
  }
  return parts;
}

}  // namespace

bool FollowedOperands::linesChanged(SheetMoves const& moves,
                                    std::vector<TableRange> const& ranges) {
  bool const staysAll = ranges == _ranges && std::ranges::all_of(ranges, [&](auto const& range) {
                          return moves.leave(range);
                        });
  if (staysAll || !_isComplete) {
    return staysAll;
  }
  auto const difference = findDifference(moves, ranges);
  if (!difference || !_equal.canFollow(moves)) {
    return false;
  }
  _isEditing = true;
  if (_answers) {
    _answers->startEdit();
  }
  remove(difference->gone);
  _column.moveRows(moves.rows);
  _column.moveColumns(moves.columns, _ranges);
  _equal.follow(moves);
  if (_answers) {
    _answers->cellsMoved();
  }
  _ranges = ranges;
  for (AreaOfRange const& added : difference->added) {
    readAll(added);
  }
  for (PositionKey const cell : difference->leaving) {
    markAgain(cell);
  }
  flushNumbers();
  _isEditing = false;
  _equal.forgetNotes();
  settle();
  return true;
}

void FollowedOperands::remove(std::vector<ValueColumn::Entry> const& entries) {
  // The classes lie anywhere in much memory: they are fetched in advance.
  constexpr std::size_t ahead = 16;
  for (std::size_t index = 0; index < entries.size(); ++index) {
    if (countsEqual() && index + ahead < entries.size()) {
      _equal.prefetch(entries[index + ahead].value);
    }
    setValue(entries[index].place, noValueBits);
  }
}

std::optional<FollowedOperands::Difference> FollowedOperands::findDifference(
    SheetMoves const& moves, std::vector<TableRange> const& ranges) const {
  if (ranges.size() != _ranges.size()) {
    return std::nullopt;
  }
  Difference difference;
  std::size_t left = mostToRead();
  for (std::size_t range = 0; range < ranges.size(); ++range) {
    TableRange const& before = _ranges[range];
    TableRange const& after = ranges[range];
    auto const rows = findDifferences(rowIntervalOf(before), rowIntervalOf(after), moves.rows);
    auto const columns =
        findDifferences(columnIntervalOf(before), columnIntervalOf(after), moves.columns);
    for (TableRange const& part : findParts(before, rows.gone, columns.gone)) {
      auto const gone = _column.list(range, part, left);
      if (gone.size() > left) {
        return std::nullopt;
      }
      left -= gone.size();
      difference.gone.insert(difference.gone.end(), gone.begin(), gone.end());
    }
    for (TableRange const& part : findParts(after, rows.added, columns.added)) {
      std::size_t const count = countCells(part, left);
      if (count > left) {
        return std::nullopt;
      }
      left -= count;
      if (count > 0) {
        difference.added.push_back({range, part});
      }
    }
  }
  return addLeaving(moves, difference) ? std::optional(std::move(difference)) : std::nullopt;
}

/// Adds the cells that leave a range and stay in the sheet. False if they are too many.
bool FollowedOperands::addLeaving(SheetMoves const& moves, Difference& difference) const {
  constexpr std::size_t manyPairs = 1'000'000;
  if (!_needs.occurrences || _ranges.size() == 1) {
    return true;
  }
  for (ValueColumn::Entry const& entry : difference.gone) {
    if (auto const cell = moves.move(positionOfPlace(entry.place))) {
      difference.leaving.push_back(*cell);
    }
  }
  return difference.leaving.size() <= manyPairs / _ranges.size();
}

std::size_t FollowedOperands::countCells(TableRange const& area, std::size_t most) const {
  std::size_t count = 0;
  auto [cell, end] = _table.getRangeIterators(area);
  for (; cell != end && count <= most; ++cell) {
    ++count;
  }
  return count;
}

/// A cell that has left a range may be one of another one, and repeat a value there.
void FollowedOperands::markAgain(PositionKey cell) {
  for (std::size_t range = 0; range < _ranges.size(); ++range) {
    if (_ranges[range].contains(rowOfKey(cell), columnOfKey(cell))) {
      _equal.markAgain(cell, _column.get(placeKeyOf(range, cell)));
    }
  }
}

}  // namespace Zorv::ConditionalFormatters
