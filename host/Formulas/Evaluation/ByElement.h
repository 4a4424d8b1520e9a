#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/Values/Arrays.h"

/// Evaluation by element.
namespace Zorv::Formulas {

/// A value as one element of an array. A reference is read; an array gives its first value, since
/// arrays do not nest.
[[nodiscard]] Value toElement(Evaluator& evaluator, Value const& value);

/// The array of the results of `function(std::span<Value const>)` for the elements of several
/// values, at least one of which is an array.
template <class Function>
[[nodiscard]] Value mapElements(Evaluator& evaluator, std::span<Value const> values,
                                Function&& function) {
  Arena& arena = evaluator.arena();
  Extent const extent = findExtent(values);
  std::uint64_t const elementCount = std::uint64_t{extent.storedRows} * extent.columns;
  evaluator.steps().spend(elementCount * values.size());
  std::span<Value> const results = arena.makeArray<Value>(elementCount);
  std::span<Value> const elements = arena.makeArray<Value>(values.size());
  auto result = results.begin();
  for (std::uint32_t row = 0; row < extent.storedRows; ++row) {
    for (std::uint32_t column = 0; column < extent.columns; ++column) {
      std::ranges::transform(values, elements.begin(),
                             [&](Value const& value) { return elementOf(value, row, column); });
      *result++ = toElement(evaluator, function(std::span<Value const>(elements)));
    }
  }
  return Value::array(
      arena.make(Array{extent.rows, extent.columns, extent.storedRows, results.data()}));
}

}  // namespace Zorv::Formulas
