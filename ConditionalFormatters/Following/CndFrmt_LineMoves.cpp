#include "ConditionalFormatters/Following/CndFrmt_LineMoves.h"

#include <algorithm>
#include <utility>

namespace Zorv::ConditionalFormatters {

namespace {

/// The edit inside the sheet; without lines if it changes nothing.
AxisEdit cutAtSheet(AxisEdit edit, unsigned long length) noexcept {
  edit.first = std::min(edit.first, length);
  edit.count = std::min(edit.count, length - edit.first);
  if (edit.kind == AxisEdit::Kind::Move) {
    edit.before = std::min(edit.before, length);
    bool const isNowhere = edit.first <= edit.before && edit.before <= edit.first + edit.count;
    edit.count = isNowhere ? 0 : edit.count;
  }
  return edit;
}

/// Of one edit. Runs may be empty.
std::vector<LineRun> runsOf(AxisEdit const& edit, unsigned long length) {
  unsigned long const first = edit.first;
  unsigned long const count = edit.count;
  unsigned long const end = first + count;
  switch (edit.kind) {
    case AxisEdit::Kind::Insert:
      return {{0, first, 0}, {first, length - count, count}, {length - count, length, {}}};
    case AxisEdit::Kind::Delete:
      return {{0, first, 0}, {first, end, {}}, {end, length, 0 - count}};
    default:
      break;
  }
  if (edit.before < first) {
    return {{0, edit.before, 0},
            {edit.before, first, count},
            {first, end, edit.before - first},
            {end, length, 0}};
  }
  return {{0, first, 0},
          {first, end, edit.before - end},
          {end, edit.before, 0 - count},
          {edit.before, length, 0}};
}

LineInterval moveOnce(LineInterval const& lines, AxisEdit const& edit, unsigned long length) {
  LineInterval moved{length, 0};
  for (LineRun const& run : runsOf(edit, length)) {
    LineInterval const common{std::max(lines.first, run.first), std::min(lines.end, run.end)};
    if (run.shift && !common.isEmpty()) {
      moved.first = moved.end == 0 ? common.first + *run.shift : moved.first;
      moved.end = common.end + *run.shift;
    }
  }
  return moved;
}

}  // namespace

LineMoves::LineMoves(unsigned long length) : _length(length), _runs{{0, length, 0}} {}

void LineMoves::add(AxisEdit const& edit) {
  AxisEdit const cut = cutAtSheet(edit, _length);
  if (cut.count == 0) {
    return;
  }
  std::vector<LineRun> composed;
  for (LineRun const& run : _runs) {
    if (!run.shift) {
      composed.push_back(run);
      continue;
    }
    for (LineRun const& next : runsOf(cut, _length)) {
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

LineRun const& LineMoves::runOf(unsigned long line) const noexcept {
  return *std::ranges::upper_bound(_runs, line, {}, &LineRun::end);
}

std::optional<unsigned long> LineMoves::findShift(LineInterval const& lines) const noexcept {
  if (lines.isEmpty() || lines.end > _length) {
    return std::nullopt;
  }
  LineRun const& run = runOf(lines.first);
  return lines.end <= run.end ? run.shift : std::nullopt;
}

bool LineMoves::keepOrder() const noexcept {
  return std::ranges::none_of(
      _edits, [](AxisEdit const& edit) { return edit.kind == AxisEdit::Kind::Move; });
}

LineInterval LineMoves::move(LineInterval const& lines) const {
  LineInterval moved = lines.end <= _length ? lines : LineInterval{0, 0};
  // One after the other: lines that one edit inserts may be the last ones that another leaves.
  for (AxisEdit const& edit : _edits) {
    moved = moveOnce(moved, edit, _length);
  }
  return moved.isEmpty() ? LineInterval{0, 0} : moved;
}

std::vector<LineInterval> LineMoves::moveParts(LineInterval const& lines) const {
  std::vector<LineInterval> parts;
  for (LineRun const& run : _runs) {
    LineInterval const common{std::max(lines.first, run.first), std::min(lines.end, run.end)};
    if (run.shift && !common.isEmpty()) {
      parts.push_back({common.first + *run.shift, common.end + *run.shift});
    }
  }
  return parts;
}

}  // namespace Zorv::ConditionalFormatters
