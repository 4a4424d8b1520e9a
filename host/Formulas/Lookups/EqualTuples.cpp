#include "Formulas/Lookups/EqualTuples.h"

#include <algorithm>
#include <limits>

#include <boost/container_hash/hash.hpp>

#include "Formulas/Lookups/Few.h"

namespace Zorv::Formulas {

namespace {

constexpr std::uint32_t freeSlot = std::numeric_limits<std::uint32_t>::max();

std::size_t hash(std::span<std::uint32_t const> classes) noexcept {
  return boost::hash_range(classes.begin(), classes.end());
}

/// Walks one area's cells beside those of another.
class Follower {
public:
  Follower() = default;
  explicit Follower(ClassesOfArea const& area) noexcept : _area(&area), _cell(area.firstCell) {}

  /// The class of the cell at a position, if there is one. Positions must ascend.
  [[nodiscard]] std::optional<std::uint32_t> classAt(std::uint32_t position) noexcept {
    while (_cell < _area->endCell && _area->positionOf(_cell) < position) {
      ++_cell;
    }
    bool const isThere = _cell < _area->endCell && _area->positionOf(_cell) == position;
    return isThere ? std::optional(_area->classes->classOf(_cell)) : std::nullopt;
  }

private:
  ClassesOfArea const* _area = nullptr;
  std::uint32_t _cell = 0;
};

}  // namespace

std::span<std::uint32_t const> ClassesOfArea::membersOf(std::uint32_t number) const noexcept {
  auto const members = classes->membersOf(number);
  if (firstCell == 0 && endCell == classes->size()) {
    return members;
  }
  return {std::ranges::lower_bound(members, firstCell), std::ranges::lower_bound(members, endCell)};
}

EqualTuples::EqualTuples(std::span<ClassesOfArea const> areas)
    : _width(areas.size()), _slots(16, freeSlot) {
  Few<Follower> followers;
  for (ClassesOfArea const& area : areas.subspan(1)) {
    followers.push_back(Follower(area));
  }
  ClassesOfArea const& first = areas.front();
  Few<std::uint32_t> tuple;
  for (std::uint32_t cell = first.firstCell; cell < first.endCell; ++cell) {
    std::uint32_t const position = first.positionOf(cell);
    tuple.clear();
    tuple.push_back(first.classes->classOf(cell));
    for (Follower& follower : followers) {
      if (auto const number = follower.classAt(position)) {
        tuple.push_back(*number);
      }
    }
    if (tuple.size() == _width) {
      add(position, obtain(tuple));
    }
  }
  finish(static_cast<std::uint32_t>(_tuples.size() / _width));
}

std::size_t EqualTuples::findSlot(std::span<std::uint32_t const> classes) const noexcept {
  std::size_t const mask = _slots.size() - 1;
  std::size_t slot = hash(classes) & mask;
  while (_slots[slot] != freeSlot && !std::ranges::equal(tupleAt(_slots[slot]), classes)) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

std::optional<std::uint32_t> EqualTuples::find(
    std::span<std::uint32_t const> classes) const noexcept {
  std::uint32_t const number = _slots[findSlot(classes)];
  return number == freeSlot ? std::nullopt : std::optional(number);
}

std::uint32_t EqualTuples::obtain(std::span<std::uint32_t const> classes) {
  std::size_t const slot = findSlot(classes);
  if (_slots[slot] != freeSlot) {
    return _slots[slot];
  }
  auto const number = static_cast<std::uint32_t>(_tuples.size() / _width);
  _slots[slot] = number;
  _tuples.insert(_tuples.end(), classes.begin(), classes.end());
  if ((std::size_t{number} + 1) * 2 > _slots.size()) {
    grow();
  }
  return number;
}

void EqualTuples::grow() {
  _slots.assign(_slots.size() * 2, freeSlot);
  for (std::uint32_t number = 0; number < _tuples.size() / _width; ++number) {
    _slots[findSlot(tupleAt(number))] = number;
  }
}

std::size_t EqualTuples::memory() const noexcept {
  return CellClasses::memory() + memoryOf(_tuples) + memoryOf(_slots);
}

}  // namespace Zorv::Formulas
