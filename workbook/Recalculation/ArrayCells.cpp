#include "workbook/Recalculation/ArrayCells.h"

#include <cstddef>
#include <cstdint>

#include "DOM/Table.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::Workbook {

namespace {

std::uint64_t countCells(TableRange const& area) noexcept {
  return std::uint64_t{area.endRow - area.firstRow} * (area.endColumn - area.firstColumn);
}

void addCellsOf(TableRange const& area, FormulaCell const& first, DOM::Table const& table,
                ArrayCells which, CellFormulas& formulas) {
  for (unsigned long row = area.firstRow; row < area.endRow; ++row) {
    for (unsigned long column = area.firstColumn; column < area.endColumn; ++column) {
      DOM::Cell const* const cell = table.findCell(row, column);
      bool const isFree = cell == nullptr || FormulaModel::isFormulaEmpty(cell->value);
      if ((isFree || which == ArrayCells::All) && (cell == nullptr || !cell->hasFormula)) {
        formulas.cells.push_back({first.sheet, static_cast<std::uint32_t>(column),
                                  static_cast<std::uint32_t>(row), first.formula});
      }
    }
  }
}

}  // namespace

void addArrayCells(Document const& document, CellFormulas& formulas, ArrayCells which,
                   std::uint64_t cellLimit) {
  std::size_t const count = formulas.cells.size();
  for (std::size_t index = 0; index < count; ++index) {
    FormulaCell const first = formulas.cells[index];
    FormulaSource& formula = formulas.formulas[first.formula];
    if (!formula.area) {
      continue;
    }
    std::uint64_t const cells = countCells(*formula.area);
    if (cells > cellLimit) {
      formula.isTooLarge = true;
    } else {
      cellLimit -= cells;
      addCellsOf(*formula.area, first, *document.getSheets()[first.sheet].table, which, formulas);
    }
  }
}

}  // namespace Zorv::Workbook
