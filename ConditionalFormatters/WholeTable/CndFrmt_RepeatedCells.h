#pragma once

#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CollectInBands.h"

namespace Zorv::ConditionalFormatters {

/// The existing cells of some ranges whose value stands there more than once, by the equality of
/// FormulaValueMultiset: a cell of two ranges counts twice, an empty one does not count, and a NaN
/// equals nothing.
///
/// Cost: every value is collected and compared with those of the same hash alone, in partitions
/// that fit a processor's cache, so that the time for a cell does not grow with their number. Takes
/// some forty bytes for each cell, and its text, until it returns.
[[nodiscard]] CellSet findRepeatedCells(CollectedRanges const& from);

}  // namespace Zorv::ConditionalFormatters
