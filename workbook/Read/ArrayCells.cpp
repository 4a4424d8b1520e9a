#include "workbook/Read/ArrayCells.h"

#include <cstddef>
#include <cstdint>

#include "DOM/Table.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::Workbook {

namespace {

std::uint64_t countCells(TableRange const& area) noexcept {
  return std::uint64_t{area.endRow - area.firstRow} * (area.endColumn - area.firstColumn);
}

void addCellsOf(TableRange const& area, MissingResult const& first, LoadState& state) {
  DOM::Table const& table = *state.document.getSheets()[first.sheet].table;
  for (unsigned long row = area.firstRow; row < area.endRow; ++row) {
    for (unsigned long column = area.firstColumn; column < area.endColumn; ++column) {
      DOM::Cell const* const cell = table.findCell(row, column);
      if (cell == nullptr) {
        ++state.cellCount;
      } else if (cell->hasFormula || !FormulaModel::isFormulaEmpty(cell->value)) {
        continue;
      }
      state.missingResults.push_back({first.sheet, static_cast<std::uint32_t>(column),
                                      static_cast<std::uint32_t>(row), first.formula});
    }
  }
}

}  // namespace

void addArrayCells(LoadState& state) {
  std::size_t const count = state.missingResults.size();
  for (std::size_t number = 0; number < count; ++number) {
    MissingResult const first = state.missingResults[number];
    FormulaSource& formula = state.formulas[first.formula];
    if (!formula.area) {
      continue;
    }
    if (countCells(*formula.area) > state.limits.cells - state.cellCount) {
      formula.isTooLarge = true;
    } else {
      addCellsOf(*formula.area, first, state);
    }
  }
}

}  // namespace Zorv::Workbook
