#pragma once

#include <cstdint>
#include <type_traits>

#include "Formulas/Values/Cells.h"
#include "Formulas/Values/Value.h"

/// Walks over what functions of ranges are given.
namespace Zorv::Formulas {

/// The elements of an array, row by row; see forEachElement().
template <class Visit>
bool forEachInArray(StepRun& run, Array const& array, Visit& visit) {
  constexpr bool takesTimes = std::is_invocable_v<Visit&, Value const&, std::uint64_t>;
  std::uint32_t const rows = takesTimes ? array.storedRows : array.rows;
  for (std::uint32_t row = 0; row < rows; ++row) {
    for (std::uint32_t column = 0; column < array.columns; ++column) {
      run.count(stepsOf(array.at(row, column)));
      bool goesOn = true;
      if constexpr (takesTimes) {
        bool const isLast = row + 1 == array.storedRows;
        std::uint64_t const times = isLast ? array.rows - row : 1;
        goesOn = visit(array.at(row, column), times);
      } else {
        goesOn = visit(array.at(row, column));
      }
      if (!goesOn) {
        return false;
      }
    }
  }
  return true;
}

/// Visits the single values that a value holds: the existing cells of references, all elements of
/// an array, or the value itself. Counts the steps.
///
/// `visit(element)` returns false to stop. `visit(element, times)` is called once for a run of
/// equal elements in a column of an array, with the length of the run. So a function that does not
/// depend on the order of elements costs no more than the cells of the ranges behind the array.
template <class Visit>
void forEachElement(StepMeter& steps, Value const& value, Visit&& visit) {
  auto const visitOnce = [&](Value const& element) {
    if constexpr (std::is_invocable_v<Visit&, Value const&, std::uint64_t>) {
      return visit(element, std::uint64_t{1});
    } else {
      return visit(element);
    }
  };
  bool goesOn = true;
  auto const visitCell = [&](std::uint32_t /*row*/, std::uint32_t /*column*/,
                             Value const& element) { return goesOn = visitOnce(element); };
  if (value.isReference()) {
    forEachCell(steps, value.asArea(), visitCell);
  } else if (value.isReferences()) {
    for (Area const& area : value.asAreas()) {
      if (goesOn) {
        forEachCell(steps, area, visitCell);
      }
    }
  } else if (value.isArray()) {
    StepRun run(steps);
    forEachInArray(run, value.asArray(), visit);
    run.end();
  } else {
    visitOnce(value);
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
