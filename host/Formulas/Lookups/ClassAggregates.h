#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <boost/container_hash/hash.hpp>

#include "Formulas/Lookups/Aggregate.h"
#include "Formulas/Lookups/CellClasses.h"
#include "Formulas/Lookups/Memory.h"
#include "Formulas/Lookups/SummedValue.h"
#include "Formulas/Lookups/TableArea.h"
#include "Formulas/Values/Area.h"
#include "Utils/TableRange.h"

namespace Zorv::Formulas {

/// The aggregate of the cells of one area for each class of their counterparts in another.
///
/// Classes of a few cells are left out: for these a walk over the cells costs no more. Keeps the
/// values, eight bytes for each cell of the classes, so that an edit costs a walk over these and
/// not over a table. Borrows the classes.
class ClassAggregates {
public:
  struct Key {
    TableAreas classes;  ///< the areas of the classes
    TableArea values;

    friend bool operator==(Key const&, Key const&) noexcept = default;
    friend std::size_t hash_value(Key const& key) noexcept {
      std::size_t seed = hash_value(key.classes);
      boost::hash_combine(seed, key.values);
      return seed;
    }
  };

  /// `width` is that of the classes' area. Linear in the number of cells of both areas. Requires
  /// that the values' area is not larger.
  ClassAggregates(ClassesOfArea const& area, std::uint32_t width, Area const& values);
  /// The aggregate of a class, to the last bit that of a walk over its cells; null for a class of a
  /// few cells. Logarithmic.
  [[nodiscard]] Aggregate const* find(std::uint32_t classIndex) const noexcept;

  /// Follows edits of the classes, and new values in some areas of the values' table: classes that
  /// have such cells are aggregated again. False where it is better to build all of them again.
  /// Requires exclusive access. If it gives false or throws std::bad_alloc, the aggregates may only
  /// be destroyed.
  [[nodiscard]] bool follow(std::span<ClassEdit const> edits,
                            std::span<TableRange const> areasOfValues);

  /// The bytes that it takes.
  [[nodiscard]] std::size_t memory() const noexcept {
    return memoryOf(_valueOfCell) + memoryOf(_classes) + memoryOf(_aggregates);
  }

private:
  using ClassIndexes = std::vector<std::uint32_t>;

  [[nodiscard]] std::uint32_t cellCount() const noexcept { return _area.endCell - _area.firstCell; }
  /// The position in the area of the classes that a position of the values' table stands for.
  [[nodiscard]] std::uint64_t positionOf(unsigned long row, unsigned long column) const noexcept {
    return std::uint64_t{row - _values.firstRow} * _width + (column - _values.firstColumn);
  }
  /// The first cell of the area for such a position or one behind it.
  [[nodiscard]] std::uint32_t firstCellAt(unsigned long row, unsigned long column) const noexcept;
  /// Reads the values of a part of the values' area. Positions without a value are left out.
  void readValues(TableRange const& range);
  /// Reads the value for a position.
  [[nodiscard]] SummedValue readValue(std::uint32_t position) const noexcept;
  [[nodiscard]] Aggregate aggregate(std::uint32_t classIndex) const noexcept;

  /// Makes the edits among the values, and lists the classes that they touch.
  void followClasses(std::span<ClassEdit const> edits, ClassIndexes& touched);
  /// Reads values again, and lists their classes. False where these are very many.
  [[nodiscard]] bool followValues(std::span<TableRange const> areas, ClassIndexes& touched);
  /// Takes a list in any order, with repetitions.
  void aggregateAgain(ClassIndexes& touched);

  ClassesOfArea _area;
  std::uint32_t _width;
  TableArea _values;
  std::vector<SummedValue> _valueOfCell;  ///< of each cell of the area
  ClassIndexes _classes;                  ///< ascending
  std::vector<Aggregate> _aggregates;     ///< of each of `_classes`
};

}  // namespace Zorv::Formulas
