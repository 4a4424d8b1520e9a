#pragma once

#include <vector>

#include "ConditionalFormatters/Live/CndFrmt_AreaLog.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The cells of a range that hold one of the numbers or values that changes have reached. Where the
/// cells of an area of the changes are many, the area instead.
///
/// One walk over each different area of the changes, however many of them it has: a few
/// comparisons for a cell.
[[nodiscard]] std::vector<TableRange> findReachedCells(PreparedTable const& prepared,
                                                       ReachedAreas const& reached,
                                                       TableRange const& range);

}  // namespace Zorv::ConditionalFormatters
