#pragma once

#include "Formulas/Context.h"
#include "workbook/DocumentContextProvider.h"
#include "workbook/Recalculation/CellFormulas.h"

namespace Zorv::Workbook {

/// Place at which a cell's formula is evaluated.
struct Placement {
  int columnOffset;  ///< by which the formula's references move
  int rowOffset;
  Formulas::Context context;
};

/// The place of one of the cells that have a formula. All cells of an array have the formula as it
/// stands in the first cell.
[[nodiscard]] Placement findPlacement(Document const& document,
                                      DocumentContextProvider const& provider,
                                      FormulaSource const& source, FormulaCell const& cell);

}  // namespace Zorv::Workbook
