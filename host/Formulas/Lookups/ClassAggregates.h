#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Formulas/Lookups/Aggregate.h"
#include "Formulas/Lookups/CellClasses.h"
#include "Formulas/Lookups/Memory.h"
#include "Formulas/Lookups/TableArea.h"
#include "Formulas/Values/Area.h"

namespace Zorv::Formulas {

/// The aggregate of the cells of one area for each class of their counterparts in another.
///
/// Classes of a few cells are left out: for these a walk over the cells costs no more. Immutable.
class ClassAggregates {
public:
  /// The areas of the classes, then that of the values.
  using Key = TableAreas;

  /// `width` is that of the classes' area. Linear in the number of cells of both areas. Requires
  /// that the values' area is not larger.
  ClassAggregates(ClassesOfArea const& area, std::uint32_t width, Area const& values);
  ClassAggregates(ClassAggregates const&) = delete;
  ClassAggregates& operator=(ClassAggregates const&) = delete;
  ~ClassAggregates() = default;

  /// The aggregate of a class, to the last bit that of a walk over its cells; null for a class of a
  /// few cells. Logarithmic.
  [[nodiscard]] Aggregate const* find(std::uint32_t classIndex) const noexcept;

  /// The bytes that it takes.
  [[nodiscard]] std::size_t memory() const noexcept {
    return memoryOf(_classes) + memoryOf(_aggregates);
  }

private:
  std::vector<std::uint32_t> _classes;  ///< ascending
  std::vector<Aggregate> _aggregates;   ///< of each of `_classes`
};

}  // namespace Zorv::Formulas
