#pragma once

#include <cstddef>

#include <boost/optional.hpp>

#include "ConditionalFormatters/Operators/CndFrmt_DistinctRanking.h"
#include "DOM/ConditionalFormatOperator.h"

// Where in the ranking of a format's numbers its threshold stands: the last one that is inside.
namespace Zorv::ConditionalFormatters {

/// Ranks are counted from the end that is wanted.
[[nodiscard]] RankingOrder rankingOrderOf(DOM::TopBottomConditionalFormatType type) noexcept;

/// The rank of the threshold where it does not depend on how many numbers there are and
/// selectBest() finds it.
[[nodiscard]] boost::optional<std::size_t> selectableRank(
    DOM::TopBottomConditionalFormatOperator const& record) noexcept;

/// The rank of the threshold among so many distinct numbers, not above their number; 0 where none
/// of them is inside. A percentage truncates.
[[nodiscard]] std::size_t thresholdRank(DOM::TopBottomConditionalFormatOperator const& record,
                                        std::size_t distinctCount);

}  // namespace Zorv::ConditionalFormatters
