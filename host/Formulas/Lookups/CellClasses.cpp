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
  for (std::uint32_t const number : _classOfCell) {
    ++_firstMembers[number + 1];
  }
  for (std::size_t number = 0; number < classCount; ++number) {
    _firstMembers[number + 1] += _firstMembers[number];
  }
  // Each class is filled from its first place on, which ends at the first one of the next class.
  _members.resize(_positions.size());
  for (std::uint32_t cell = 0; cell < size(); ++cell) {
    _members[_firstMembers[_classOfCell[cell]]++] = cell;
  }
  std::copy_backward(_firstMembers.begin(), _firstMembers.end() - 1, _firstMembers.end());
  _firstMembers.front() = 0;
}

void CellClasses::resizeCells(std::uint32_t count) {
  for (Numbers* const numbers : {&_positions, &_classOfCell, &_members}) {
    numbers->resize(count, boost::container::default_init);
  }
}

void CellClasses::resizeClasses(std::uint32_t count) {
  _firstMembers.resize(std::size_t{count} + 1, boost::container::default_init);
  _firstMembers.front() = 0;
}

std::size_t CellClasses::memory() const noexcept {
  return memoryOf(_positions) + memoryOf(_classOfCell) + memoryOf(_members) +
         memoryOf(_firstMembers);
}

}  // namespace Zorv::Formulas
