#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "Formulas/Lookups/CellClasses.h"
#include "Formulas/Lookups/InlineList.h"
#include "Formulas/Lookups/TableArea.h"

namespace Zorv::Formulas {

/// The positions at which each of several areas of one size holds a value, in classes of equal
/// tuples: two positions are equal when the areas' values there are, area by area.
class EqualTuples final : public CellClasses {
public:
  using Key = TableAreas;

  /// Linear in the number of cells. Requires one area at least. Borrows the areas' classes for
  /// follow().
  explicit EqualTuples(std::span<ClassesOfArea const> areas);

  /// The class of the positions whose values are of these classes, one for each area; nothing where
  /// there is none. Constant time.
  [[nodiscard]] std::optional<std::uint32_t> find(
      std::span<std::uint32_t const> classes) const noexcept;

  /// Follows edits of the areas' classes, one list for each area. Gives the edits of the tuples'
  /// classes, ascending; nothing where it is better to build all of them again. Requires exclusive
  /// access. If it gives nothing or throws std::bad_alloc, the tuples may only be destroyed.
  [[nodiscard]] std::optional<std::vector<ClassEdit>> follow(
      std::span<std::span<ClassEdit const> const> editsOfAreas);

  /// The bytes that it takes.
  [[nodiscard]] std::size_t memory() const noexcept {
    return memoryOfClasses() + memoryOf(_tuples) + memoryOf(_slots);
  }

private:
  /// The class of the tuple at a position, which is created if it is new, or `noClass`.
  [[nodiscard]] std::uint32_t classAt(std::uint32_t position);
  [[nodiscard]] std::uint32_t tupleCount() const noexcept {
    return static_cast<std::uint32_t>(_tuples.size() / _width);
  }
  [[nodiscard]] std::uint32_t getOrCreate(std::span<std::uint32_t const> classes);
  [[nodiscard]] std::span<std::uint32_t const> tupleAt(std::uint32_t index) const noexcept {
    return std::span(_tuples).subspan(index * _width, _width);
  }
  [[nodiscard]] std::size_t findSlot(std::span<std::uint32_t const> classes) const noexcept;
  void grow();

  InlineList<ClassesOfArea> _areas;
  std::size_t _width;  ///< how many areas there are
  std::size_t _mostTuples = 0;
  std::vector<std::uint32_t> _tuples;  ///< class after class
  std::vector<std::uint32_t> _slots;   ///< open-addressing hash table, a power of two
};

}  // namespace Zorv::Formulas
