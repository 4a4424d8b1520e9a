#include "ConditionalFormatters/Following/CndFrmt_RowMoves.h"

#include <algorithm>

#include "DOM/Table.h"

namespace Zorv::ConditionalFormatters {

namespace {

constexpr unsigned long rowEnd = DOM::Table::rowCount;

/// The edit inside the sheet; without rows if it changes nothing.
RowEdit cutAtSheet(RowEdit edit) noexcept {
  edit.first = std::min(edit.first, rowEnd);
  edit.count = std::min(edit.count, rowEnd - edit.first);
  if (edit.kind == RowEdit::Kind::Move) {
    edit.before = std::min(edit.before, rowEnd);
    bool const isNowhere = edit.first <= edit.before && edit.before <= edit.first + edit.count;
    edit.count = isNowhere ? 0 : edit.count;
  }
  return edit;
}

/// Of one edit. Runs may be empty.
std::vector<RowRun> runsOf(RowEdit const& edit) {
  unsigned long const first = edit.first;
  unsigned long const count = edit.count;
  unsigned long const end = first + count;
  switch (edit.kind) {
    case RowEdit::Kind::Insert:
      return {{0, first, 0}, {first, rowEnd - count, count}, {rowEnd - count, rowEnd, {}}};
    case RowEdit::Kind::Delete:
      return {{0, first, 0}, {first, end, {}}, {end, rowEnd, 0 - count}};
    default:
      break;
  }
  if (edit.before < first) {
    return {{0, edit.before, 0},
            {edit.before, first, count},
            {first, end, edit.before - first},
            {end, rowEnd, 0}};
  }
  return {{0, first, 0},
          {first, end, edit.before - end},
          {end, edit.before, 0 - count},
          {edit.before, rowEnd, 0}};
}

}  // namespace

RowMoves::RowMoves() : _runs{{0, rowEnd, 0}} {}

void RowMoves::add(RowEdit const& edit) {
  RowEdit const cut = cutAtSheet(edit);
  if (cut.count == 0) {
    return;
  }
  std::vector<RowRun> composed;
  for (RowRun const& run : _runs) {
    if (!run.shift) {
      composed.push_back(run);
      continue;
    }
    for (RowRun const& next : runsOf(cut)) {
      unsigned long const first = std::max(run.first + *run.shift, next.first);
      unsigned long const end = std::min(run.end + *run.shift, next.end);
      if (first < end) {
        composed.push_back({first - *run.shift, end - *run.shift,
                            next.shift ? std::optional(*run.shift + *next.shift) : std::nullopt});
      }
    }
  }
  _runs = std::move(composed);
  _edits.push_back(cut);
}

RowRun const& RowMoves::runOf(unsigned long row) const noexcept {
  return *std::ranges::upper_bound(_runs, row, {}, &RowRun::end);
}

bool RowMoves::keepOrder() const noexcept {
  return std::ranges::none_of(_edits,
                              [](RowEdit const& edit) { return edit.kind == RowEdit::Kind::Move; });
}

TableRange RowMoves::move(TableRange const& range) const noexcept {
  TableRange moved{0, range.firstColumn, 0, range.endColumn};
  if (range.isEmpty() || range.endRow > rowEnd) {
    return moved;
  }
  auto const isThere = [](RowRun const& run) { return run.shift.has_value(); };
  auto const first =
      std::find_if(_runs.begin() + (&runOf(range.firstRow) - _runs.data()), _runs.end(), isThere);
  auto const last = std::find_if(
      std::make_reverse_iterator(_runs.begin() + (&runOf(range.endRow - 1) - _runs.data()) + 1),
      _runs.rend(), isThere);
  if (first != _runs.end() && last != _runs.rend()) {
    moved.firstRow = std::max(range.firstRow, first->first) + *first->shift;
    moved.endRow = std::min(range.endRow, last->end) + *last->shift;
  }
  return moved;
}

void RowMoves::appendMoved(TableRange const& area, std::vector<TableRange>& areas) const {
  for (RowRun const& run : _runs) {
    unsigned long const first = std::max(area.firstRow, run.first);
    unsigned long const end = std::min(area.endRow, run.end);
    if (run.shift && first < end) {
      areas.push_back({first + *run.shift, area.firstColumn, end + *run.shift, area.endColumn});
    }
  }
}

}  // namespace Zorv::ConditionalFormatters
