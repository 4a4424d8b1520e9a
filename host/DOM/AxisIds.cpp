#include "DOM/AxisIds.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace Zorv::DOM {

AxisIds::AxisIds(unsigned long length) : _length(length) {
  _runs.push_back(makeRun(length));
  renumber();
}

unsigned long AxisIds::idAt(unsigned long position) const noexcept {
  if (position >= _length) {
    return 0;
  }
  // A removed run has the position of the live run that follows it, so the last run that begins at
  // or before a position of the axis is always a live one.
  auto const next =
      std::upper_bound(_runs.begin(), _runs.end(), position,
                       [](unsigned long value, Run const& run) { return value < run.position; });
  Run const& run = *std::prev(next);
  return run.firstId + (position - run.position);
}

unsigned long AxisIds::beginOf(unsigned long id) const noexcept {
  Run const* const run = findRun(id);
  if (run == nullptr) {
    return _length;
  }
  return run->live ? run->position + (id - run->firstId) : run->position;
}

unsigned long AxisIds::endOf(unsigned long id) const noexcept {
  Run const* const run = findRun(id);
  if (run == nullptr) {
    return 0;
  }
  return run->live ? run->position + (id - run->firstId) + 1 : run->position;
}

AxisIds::Run const* AxisIds::findRun(unsigned long id) const noexcept {
  if (id == 0 || id >= _nextId) {
    return nullptr;
  }
  // Every identity that was ever given lies in exactly one run.
  auto const next = std::upper_bound(
      _runsById.begin(), _runsById.end(), id,
      [this](unsigned long value, std::size_t index) { return value < _runs[index].firstId; });
  return &_runs[*std::prev(next)];
}

void AxisIds::insert(unsigned long before, unsigned long count) {
  markRemoved(splitAt(_length - count), _runs.size());
  auto const index = splitAt(before);
  _runs.insert(_runs.begin() + static_cast<std::ptrdiff_t>(index), makeRun(count));
  renumber();
}

void AxisIds::remove(unsigned long first, unsigned long count) {
  auto const firstRun = splitAt(first);
  markRemoved(firstRun, splitAt(first + count));
  _runs.push_back(makeRun(count));
  renumber();
}

void AxisIds::move(unsigned long first, unsigned long count, unsigned long before) {
  splitAt(first);
  splitAt(first + count);
  splitAt(before);
  // Splitting adds runs, so the indices are taken once no more are added.
  auto const at = [this](unsigned long position) {
    return _runs.begin() + static_cast<std::ptrdiff_t>(splitAt(position));
  };
  auto const firstRun = at(first);
  auto const endRun = at(first + count);
  if (before < first) {
    std::rotate(at(before), firstRun, endRun);
  } else {
    std::rotate(firstRun, endRun, at(before));
  }
  renumber();
}

std::size_t AxisIds::splitAt(unsigned long position) {
  if (position >= _length) {
    return _runs.size();
  }
  auto const next =
      std::upper_bound(_runs.begin(), _runs.end(), position,
                       [](unsigned long value, Run const& run) { return value < run.position; });
  auto const run = std::prev(next);
  auto const index = static_cast<std::size_t>(run - _runs.begin());
  unsigned long const head = position - run->position;
  if (head == 0) {
    return index;
  }
  Run const tail{run->firstId + head, run->count - head, true, position};
  run->count = head;
  _runs.insert(next, tail);
  return index + 1;
}

void AxisIds::markRemoved(std::size_t firstRun, std::size_t endRun) noexcept {
  for (std::size_t index = firstRun; index < endRun; ++index) {
    _runs[index].live = false;
  }
}

AxisIds::Run AxisIds::makeRun(unsigned long count) noexcept {
  Run const run{_nextId, count, true, 0};
  _nextId += count;
  return run;
}

void AxisIds::renumber() {
  unsigned long position = 0;
  for (Run& run : _runs) {
    run.position = position;
    position += run.live ? run.count : 0;
  }
  _runsById.resize(_runs.size());
  std::iota(_runsById.begin(), _runsById.end(), std::size_t{0});
  std::sort(_runsById.begin(), _runsById.end(),
            [this](std::size_t a, std::size_t b) { return _runs[a].firstId < _runs[b].firstId; });
}

}  // namespace Zorv::DOM
