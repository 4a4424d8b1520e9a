#include "Formulas/Lookups/EqualTuples.h"

#include <algorithm>
#include <limits>

#include <boost/container_hash/hash.hpp>

namespace Zorv::Formulas {

namespace {

constexpr std::uint32_t freeSlot = std::numeric_limits<std::uint32_t>::max();

std::size_t hash(std::span<std::uint32_t const> classes) noexcept {
  return boost::hash_range(classes.begin(), classes.end());
}

/// The positions at which the classes of an area change, counted from its first one.
std::vector<std::uint32_t> findPositions(std::span<ClassesOfArea const> areas,
                                         std::span<std::span<ClassEdit const> const> edits) {
  std::vector<std::uint32_t> positions;
  for (std::size_t index = 0; index < areas.size(); ++index) {
    for (ClassEdit const& edit : edits[index]) {
      if (areas[index].contains(edit.position)) {
        positions.push_back(edit.position - areas[index].firstPosition);
      }
    }
  }
  std::ranges::sort(positions);
  positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
  return positions;
}

/// Cursor over the cells of one area, moved along with the walk over another.
class ClassCursor {
public:
  ClassCursor() = default;
  explicit ClassCursor(ClassesOfArea const& area) noexcept : ClassCursor(area, area.firstCell) {}
  /// From a cell on.
  ClassCursor(ClassesOfArea const& area, std::uint32_t cell) noexcept : _area(&area), _cell(cell) {}

  /// The class of the cell at a position; nothing where there is no cell. Positions must ascend.
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

EqualTuples::EqualTuples(std::span<ClassesOfArea const> areas)
    : _width(areas.size()), _slots(16, freeSlot) {
  InlineList<ClassCursor> cursors;
  for (ClassesOfArea const& area : areas) {
    _areas.push_back(area);
  }
  for (ClassesOfArea const& area : areas.subspan(1)) {
    cursors.push_back(ClassCursor(area));
  }
  ClassesOfArea const& first = areas.front();
  InlineList<std::uint32_t> tuple;
  for (std::uint32_t cell = first.firstCell; cell < first.endCell; ++cell) {
    std::uint32_t const position = first.positionOf(cell);
    tuple.clear();
    tuple.push_back(first.classes->classOf(cell));
    for (ClassCursor& cursor : cursors) {
      if (auto const classIndex = cursor.classAt(position)) {
        tuple.push_back(*classIndex);
      }
    }
    if (tuple.size() == _width) {
      add(position, getOrCreate(tuple));
    }
  }
  finish(tupleCount());
  _mostTuples = tupleCount() + size() / 16 + 64;
}

std::optional<std::vector<ClassEdit>> EqualTuples::follow(
    std::span<std::span<ClassEdit const> const> editsOfAreas) {
  for (ClassesOfArea& area : _areas) {
    area.findCells();
  }
  std::vector<ClassEdit> edits;
  for (std::uint32_t const position : findPositions(_areas, editsOfAreas)) {
    std::uint32_t const cell = firstCellAt(position);
    bool const isKnown = cell < size() && positionOf(cell) == position;
    std::uint32_t const before = isKnown ? classOf(cell) : noClass;
    std::uint32_t const after = classAt(position);
    if (before != after) {
      edits.push_back({position, cell, before, after});
    }
  }
  if (tupleCount() > _mostTuples) {
    return std::nullopt;
  }
  edit(edits, tupleCount());
  return edits;
}

std::uint32_t EqualTuples::classAt(std::uint32_t position) {
  InlineList<std::uint32_t> tuple;
  for (ClassesOfArea const& area : _areas) {
    ClassCursor cursor(area,
                       area.classes->firstCellAt(area.firstPosition + std::uint64_t{position}));
    if (auto const classIndex = cursor.classAt(position)) {
      tuple.push_back(*classIndex);
    }
  }
  return tuple.size() == _width ? getOrCreate(tuple) : noClass;
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
  std::uint32_t const index = _slots[findSlot(classes)];
  return index == freeSlot ? std::nullopt : std::optional(index);
}

std::uint32_t EqualTuples::getOrCreate(std::span<std::uint32_t const> classes) {
  std::size_t const slot = findSlot(classes);
  if (_slots[slot] != freeSlot) {
    return _slots[slot];
  }
  std::uint32_t const index = tupleCount();
  _slots[slot] = index;
  _tuples.insert(_tuples.end(), classes.begin(), classes.end());
  if ((std::size_t{index} + 1) * 2 > _slots.size()) {
    grow();
  }
  return index;
}

void EqualTuples::grow() {
  _slots.assign(_slots.size() * 2, freeSlot);
  for (std::uint32_t index = 0; index < tupleCount(); ++index) {
    _slots[findSlot(tupleAt(index))] = index;
  }
}

}  // namespace Zorv::Formulas
