#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <boost/container_hash/hash.hpp>

#include "Formulas/Lookups/Aggregate.h"
#include "Formulas/Lookups/CellClasses.h"
#include "Formulas/Lookups/Memory.h"
#include "Formulas/Lookups/TableArea.h"
#include "Formulas/Values/Area.h"
#include "Utils/TableRange.h"

namespace Zorv::Formulas {

/// The aggregate of the cells of one area for each class of their counterparts in another.
///
/// Classes of a few cells are left out: for these a walk over the cells costs no more. Immutable.
/// Borrows the classes.
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

  /// The same after new values in some areas of the values' table: classes that have such cells are
  /// walked over again. Null where it is cheaper to build all of them at the next use. Requires
  /// that the classes still stand.
  [[nodiscard]] std::unique_ptr<ClassAggregates const> renew(
      std::span<TableRange const> areas) const;

  /// The bytes that it takes.
  [[nodiscard]] std::size_t memory() const noexcept {
    return memoryOf(_classes) + memoryOf(_aggregates);
  }

private:
  /// The place of a class in the lists; their size for one that is left out.
  [[nodiscard]] std::size_t placeOf(std::uint32_t classIndex) const noexcept;
  /// The places of the classes that have cells in some areas; nothing if these have many cells.
  [[nodiscard]] std::optional<std::vector<std::size_t>> findPlaces(
      std::span<TableRange const> areas) const;
  void addPlaces(TableRange const& cells, std::vector<std::size_t>& places) const;
  [[nodiscard]] Aggregate aggregate(std::uint32_t classIndex) const;

  ClassesOfArea _area;
  std::uint32_t _width;
  TableArea _values;
  std::vector<std::uint32_t> _classes;  ///< ascending
  std::vector<Aggregate> _aggregates;   ///< of each of `_classes`
};

}  // namespace Zorv::Formulas
