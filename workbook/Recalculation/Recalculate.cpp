#include "workbook/Recalculation/Recalculate.h"

#include <utility>

#include "workbook/Recalculation/ArrayCells.h"
#include "workbook/Recalculation/MissingResultCalculator.h"

namespace Zorv::Workbook {

void recalculate(Document& document, FormulasWithoutResults missing,
                 RecalculationOptions const& options) {
  addArrayCells(document, missing, options.newCellLimit);
  MissingResultCalculator(document, std::move(missing), options).calculate();
}

}  // namespace Zorv::Workbook
