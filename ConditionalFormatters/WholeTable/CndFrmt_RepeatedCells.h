#pragma once

#include <vector>

#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"
#include "Utils/HashPartitions.h"

namespace Zorv::ConditionalFormatters {

/// The cells of some blocks whose value occurs there more than once, by the equality of
/// FormulaValueMultiset. A cell that blocks hold twice counts twice.
///
/// Values are compared within the partitions that the blocks were made with, which fit a
/// processor's cache, so that the time for a cell does not grow with their number.
[[nodiscard]] CellSet findRepeatedCells(std::vector<OccurrenceBlock> blocks,
                                        HashPartitions partitions, unsigned threadCount);

}  // namespace Zorv::ConditionalFormatters
