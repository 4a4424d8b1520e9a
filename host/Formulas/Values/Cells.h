#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

#include "DOM/Table.h"
#include "Formulas/Limits/StepMeter.h"
#include "Formulas/TableContext.h"
#include "Formulas/Values/Area.h"
#include "Formulas/Values/Value.h"

/// Reading cells in place.
namespace Zorv::Formulas {

/// A cell's or a constant's value; borrows its text.
[[nodiscard]] Value fromFormulaValue(FormulaValue const& value) noexcept;

/// A single value as the value of a cell or a formula; the empty one for any other.
[[nodiscard]] inline FormulaValue toFormulaValue(Value const& value) {
  switch (value.kind()) {
    case Value::Kind::Number:
      return FormulaModel::FormulaNumber{FloatNumber(value.asNumber())};
    case Value::Kind::Text:
      return FormulaModel::FormulaString{std::string(value.asText())};
    case Value::Kind::Boolean:
      return FormulaModel::FormulaBoolean{value.asBoolean()};
    case Value::Kind::Error:
      return FormulaModel::FormulaError{value.asError()};
    default:
      return FormulaModel::FormulaEmpty{};
  }
}

/// The value at a distance from an area's first cell; empty where there is no cell.
[[nodiscard]] Value readCell(Area const& area, std::uint32_t row, std::uint32_t column);

/// An upper bound of the existing cells in an area. Constant time.
[[nodiscard]] std::uint64_t maxCellCount(Area const& area);

/// Visits the existing cells of an area, row by row: `visit(row, column, value)`, where row and
/// column count from the area's first cell. Empty cells that exist are visited, too. Stops when
/// `visit` returns false. Counts no steps: for the building of indexes, which is counted as a
/// whole.
template <class Visit>
void forEachCell(Area const& area, Visit&& visit) {
  auto [cell, end] = area.table->getTable().getRangeIterators(area.toTableRange());
  for (; cell != end; ++cell) {
    DOM::CellInfo const info = cell.getCellInfo();
    auto const row = static_cast<std::uint32_t>(info.getRowIndex()) - area.firstRow;
    auto const column = static_cast<std::uint32_t>(info.getColIndex()) - area.firstColumn;
    if (!visit(row, column, fromFormulaValue(info.getCell()->value))) {
      return;
    }
  }
}

/// The steps of reading a value: texts are read whole.
[[nodiscard]] inline std::uint64_t stepsOf(Value const& value) noexcept {
  return 1 + (value.isText() ? stepsOfBytes(value.asText().size()) : 0);
}

/// The same, and counts the steps: those of the cells, and one for each row in between whose cells
/// lie outside the area.
///
/// Flattened, so that the counts stay in registers.
template <class Visit>
[[gnu::flatten]] void forEachCell(StepMeter& steps, Area const& area, Visit&& visit) {
  constexpr std::uint64_t stepsOfSearch = 4;
  std::uint64_t const mostRows = area.table->getTable().getCellCount();
  StepRun run(steps);
  run.count(stepsOfSearch);
  std::uint32_t lastRow = 0;
  bool goesOn = true;
  forEachCell(area, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
    run.count(stepsOf(value) + std::min<std::uint64_t>(row - lastRow, mostRows));
    lastRow = row;
    goesOn = visit(row, column, value);
    return goesOn;
  });
  run.count(goesOn ? std::min<std::uint64_t>(area.height() - lastRow, mostRows) : 0);
  run.end();
}

}  // namespace Zorv::Formulas
