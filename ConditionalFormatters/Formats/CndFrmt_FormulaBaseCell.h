#pragma once

#include <vector>

#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The cell relative to which a format's formulas are written: the smallest first row and,
/// independently, the smallest first column of its ranges. It may lie in none of them. Stops the
/// process if there are no ranges.
[[nodiscard]] CellIndex formulaBaseCell(std::vector<TableRange> const& ranges);

}  // namespace Zorv::ConditionalFormatters
