#pragma once

#include <cstdint>

#include "workbook/Document.h"
#include "workbook/Recalculation/CellFormulas.h"

namespace Zorv::Workbook {

/// Cells of an array that count.
enum class ArrayCells : bool {
  WithoutResults,  ///< those that have neither a value nor a formula, or do not exist
  All,             ///< also those with a value
};

/// Adds the other cells that array formulas fill: those of a formula's area that have no formula of
/// their own. A formula whose area has more cells than `cellLimit` still allows is marked as too
/// large instead.
///
/// Needs the cells of all sheets.
void addArrayCells(Document const& document, CellFormulas& formulas, ArrayCells which,
                   std::uint64_t cellLimit);

}  // namespace Zorv::Workbook
