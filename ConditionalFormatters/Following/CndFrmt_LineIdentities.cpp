#include "ConditionalFormatters/Following/CndFrmt_LineIdentities.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Zorv::ConditionalFormatters {

namespace {

/// Lines that are deleted are followed by as many new ones at the end of the sheet.
unsigned long countGiven(AxisEdit const& edit) noexcept {
  return edit.kind == AxisEdit::Kind::Move ? 0 : edit.count;
}

}  // namespace

LineIdentities::LineIdentities(unsigned long length, unsigned bits)
    : _length(length), _mostGiven(1UL << bits) {
  appendNew(length);
}

unsigned long LineIdentities::identityOf(unsigned long line) const noexcept {
  Run const& run = *std::ranges::upper_bound(_runs, line, {}, &Run::end);
  return run.identity + (line - run.first);
}

std::optional<unsigned long> LineIdentities::find(unsigned long identity) {
  if (_byIdentity.empty()) {
    _byIdentity = listByIdentity();
  }
  auto const next = std::ranges::upper_bound(_byIdentity, identity, {}, &Run::identity);
  if (next == _byIdentity.begin()) {
    return std::nullopt;
  }
  Run const& run = *std::prev(next);
  unsigned long const line = run.first + (identity - run.identity);
  return line < run.end ? std::optional(line) : std::nullopt;
}

std::vector<LineIdentities::Run> LineIdentities::listByIdentity() const {
  std::vector<Run> runs = _runs;
  std::ranges::sort(runs, {}, &Run::identity);
  return runs;
}

bool LineIdentities::canFollow(LineMoves const& moves) const noexcept {
  constexpr std::size_t mostRuns = 16'384;
  constexpr std::size_t mostOfEdit = 3;
  unsigned long given = _given;
  for (AxisEdit const& edit : moves.getEdits()) {
    given += countGiven(edit);
  }
  return given <= _mostGiven && _runs.size() + mostOfEdit * moves.getEdits().size() <= mostRuns;
}

void LineIdentities::follow(LineMoves const& moves) {
  for (AxisEdit const& edit : moves.getEdits()) {
    follow(edit);
  }
}

void LineIdentities::follow(AxisEdit const& edit) {
  std::vector<Run> const before = std::exchange(_runs, {});
  _byIdentity.clear();
  unsigned long const end = edit.first + edit.count;
  switch (edit.kind) {
    case AxisEdit::Kind::Insert:
      appendLines(before, 0, edit.first);
      appendNew(edit.count);
      appendLines(before, edit.first, _length - edit.count);
      break;
    case AxisEdit::Kind::Delete:
      appendLines(before, 0, edit.first);
      appendLines(before, end, _length);
      appendNew(edit.count);
      break;
    default:
      appendLines(before, 0, std::min(edit.first, edit.before));
      if (edit.before < edit.first) {
        appendLines(before, edit.first, end);
        appendLines(before, edit.before, edit.first);
      } else {
        appendLines(before, end, edit.before);
        appendLines(before, edit.first, end);
      }
      appendLines(before, std::max(end, edit.before), _length);
  }
}

void LineIdentities::appendLines(std::vector<Run> const& before, unsigned long first,
                                 unsigned long end) {
  auto run = std::ranges::upper_bound(before, first, {}, &Run::end);
  for (; run != before.end() && run->first < end; ++run) {
    unsigned long const from = std::max(first, run->first);
    append(run->identity + (from - run->first), std::min(end, run->end) - from);
  }
}

void LineIdentities::appendNew(unsigned long count) {
  append(_given, count);
  _given += count;
}

void LineIdentities::append(unsigned long identity, unsigned long count) {
  if (count == 0) {
    return;
  }
  unsigned long const first = _runs.empty() ? 0 : _runs.back().end;
  if (!_runs.empty() && _runs.back().identity + (first - _runs.back().first) == identity) {
    _runs.back().end += count;
  } else {
    _runs.push_back({first, first + count, identity});
  }
}

}  // namespace Zorv::ConditionalFormatters
