#pragma once

#include <cstdint>

#include "Formulas/Evaluation/Cells.h"
#include "Formulas/Evaluation/Value.h"

/// Walks over what functions of ranges are given.
namespace Zorv::Formulas {

/// Visits the single values that a value holds: the existing cells of references, all elements of
/// an array, or the value itself. `visit(element)` returns false to stop.
template <class Visit>
void forEachElement(Value const& value, Visit&& visit) {
  bool goesOn = true;
  auto const visitCell = [&](std::uint32_t /*row*/, std::uint32_t /*column*/,
                             Value const& element) { return goesOn = visit(element); };
  if (value.isReference()) {
    forEachCell(value.asArea(), visitCell);
  } else if (value.isReferences()) {
    for (Area const& area : value.asAreas()) {
      if (goesOn) {
        forEachCell(area, visitCell);
      }
    }
  } else if (value.isArray()) {
    Array const& array = value.asArray();
    for (std::uint32_t row = 0; row < array.rows && goesOn; ++row) {
      for (std::uint32_t column = 0; column < array.columns && goesOn; ++column) {
        goesOn = visit(array.at(row, column));
      }
    }
  } else {
    visit(value);
  }
}

/// How many positions a value has: those of its cells, empty or not, or its elements.
[[nodiscard]] inline std::uint64_t countPositions(Value const& value) noexcept {
  if (value.isReference()) {
    return value.asArea().size();
  }
  if (value.isReferences()) {
    std::uint64_t count = 0;
    for (Area const& area : value.asAreas()) {
      count += area.size();
    }
    return count;
  }
  return value.isArray() ? std::uint64_t{value.asArray().rows} * value.asArray().columns : 1;
}

}  // namespace Zorv::Formulas
