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

/// Returns the number of cells that the table does not have yet.
std::uint64_t addCellsOf(TableRange const& area, MissingResult const& first,
                         DOM::Table const& table, FormulasWithoutResults& missing) {
  std::uint64_t newCellCount = 0;
  for (unsigned long row = area.firstRow; row < area.endRow; ++row) {
    for (unsigned long column = area.firstColumn; column < area.endColumn; ++column) {
      DOM::Cell const* const cell = table.findCell(row, column);
      if (cell == nullptr) {
        ++newCellCount;
      } else if (cell->hasFormula || !FormulaModel::isFormulaEmpty(cell->value)) {
        continue;
      }
      missing.cells.push_back({first.sheet, static_cast<std::uint32_t>(column),
                               static_cast<std::uint32_t>(row), first.formula});
    }
  }
  return newCellCount;
}

}  // namespace

void addArrayCells(Document const& document, FormulasWithoutResults& missing,
                   std::uint64_t newCellLimit) {
  std::size_t const count = missing.cells.size();
  for (std::size_t index = 0; index < count; ++index) {
    MissingResult const first = missing.cells[index];
    FormulaSource& formula = missing.formulas[first.formula];
    if (!formula.area) {
      continue;
    }
    if (countCells(*formula.area) > newCellLimit) {
      formula.isTooLarge = true;
    } else {
      newCellLimit -=
          addCellsOf(*formula.area, first, *document.getSheets()[first.sheet].table, missing);
    }
  }
}

}  // namespace Zorv::Workbook
