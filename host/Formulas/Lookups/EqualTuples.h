#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "Formulas/Lookups/CellClasses.h"
#include "Formulas/Lookups/TableArea.h"

namespace Zorv::Formulas {

/// The positions at which each of several areas of one size holds a value, in classes of equal
/// tuples: two positions are equal when the areas' values there are, area by area.
class EqualTuples final : public CellClasses {
public:
  using Key = TableAreas;

  /// Linear in the number of cells. Requires one area at least.
  explicit EqualTuples(std::span<ClassesOfArea const> areas);

  /// The class of the positions whose values are of these classes, one for each area; nothing where
  /// there is none. Constant time.
  [[nodiscard]] std::optional<std::uint32_t> find(
      std::span<std::uint32_t const> classes) const noexcept;

  /// The bytes that it takes.
  [[nodiscard]] std::size_t memory() const noexcept {
    return memoryOfClasses() + memoryOf(_tuples) + memoryOf(_slots);
  }

private:
  [[nodiscard]] std::uint32_t getOrCreate(std::span<std::uint32_t const> classes);
  [[nodiscard]] std::span<std::uint32_t const> tupleAt(std::uint32_t index) const noexcept {
    return std::span(_tuples).subspan(index * _width, _width);
  }
  [[nodiscard]] std::size_t findSlot(std::span<std::uint32_t const> classes) const noexcept;
  void grow();

  std::size_t _width;                  ///< how many areas there are
  std::vector<std::uint32_t> _tuples;  ///< class after class
  std::vector<std::uint32_t> _slots;   ///< open-addressing hash table, a power of two
};

}  // namespace Zorv::Formulas
