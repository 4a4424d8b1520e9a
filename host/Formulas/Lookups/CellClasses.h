#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include <boost/container/vector.hpp>

#include "Formulas/Lookups/ClassEdit.h"
#include "Formulas/Lookups/ListEdits.h"
#include "Formulas/Lookups/Memory.h"
#include "Utils/Prefetch.h"

namespace Zorv::Formulas {

/// Partition of an area's cells into equivalence classes.
///
/// A cell is known by its index among these cells, which are in row-major order, or by its position
/// in the area: its row times the area's width plus its column. Classes have indexes from 0. Twelve
/// bytes a cell, four a class. Threads: immutable once built, but for edits, which require
/// exclusive access. A class that has lost all of its cells is still there.
class CellClasses {
public:
  CellClasses(CellClasses const&) = delete;
  CellClasses& operator=(CellClasses const&) = delete;

  /// How many cells there are.
  [[nodiscard]] std::uint32_t size() const noexcept {
    return static_cast<std::uint32_t>(_positions.size());
  }
  [[nodiscard]] std::uint32_t positionOf(std::uint32_t cell) const noexcept {
    return _positions[cell];
  }
  [[nodiscard]] std::uint32_t classOf(std::uint32_t cell) const noexcept {
    return _classOfCell[cell];
  }
  [[nodiscard]] std::uint32_t classCount() const noexcept {
    return static_cast<std::uint32_t>(_firstMembers.size() - 1);
  }
  /// The cells of a class, ascending.
  [[nodiscard]] std::span<std::uint32_t const> membersOf(std::uint32_t classIndex) const noexcept {
    return {_members.data() + _firstMembers[classIndex], countOf(classIndex)};
  }
  /// How many cells a class has.
  [[nodiscard]] std::uint32_t countOf(std::uint32_t classIndex) const noexcept {
    return _firstMembers[classIndex + 1] - _firstMembers[classIndex];
  }
  /// Makes the next countOf() for a class fast.
  void prefetchCount(std::uint32_t classIndex) const noexcept {
    prefetch(_firstMembers, classIndex);
  }
  /// The first cell at a position or behind it; size() where there is none. Logarithmic.
  [[nodiscard]] std::uint32_t firstCellAt(std::uint64_t position) const noexcept;

protected:
  CellClasses() = default;
  ~CellClasses() = default;

  /// The bytes that the lists take.
  [[nodiscard]] std::size_t memoryOfClasses() const noexcept;

  /// Makes room for some cells.
  void reserve(std::size_t count) {
    _positions.reserve(count);
    _classOfCell.reserve(count);
  }
  /// Adds a cell behind all others.
  void add(std::uint32_t position, std::uint32_t classIndex) {
    _positions.push_back(position);
    _classOfCell.push_back(classIndex);
  }
  /// Ends the adding.
  void finish(std::uint32_t classCount);

  /// Gives cells other classes, adds some and removes some. Requires edits that ascend, and as many
  /// classes as before at least. Moves the lists where they change, and so takes a millisecond for
  /// a million cells, whatever the edits are. If it throws std::bad_alloc, the classes may only be
  /// destroyed.
  void edit(std::span<ClassEdit const> edits, std::uint32_t classCount);

  // A builder that knows the place of everything fills these lists instead, if need be by several
  // threads.

  /// Sizes the lists of the cells, with indeterminate elements.
  void resizeCells(std::uint32_t count);
  /// Sizes the list of the classes, with indeterminate elements.
  void resizeClasses(std::uint32_t count);
  /// The result of positionOf(), by cell.
  [[nodiscard]] std::span<std::uint32_t> positions() noexcept {
    return {_positions.data(), _positions.size()};
  }
  /// The result of classOf(), by cell.
  [[nodiscard]] std::span<std::uint32_t> classesOfCells() noexcept {
    return {_classOfCell.data(), _classOfCell.size()};
  }
  /// The cells, class after class.
  [[nodiscard]] std::span<std::uint32_t> members() noexcept {
    return {_members.data(), _members.size()};
  }
  /// Where each class ends among the members, by class.
  [[nodiscard]] std::span<std::uint32_t> ends() noexcept {
    return {_firstMembers.data() + 1, _firstMembers.size() - 1};
  }

private:
  /// Unlike a standard vector it can grow without touching its memory: the threads that fill it
  /// touch it.
  using Indexes = boost::container::vector<std::uint32_t>;

  /// A cell that comes into a class, or leaves it.
  struct MemberEdit {
    std::uint32_t classIndex;
    ListEdit<std::uint32_t> ofMembers;
  };

  /// The edits of `_members`, with the cells' new indexes.
  [[nodiscard]] std::vector<MemberEdit> findMemberEdits(std::span<ClassEdit const> edits) const;
  [[nodiscard]] std::uint32_t findMember(std::uint32_t classIndex,
                                         std::uint32_t cell) const noexcept;
  void moveFirstMembers(std::span<MemberEdit const> edits) noexcept;
  /// Gives the members the indexes that the cells have after edits.
  void renumberMembers(std::span<ClassEdit const> edits);
  void editCells(std::span<ClassEdit const> edits);

  Indexes _positions;
  Indexes _classOfCell;
  Indexes _members;       ///< class after class
  Indexes _firstMembers;  ///< where each class begins in `_members`, and one past the last
};

/// The part of some classes that lies in an area.
struct ClassesOfArea {
  CellClasses const* classes = nullptr;
  std::uint32_t firstPosition = 0;  ///< of the area's first cell
  std::uint64_t endPosition = 0;
  std::uint32_t firstCell = 0;  ///< half-open
  std::uint32_t endCell = 0;

  ClassesOfArea() = default;
  /// The part between two positions.
  ClassesOfArea(CellClasses const& all, std::uint64_t from, std::uint64_t to) noexcept
      : classes(&all), firstPosition(static_cast<std::uint32_t>(from)), endPosition(to) {
    findCells();
  }
  /// All classes.
  explicit ClassesOfArea(CellClasses const& all) noexcept
      : ClassesOfArea(all, 0, std::numeric_limits<std::uint64_t>::max()) {}

  /// Finds the cells again, after an edit of the classes.
  void findCells() noexcept {
    firstCell = classes->firstCellAt(firstPosition);
    endCell = classes->firstCellAt(endPosition);
  }
  /// True if the area has a position of the classes.
  [[nodiscard]] bool contains(std::uint32_t position) const noexcept {
    return firstPosition <= position && position < endPosition;
  }

  /// The cells of a class that lie in the area.
  [[nodiscard]] std::span<std::uint32_t const> membersOf(std::uint32_t classIndex) const noexcept;
  /// How many these are.
  [[nodiscard]] std::size_t countOf(std::uint32_t classIndex) const noexcept {
    bool const isAll = firstCell == 0 && endCell == classes->size();
    return isAll ? classes->countOf(classIndex) : membersOf(classIndex).size();
  }
  /// A cell's position in the area.
  [[nodiscard]] std::uint32_t positionOf(std::uint32_t cell) const noexcept {
    return classes->positionOf(cell) - firstPosition;
  }
};

}  // namespace Zorv::Formulas
