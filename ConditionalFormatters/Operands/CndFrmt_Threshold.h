#pragma once

#include <cstddef>
#include <vector>

#include <boost/optional.hpp>

#include "ConditionalFormatters/Operands/CndFrmt_DistinctRanking.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Utils/FloatNumber.h"

// The threshold of a top or bottom condition: the last number of the ranking that is inside.
namespace Zorv::ConditionalFormatters {

/// Ranks count from the wanted end: the largest number for top, the smallest for bottom.
[[nodiscard]] RankingOrder rankingOrderOf(DOM::TopBottomConditionalFormatType type) noexcept;

/// The rank of the threshold, if it does not depend on the distinct count and selectBest() finds
/// it.
[[nodiscard]] boost::optional<std::size_t> selectableRank(
    DOM::TopBottomConditionalFormatOperator const& record);

/// The rank of the threshold among `distinctCount` distinct numbers: at most that count, and 0 if
/// no number is inside. A percentage is taken of the distinct count and truncates.
[[nodiscard]] std::size_t thresholdRank(DOM::TopBottomConditionalFormatOperator const& record,
                                        std::size_t distinctCount);

/// The threshold of these numbers; none if no number is inside.
[[nodiscard]] boost::optional<FloatNumber> findThreshold(
    DOM::TopBottomConditionalFormatOperator const& record, std::vector<FloatNumber> numbers);

}  // namespace Zorv::ConditionalFormatters
