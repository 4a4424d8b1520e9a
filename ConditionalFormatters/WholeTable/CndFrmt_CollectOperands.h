#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/Parallel/CndFrmt_CollectFromRanges.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_DistinctNumbers.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OperandNeeds.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_WatchedValues.h"
#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

/// Operands found in ranges, for the conditions that need them; the rest is empty.
struct CollectedOperands {
  MeanOperand mean;
  std::vector<FloatNumber> largest;
  std::vector<FloatNumber> smallest;
  std::unique_ptr<DistinctNumbers const> ranking;
  std::unique_ptr<CellSet const> repeated;
  std::vector<std::uint32_t> watchedCounts;  ///< how often each watched value occurs
};

/// Collects everything that is needed in one walk over the existing cells of the ranges, or in two
/// if many ranges overlap. A mean and the best few numbers keep nothing of single cells.
///
/// `watched` are values whose occurrences are counted; null: none. Throws what the provider throws,
/// for the first cell at which it does.
[[nodiscard]] CollectedOperands collectOperands(CollectedRanges const& from,
                                                OperandNeeds const& needs,
                                                WatchedValues const* watched);

}  // namespace Zorv::ConditionalFormatters
