#include "Formulas/Lookups/CellClasses.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace Zorv::Formulas {

namespace {

/// From a cell on, all are so much farther behind, modulo 2^32.
struct CellShift {
  std::uint32_t firstCell;
  std::uint32_t shift;
};

/// How edits move the cells between them, one entry for each stretch of cells with a new index.
std::vector<CellShift> findShifts(std::span<ClassEdit const> edits) {
  std::vector<CellShift> shifts;
  for (ClassEdit const& edit : edits) {
    if (std::uint32_t const step = edit.shiftOfNext(); step != 0) {
      if (!shifts.empty() && shifts.back().firstCell == edit.cell) {
        shifts.back().shift += step;
      } else {
        shifts.push_back({edit.cell, step});
      }
    }
  }
  return shifts;
}

}  // namespace

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

void CellClasses::edit(std::span<ClassEdit const> edits, std::uint32_t classCount) {
  // Classes without cells lie behind all others.
  std::uint32_t const oldCount = this->classCount();
  resizeWithRoom(_firstMembers, std::size_t{classCount} + 1);
  std::fill(_firstMembers.begin() + oldCount + 1, _firstMembers.end(), size());

  std::vector<MemberEdit> const memberEdits = findMemberEdits(edits);
  std::vector<ListEdit<std::uint32_t>> ofMembers;
  std::ranges::transform(memberEdits, std::back_inserter(ofMembers), &MemberEdit::ofMembers);
  renumberMembers(edits);
  applyEdits<Indexes>(_members, ofMembers);
  moveFirstMembers(memberEdits);
  editCells(edits);
}

auto CellClasses::findMemberEdits(std::span<ClassEdit const> edits) const
    -> std::vector<MemberEdit> {
  std::vector<MemberEdit> result;
  std::uint32_t shift = 0;
  for (ClassEdit const& edit : edits) {
    if (edit.after != noClass) {
      result.push_back({edit.after, {findMember(edit.after, edit.cell), true, edit.cell + shift}});
    }
    if (edit.before != noClass) {
      result.push_back({edit.before, {findMember(edit.before, edit.cell), false, 0}});
    }
    shift += edit.shiftOfNext();
  }
  // Within a class they stand in the order of the cells.
  std::ranges::stable_sort(result, {}, &MemberEdit::classIndex);
  return result;
}

std::uint32_t CellClasses::findMember(std::uint32_t classIndex, std::uint32_t cell) const noexcept {
  auto const members = membersOf(classIndex);
  auto const found = std::ranges::lower_bound(members, cell);
  return _firstMembers[classIndex] + static_cast<std::uint32_t>(found - members.begin());
}

void CellClasses::moveFirstMembers(std::span<MemberEdit const> edits) noexcept {
  std::uint32_t shift = 0;
  for (std::size_t index = 0; index < edits.size(); ++index) {
    shift += edits[index].ofMembers.isInsertion ? 1U : ~0U;
    auto const end = index + 1 < edits.size()
                         ? _firstMembers.begin() + edits[index + 1].classIndex + 1
                         : _firstMembers.end();
    auto const begin = _firstMembers.begin() + edits[index].classIndex + 1;
    if (shift != 0) {
      std::for_each(begin, end, [shift](std::uint32_t& first) { first += shift; });
    }
  }
}

void CellClasses::renumberMembers(std::span<ClassEdit const> edits) {
  constexpr std::size_t fewShifts = 8;
  std::vector<CellShift> const shifts = findShifts(edits);
  if (shifts.size() <= fewShifts) {
    // From the back on: a member that has moved has still passed the shifts before it.
    for (std::size_t index = shifts.size(); index > 0; --index) {
      auto const [firstCell, shift] = shifts[index - 1];
      for (std::uint32_t& member : _members) {
        member += member >= firstCell ? shift : 0;
      }
    }
    return;
  }
  Indexes newIndexes(_positions.size());
  std::iota(newIndexes.begin(), newIndexes.end(), 0U);
  std::uint32_t shift = 0;
  for (std::size_t index = 0; index < shifts.size(); ++index) {
    shift += shifts[index].shift;
    auto const end = index + 1 < shifts.size() ? newIndexes.begin() + shifts[index + 1].firstCell
                                               : newIndexes.end();
    std::for_each(newIndexes.begin() + shifts[index].firstCell, end,
                  [shift](std::uint32_t& cell) { cell += shift; });
  }
  for (std::uint32_t& member : _members) {
    member = newIndexes[member];
  }
}

void CellClasses::editCells(std::span<ClassEdit const> edits) {
  std::vector<ListEdit<std::uint32_t>> ofPositions;
  std::vector<ListEdit<std::uint32_t>> ofClasses;
  for (ClassEdit const& edit : edits) {
    if (edit.before != noClass && edit.after != noClass) {
      _classOfCell[edit.cell] = edit.after;
    } else {
      bool const isInsertion = edit.before == noClass;
      ofPositions.push_back({edit.cell, isInsertion, edit.position});
      ofClasses.push_back({edit.cell, isInsertion, edit.after});
    }
  }
  applyEdits<Indexes>(_positions, ofPositions);
  applyEdits<Indexes>(_classOfCell, ofClasses);
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
