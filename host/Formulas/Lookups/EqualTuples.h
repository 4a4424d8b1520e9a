#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "Formulas/Lookups/CellClasses.h"

namespace Zorv::Formulas {

/// The part of some classes that belongs to an area among their cells.
struct ClassesOfArea {
  CellClasses const* classes = nullptr;
  std::uint32_t firstPosition = 0;  ///< of the area's first cell
  std::uint32_t firstCell = 0;      ///< half-open
  std::uint32_t endCell = 0;

  /// The cells of a class that lie in the area.
  [[nodiscard]] std::span<std::uint32_t const> membersOf(std::uint32_t number) const noexcept;
  /// How many these are.
  [[nodiscard]] std::size_t countOf(std::uint32_t number) const noexcept {
    bool const isAll = firstCell == 0 && endCell == classes->size();
    return isAll ? classes->countOf(number) : membersOf(number).size();
  }
  /// A cell's position in the area.
  [[nodiscard]] std::uint32_t positionOf(std::uint32_t cell) const noexcept {
    return classes->positionOf(cell) - firstPosition;
  }
};

/// The positions at which each of several areas of one size holds a value, in classes of those that
/// hold the same classes of values.
class EqualTuples final : public CellClasses {
public:
  explicit EqualTuples(std::span<ClassesOfArea const> areas);

  /// The class of the positions that hold these classes of values, one for each area.
  [[nodiscard]] std::optional<std::uint32_t> find(
      std::span<std::uint32_t const> classes) const noexcept;

  [[nodiscard]] std::size_t memory() const noexcept override;

private:
  [[nodiscard]] std::uint32_t obtain(std::span<std::uint32_t const> classes);
  [[nodiscard]] std::span<std::uint32_t const> tupleAt(std::uint32_t number) const noexcept {
    return std::span(_tuples).subspan(number * _width, _width);
  }
  [[nodiscard]] std::size_t findSlot(std::span<std::uint32_t const> classes) const noexcept;
  void grow();

  std::size_t _width;                  ///< how many areas there are
  std::vector<std::uint32_t> _tuples;  ///< class after class
  std::vector<std::uint32_t> _slots;   ///< a hash table with open addresses, a power of two
};

}  // namespace Zorv::Formulas
