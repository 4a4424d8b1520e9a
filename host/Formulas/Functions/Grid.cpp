#include "Formulas/Functions/Grid.h"

#include <cstddef>
#include <span>

namespace Zorv::Formulas {

std::optional<Grid> Grid::of(Value const& value) noexcept {
  if (value.isReference()) {
    return Grid(value, value.asArea().height(), value.asArea().width());
  }
  if (value.isArray()) {
    return Grid(value, value.asArray().rows, value.asArray().columns);
  }
  bool const isNone = value.isError() || value.isMissing() || value.isReferences();
  return isNone ? std::nullopt : std::optional(Grid(value, 1, 1));
}

Value Grid::part(Arena& arena, std::uint32_t firstRow, std::uint32_t firstColumn,
                 std::uint32_t rowCount, std::uint32_t columnCount) const {
  if (_value.isReference()) {
    return Value::reference(
        areaOf(firstRow, firstRow + rowCount, firstColumn, firstColumn + columnCount));
  }
  if (rowCount == 1 && columnCount == 1) {
    return at(firstRow, firstColumn);
  }
  std::uint32_t const stored =
      firstRow < storedRows() ? std::min(rowCount, storedRows() - firstRow) : 1;
  std::span<Value> const values = arena.makeArray<Value>(std::size_t{stored} * columnCount);
  auto value = values.begin();
  for (std::uint32_t row = 0; row < stored; ++row) {
    for (std::uint32_t column = 0; column < columnCount; ++column) {
      *value++ = at(firstRow + row, firstColumn + column);
    }
  }
  return Value::array(arena.make(Array{rowCount, columnCount, stored, values.data()}));
}

Area Grid::areaOf(std::uint32_t firstRow, std::uint32_t endRow, std::uint32_t firstColumn,
                  std::uint32_t endColumn) const noexcept {
  Area const& area = _value.asArea();
  return {area.table, area.firstRow + firstRow, area.firstColumn + firstColumn,
          area.firstRow + endRow, area.firstColumn + endColumn};
}

}  // namespace Zorv::Formulas
