#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Formulas/Evaluation/Area.h"
#include "Formulas/Lookups/EqualTuples.h"
#include "Formulas/Lookups/Gathered.h"
#include "Formulas/Lookups/LookupIndex.h"

namespace Zorv::Formulas {

/// What is gathered from the cells of one area, by the classes of their counterparts in another.
///
/// Classes of a few cells are left out: for these, visiting the cells costs no more.
class ClassTotals final : public LookupIndex {
public:
  /// `width` is that of the classes' area; the values' area is not larger. Linear in the number of
  /// cells of both.
  ClassTotals(ClassesOfArea const& area, std::uint32_t width, Area const& values);

  /// What is gathered by a class, exactly as from its cells one after the other; null for a class
  /// of a few cells.
  [[nodiscard]] Gathered const* find(std::uint32_t number) const noexcept;

  [[nodiscard]] std::size_t memory() const noexcept override;

private:
  std::vector<std::uint32_t> _classes;  ///< ascending
  std::vector<Gathered> _totals;        ///< beside `_classes`
};

}  // namespace Zorv::Formulas
