#include "workbook/Recalculation/Recalculate.h"

#include <iterator>
#include <utility>
#include <vector>

#include "FormulaModel/FormulaValueAccess.h"
#include "OfficeUtils/PinnedMoment.h"
#include "workbook/Recalculation/ArrayCells.h"
#include "workbook/Recalculation/ClockDependents.h"
#include "workbook/Recalculation/MissingResultCalculator.h"

namespace Zorv::Workbook {

namespace {

bool lacksResult(Document const& document, FormulaCell const& cell) noexcept {
  DOM::Cell const* const found =
      document.getSheets()[cell.sheet].table->findCell(cell.row, cell.column);
  return found == nullptr || FormulaModel::isFormulaEmpty(found->value);
}

/// Leaves the cells without results and those that depend on the clock.
CellFormulas selectCells(Document const& document, CellFormulas all,
                         RecalculationOptions const& options) {
  addArrayCells(document, all, ArrayCells::All, options.newCellLimit);
  DocumentContextProvider const provider(document, options.localeName, options.timeZone);
  std::vector<FormulaCell> cells = ClockDependents(document, provider, all, options.budget).find();
  std::copy_if(all.cells.begin(), all.cells.end(), std::back_inserter(cells),
               [&document](FormulaCell const& cell) { return lacksResult(document, cell); });
  all.cells = std::move(cells);
  return all;
}

}  // namespace

void recalculate(Document& document, CellFormulas missing, std::optional<CellFormulas> all,
                 RecalculationOptions const& options) {
  if (all) {
    missing = selectCells(document, std::move(*all), options);
  } else {
    addArrayCells(document, missing, ArrayCells::WithoutResults, options.newCellLimit);
  }
  OfficeUtils::PinnedMoment const moment(OfficeUtils::PinnedMoment::readMoment());
  MissingResultCalculator(document, std::move(missing), options).calculate();
}

}  // namespace Zorv::Workbook
