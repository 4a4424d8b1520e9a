#pragma once

#include <cstdint>

#include "workbook/Document.h"
#include "workbook/Recalculation/FormulasWithoutResults.h"

namespace Zorv::Workbook {

/// Adds to the cells without results the other cells that array formulas fill: those of the
/// formula's area that have neither a value nor a formula, or do not exist. A formula whose area
/// has more cells than `newCellLimit` still allows is marked as too large instead.
///
/// Needs the cells of all sheets.
void addArrayCells(Document const& document, FormulasWithoutResults& missing,
                   std::uint64_t newCellLimit);

}  // namespace Zorv::Workbook
