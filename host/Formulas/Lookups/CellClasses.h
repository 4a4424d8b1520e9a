#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

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
    return std::span(_members).subspan(_firstMembers[number], countOf(number));
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

private:
  std::vector<std::uint32_t> _positions;
  std::vector<std::uint32_t> _classOfCell;
  std::vector<std::uint32_t> _members;       ///< class after class
  std::vector<std::uint32_t> _firstMembers;  ///< of each class in `_members`, and one past the last
};

}  // namespace Zorv::Formulas
