#pragma once

#include <cstdint>

#include "DOM/Table.h"
#include "Formulas/TableContext.h"
#include "Formulas/Values/Area.h"
#include "Formulas/Values/Value.h"

/// Reading cells in place.
namespace Zorv::Formulas {

/// A cell's or a constant's value; borrows its text.
[[nodiscard]] Value fromFormulaValue(FormulaValue const& value) noexcept;

/// The value at a distance from an area's first cell; empty where there is no cell.
[[nodiscard]] Value readCell(Area const& area, std::uint32_t row, std::uint32_t column);

/// An upper bound of the existing cells in an area. Constant time.
[[nodiscard]] std::uint64_t maxCellCount(Area const& area);

/// Visits the existing cells of an area, row by row: `visit(row, column, value)`, where row and
/// column count from the area's first cell. Empty cells that exist are visited, too. Stops when
/// `visit` returns false.
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

}  // namespace Zorv::Formulas
