#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include <boost/container/vector.hpp>

#include "Formulas/Lookups/LookupIndex.h"
#include "Formulas/Lookups/Prefetch.h"

namespace Zorv::Formulas {

/// Cells of an area in their order, row by row, sorted into classes.
///
/// A cell is told by its number among these cells or by its position in the area, the row times the
/// area's width plus the column; a class by a number from 0 on. Twelve bytes a cell, four a class.
class CellClasses : public LookupIndex {
public:
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
  [[nodiscard]] std::span<std::uint32_t const> membersOf(std::uint32_t number) const noexcept {
    return {_members.data() + _firstMembers[number], countOf(number)};
  }
  /// How many cells a class has.
  [[nodiscard]] std::uint32_t countOf(std::uint32_t number) const noexcept {
    return _firstMembers[number + 1] - _firstMembers[number];
  }
  /// Makes the next countOf() for a class fast.
  void prepare(std::uint32_t number) const noexcept { prefetch(_firstMembers, number); }
  /// The first cell at a position or behind it; size() where there is none.
  [[nodiscard]] std::uint32_t firstCellAt(std::uint64_t position) const noexcept;

  [[nodiscard]] std::size_t memory() const noexcept override;

protected:
  /// Takes room for some cells.
  void reserve(std::size_t count) {
    _positions.reserve(count);
    _classOfCell.reserve(count);
  }
  /// Adds a cell behind all others.
  void add(std::uint32_t position, std::uint32_t number) {
    _positions.push_back(position);
    _classOfCell.push_back(number);
  }
  /// Ends the adding.
  void finish(std::uint32_t classCount);

  // Instead of adding cells and finishing, whoever knows where everything goes fills these lists,
  // by several threads if need be.

  /// Makes the lists of the cells, with any numbers in them.
  void resizeCells(std::uint32_t count);
  /// Makes the list of the classes, with any numbers in it.
  void resizeClasses(std::uint32_t count);
  /// What positionOf() gives, by cell.
  [[nodiscard]] std::span<std::uint32_t> positions() noexcept {
    return {_positions.data(), _positions.size()};
  }
  /// What classOf() gives, by cell.
  [[nodiscard]] std::span<std::uint32_t> classesOfCells() noexcept {
    return {_classOfCell.data(), _classOfCell.size()};
  }
  /// The cells of one class after the other.
  [[nodiscard]] std::span<std::uint32_t> members() noexcept {
    return {_members.data(), _members.size()};
  }
  /// Where each class ends among the members, by class.
  [[nodiscard]] std::span<std::uint32_t> ends() noexcept {
    return {_firstMembers.data() + 1, _firstMembers.size() - 1};
  }

private:
  /// Unlike a standard vector it can grow without touching its memory, which is done by the threads
  /// that fill it.
  using Numbers = boost::container::vector<std::uint32_t>;

  Numbers _positions;
  Numbers _classOfCell;
  Numbers _members;       ///< class after class
  Numbers _firstMembers;  ///< of each class in `_members`, and one past the last
};

}  // namespace Zorv::Formulas
