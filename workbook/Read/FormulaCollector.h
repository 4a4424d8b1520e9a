#pragma once

#include "workbook/Read/LoadState.h"

namespace Zorv::Workbook {

/// Reads the parts of the worksheets once more, for the formulas of all their cells, with and
/// without results. Throws PartError as the first reading does.
[[nodiscard]] CellFormulas collectFormulas(LoadState& state);

}  // namespace Zorv::Workbook
