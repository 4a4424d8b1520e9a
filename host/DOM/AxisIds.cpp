#include "DOM/AxisIds.h"

#include <algorithm>
#include <iterator>

namespace Zorv::DOM {

AxisIds::AxisIds(unsigned long length) : _length(length) { insertRun(0, length); }

unsigned long AxisIds::idAt(unsigned long position) const noexcept {
  if (position >= _length) {
    return 0;
  }
  // A mark has the position of the next live run, so the last run that begins at or before a
  // position of the axis is always live.
  auto const next = std::ranges::upper_bound(_runs, position, {}, &Run::position);
  Run const& run = *std::prev(next);
  return run.firstId + (position - run.position);
}

unsigned long AxisIds::beginOf(unsigned long id) const noexcept {
  Run const* const run = findRun(_beginsById, id);
  if (run == nullptr) {
    return _length;
  }
  return run->kind == RunKind::Live ? run->position + (id - run->firstId) : run->position;
}

unsigned long AxisIds::endOf(unsigned long id) const noexcept {
  Run const* const run = findRun(_endsById, id);
  if (run == nullptr) {
    return 0;
  }
  return run->kind == RunKind::Live ? run->position + (id - run->firstId) + 1 : run->position;
}

AxisIds::Run const* AxisIds::findRun(RunIndices const& indices, unsigned long id) const noexcept {
  if (id == 0 || id >= _nextId) {
    return nullptr;
  }
  auto const next = std::ranges::upper_bound(
      indices, id, {}, [this](std::size_t index) { return _runs[index].firstId; });
  return &_runs[*std::prev(next)];
}

void AxisIds::insert(unsigned long before, unsigned long count) {
  if (count != 0) {
    // Insert first: if the last identity is removed, its marks then lie after the inserted run.
    insertRun(before, count);
    removeRuns(_length, count);
  }
}

void AxisIds::remove(unsigned long first, unsigned long count) {
  if (count != 0) {
    removeRuns(first, count);
    insertRun(_length - count, count);
  }
}

void AxisIds::move(unsigned long first, unsigned long count, unsigned long before) {
  if (count == 0 || before == first || before == first + count) {
    return;
  }
  // Split first: later splits would invalidate the indices and iterators.
  splitAt(first);
  splitAt(first + count);
  splitAt(before);
  auto const gap = _runs.begin() + static_cast<std::ptrdiff_t>(findGap(before));
  auto const moved = _runs.begin() + static_cast<std::ptrdiff_t>(splitAt(first));
  auto endRun = _runs.begin() + static_cast<std::ptrdiff_t>(splitAt(first + count));
  // Marks inside the moved part move along; those at its borders stay.
  while (std::prev(endRun)->kind != RunKind::Live) {
    --endRun;
  }
  if (before < first) {
    std::rotate(gap, moved, endRun);
  } else {
    std::rotate(moved, endRun, gap);
  }
  renumber();
}

std::size_t AxisIds::splitAt(unsigned long position) {
  auto const next = std::ranges::upper_bound(_runs, position, {}, &Run::position);
  if (next == _runs.begin()) {
    return 0;
  }
  auto const run = std::prev(next);
  unsigned long const head = position - run->position;
  if (run->kind != RunKind::Live || head == run->count) {
    return _runs.size();
  }
  auto const index = static_cast<std::size_t>(run - _runs.begin());
  if (head == 0) {
    return index;
  }
  Run const tail{run->firstId + head, run->count - head, position, RunKind::Live};
  run->count = head;
  _runs.insert(next, tail);
  return index + 1;
}

std::size_t AxisIds::findGap(unsigned long position) {
  std::size_t index = splitAt(position);
  while (index > 0 && _runs[index - 1].kind == RunKind::BeginMark) {
    --index;
  }
  return index;
}

void AxisIds::removeRuns(unsigned long first, unsigned long count) {
  std::size_t const firstRun = splitAt(first);
  std::size_t const endRun = splitAt(first + count);
  std::vector<Run> beginMarks;
  for (std::size_t index = firstRun; index < endRun; ++index) {
    if (_runs[index].kind == RunKind::Live) {
      _runs[index].kind = RunKind::EndMark;
      beginMarks.push_back(_runs[index]);
      beginMarks.back().kind = RunKind::BeginMark;
    }
  }
  _runs.insert(_runs.begin() + static_cast<std::ptrdiff_t>(endRun), beginMarks.begin(),
               beginMarks.end());
  renumber();
}

void AxisIds::insertRun(unsigned long before, unsigned long count) {
  auto const gap = static_cast<std::ptrdiff_t>(findGap(before));
  _runs.insert(_runs.begin() + gap, Run{_nextId, count, before, RunKind::Live});
  _nextId += count;
  renumber();
}

void AxisIds::renumber() {
  orderMarks();
  unsigned long position = 0;
  for (Run& run : _runs) {
    run.position = position;
    position += run.kind == RunKind::Live ? run.count : 0;
  }
  _beginsById = indicesById(RunKind::EndMark);
  _endsById = indicesById(RunKind::BeginMark);
}

/// Sorts the marks between two live runs: end marks first.
void AxisIds::orderMarks() {
  auto const isLive = [](Run const& run) { return run.kind == RunKind::Live; };
  for (auto run = _runs.begin(); run != _runs.end();) {
    auto const firstMark = std::find_if_not(run, _runs.end(), isLive);
    run = std::find_if(firstMark, _runs.end(), isLive);
    std::stable_partition(firstMark, run,
                          [](Run const& mark) { return mark.kind == RunKind::EndMark; });
  }
}

AxisIds::RunIndices AxisIds::indicesById(RunKind excluded) const {
  RunIndices indices;
  indices.reserve(_runs.size());
  for (std::size_t index = 0; index < _runs.size(); ++index) {
    if (_runs[index].kind != excluded) {
      indices.push_back(index);
    }
  }
  std::ranges::sort(indices, {}, [this](std::size_t index) { return _runs[index].firstId; });
  return indices;
}

}  // namespace Zorv::DOM
