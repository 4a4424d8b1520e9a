#include "Formulas/Values/Arrays.h"

#include <fmt/format.h>

#include "Formulas/EvaluationLimitError.h"
#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

/// Areas up to this height are stored whole, without a look at where their cells end.
constexpr std::uint32_t alwaysStoredRows = 256;

std::uint32_t countRowsWithCells(StepMeter& steps, Area const& area) {
  std::uint32_t rows = 0;
  forEachCell(steps, area,
              [&](std::uint32_t row, std::uint32_t /*column*/, Value const& /*value*/) {
                rows = row + 1;
                return true;
              });
  return rows;
}

}  // namespace

void checkElementCount(std::uint64_t count, std::uint64_t most) {
  if (count > most) {
    throw EvaluationLimitError(fmt::format("the formula needs more than {} values at once", most));
  }
}

void checkArraySize(double rows, double columns) {
  constexpr double most = 2.0 * static_cast<double>(mostElements);
  checkElementCount(static_cast<std::uint64_t>(std::min(rows * columns, most)));
}

Array const& readArray(Arena& arena, Area const& area) {
  checkElementCount(area.size());
  // One empty row represents all rows below the last cell.
  std::uint32_t const storedRows =
      area.height() <= alwaysStoredRows
          ? area.height()
          : std::min(area.height(), countRowsWithCells(arena.steps(), area) + 1);
  std::span<Value> const values = arena.makeArray<Value>(std::size_t{storedRows} * area.width());
  forEachCell(arena.steps(), area,
              [&](std::uint32_t row, std::uint32_t column, Value const& value) {
                values[std::size_t{row} * area.width() + column] = value;
                return true;
              });
  return arena.make(Array{area.height(), area.width(), storedRows, values.data()});
}

Extent findExtent(std::span<Value const> values) {
  Extent extent;
  for (Value const& value : values) {
    if (value.isArray()) {
      extent.rows = std::max(extent.rows, value.asArray().rows);
      extent.columns = std::max(extent.columns, value.asArray().columns);
    }
  }
  checkElementCount(std::uint64_t{extent.rows} * extent.columns);
  for (Value const& value : values) {
    if (value.isArray() && value.asArray().rows != 1) {
      Array const& array = value.asArray();
      // Past the end of a shorter array one more row is stored, for the #N/A of all those below.
      std::uint32_t const needed = array.rows < extent.rows ? array.rows + 1 : array.storedRows;
      extent.storedRows = std::max(extent.storedRows, needed);
    }
  }
  return extent;
}

}  // namespace Zorv::Formulas
