#pragma once

#include <string>

#include "DOM/ConditionalFormatOperator.h"
#include "Utils/CellIndex.h"

namespace Zorv::Analysis {

/// A text that is the same for two conditions exactly if they are the same condition, after the
/// relative references of each have been moved from its `base` cell to a common one. `A1>5` on
/// A1:A9 and `B7>5` on B7:B9 have one key. Not for people.
///
/// The ranges that top and bottom, average and uniqueness conditions compare a cell with are no
/// part of the key; see dependsOnRanges().
[[nodiscard]] std::string makeConditionKey(DOM::ConditionalFormatOperator const& condition,
                                           CellIndex base);

/// True for conditions that compare a cell with all cells of the rule's ranges.
[[nodiscard]] bool dependsOnRanges(DOM::ConditionalFormatOperator const& condition) noexcept;

}  // namespace Zorv::Analysis
