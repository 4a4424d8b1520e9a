#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "Formulas/Evaluation/Arena.h"
#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/Evaluation/Value.h"

/// Evaluation by element.
namespace Zorv::Formulas {

/// The values of an area's cells. Throws EvaluationTooLarge for an area that no function should
/// walk cell by cell.
[[nodiscard]] Array const& readArray(Arena& arena, Area const& area);

/// The size of what becomes of several values evaluated by element.
struct Extent {
  std::uint32_t rows = 1;
  std::uint32_t columns = 1;
  std::uint32_t storedRows = 1;
};

/// The extent that holds every array among some values, the largest of each dimension. Throws
/// EvaluationTooLarge for one that no function should walk.
[[nodiscard]] Extent findExtent(std::span<Value const> values);

/// What a value gives for an element: single values and single rows and columns repeat; past the
/// end of others lies `#N/A`.
[[nodiscard]] inline Value elementOf(Value const& value, std::uint32_t row,
                                     std::uint32_t column) noexcept {
  if (!value.isArray()) {
    return value;
  }
  Array const& array = value.asArray();
  std::uint32_t const arrayRow = array.rows == 1 ? 0 : row;
  std::uint32_t const arrayColumn = array.columns == 1 ? 0 : column;
  return arrayRow < array.rows && arrayColumn < array.columns
             ? array.at(arrayRow, arrayColumn)
             : Value::error(FormulaErrorCode::NotAvailable);
}

/// The one value that stands in an array's element: a reference is read, and of an array the first
/// value is taken, since arrays do not nest.
[[nodiscard]] Value toElement(Evaluator& evaluator, Value const& value);

/// The array of what `function` makes of each element of an array.
template <class Function>
[[nodiscard]] Value mapArray(Arena& arena, Array const& array, Function&& function) {
  std::size_t const count = std::size_t{array.storedRows} * array.columns;
  std::span<Value> const results = arena.makeArray<Value>(count);
  std::transform(array.values, array.values + count, results.begin(), function);
  return Value::array(
      arena.make(Array{array.rows, array.columns, array.storedRows, results.data()}));
}

/// The array of what `function(std::span<Value const>)` makes of the elements of several values, at
/// least one of which is an array.
template <class Function>
[[nodiscard]] Value mapElements(Evaluator& evaluator, std::span<Value const> values,
                                Function&& function) {
  Arena& arena = evaluator.arena();
  Extent const extent = findExtent(values);
  std::span<Value> const results =
      arena.makeArray<Value>(std::size_t{extent.storedRows} * extent.columns);
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
