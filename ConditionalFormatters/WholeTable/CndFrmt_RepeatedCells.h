#pragma once

#include "ConditionalFormatters/Parallel/CndFrmt_CollectFromRanges.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"

namespace Zorv::ConditionalFormatters {

/// The existing cells of some ranges whose value occurs there more than once, by the equality of
/// FormulaValueMultiset. A cell of two ranges counts twice, an empty one does not count, and NaN
/// equals nothing.
///
/// Values are compared within hash partitions that fit a processor's cache, so that the time for a
/// cell does not grow with their number. Needs some forty bytes for each cell, and its text, until
/// it returns. Throws what the provider throws.
[[nodiscard]] CellSet findRepeatedCells(CollectedRanges const& from);

}  // namespace Zorv::ConditionalFormatters
