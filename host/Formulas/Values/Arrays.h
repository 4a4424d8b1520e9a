#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "Formulas/Values/Arena.h"
#include "Formulas/Values/Value.h"

/// Arrays and their elements.
namespace Zorv::Formulas {

/// How many elements an array may have, however many of its rows are equal: some functions walk
/// over all of them.
inline constexpr std::uint64_t mostElements = std::uint64_t{1} << 25U;

/// Throws EvaluationLimitError for more than `most` elements.
void checkElementCount(std::uint64_t count, std::uint64_t most = mostElements);

/// The same for an array of so many rows and columns.
void checkArraySize(double rows, double columns);

/// The values of an area's cells. Throws EvaluationLimitError for more than `mostElements` cells,
/// existing or not.
[[nodiscard]] Array const& readArray(Arena& arena, Area const& area);

/// The size of an array that results from several values.
struct Extent {
  std::uint32_t rows = 1;
  std::uint32_t columns = 1;
  std::uint32_t storedRows = 1;
};

/// The extent that holds every array among some values, the largest of each dimension. Throws
/// EvaluationLimitError for one of more than `mostElements`.
[[nodiscard]] Extent findExtent(std::span<Value const> values);

/// The element of a value at a position of a larger extent. Single values, rows and columns repeat;
/// past the end of others lies `#N/A`.
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

/// The array of what `function` makes of each element of an array.
template <class Function>
[[nodiscard]] Value mapArray(Arena& arena, Array const& array, Function&& function) {
  std::size_t const count = std::size_t{array.storedRows} * array.columns;
  std::span<Value> const results = arena.makeArray<Value>(count);
  std::transform(array.values, array.values + count, results.begin(), function);
  return Value::array(
      arena.make(Array{array.rows, array.columns, array.storedRows, results.data()}));
}

}  // namespace Zorv::Formulas
