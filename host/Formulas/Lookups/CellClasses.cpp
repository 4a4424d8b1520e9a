#include "Formulas/Lookups/CellClasses.h"

#include <algorithm>

namespace Zorv::Formulas {

std::uint32_t CellClasses::firstCellAt(std::uint64_t position) const noexcept {
  auto const found = std::ranges::lower_bound(_positions, position);
  return static_cast<std::uint32_t>(found - _positions.begin());
}

void CellClasses::finish(std::uint32_t classCount) {
  _positions.shrink_to_fit();
  _classOfCell.shrink_to_fit();
  _firstMembers.assign(std::size_t{classCount} + 1, 0);
  for (std::uint32_t const classIndex : _classOfCell) {
    ++_firstMembers[classIndex + 1];
  }
  for (std::size_t classIndex = 0; classIndex < classCount; ++classIndex) {
    _firstMembers[classIndex + 1] += _firstMembers[classIndex];
  }
  // A class that is filled from its begin on ends at the begin of the next one.
  _members.resize(_positions.size());
  for (std::uint32_t cell = 0; cell < size(); ++cell) {
    _members[_firstMembers[_classOfCell[cell]]++] = cell;
  }
  std::copy_backward(_firstMembers.begin(), _firstMembers.end() - 1, _firstMembers.end());
  _firstMembers.front() = 0;
}

void CellClasses::resizeCells(std::uint32_t count) {
  for (Indexes* const indexes : {&_positions, &_classOfCell, &_members}) {
    indexes->resize(count, boost::container::default_init);
  }
}

void CellClasses::resizeClasses(std::uint32_t count) {
  _firstMembers.resize(std::size_t{count} + 1, boost::container::default_init);
  _firstMembers.front() = 0;
}

std::size_t CellClasses::memoryOfClasses() const noexcept {
  return memoryOf(_positions) + memoryOf(_classOfCell) + memoryOf(_members) +
         memoryOf(_firstMembers);
}

std::span<std::uint32_t const> ClassesOfArea::membersOf(std::uint32_t classIndex) const noexcept {
  auto const members = classes->membersOf(classIndex);
  if (firstCell == 0 && endCell == classes->size()) {
    return members;
  }
  return {std::ranges::lower_bound(members, firstCell), std::ranges::lower_bound(members, endCell)};
}

}  // namespace Zorv::Formulas
