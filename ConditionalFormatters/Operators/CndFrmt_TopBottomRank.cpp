#include "ConditionalFormatters/Operators/CndFrmt_TopBottomRank.h"

#include <algorithm>
#include <cstdint>

#include "Utils/NumCast.h"

namespace Zorv::ConditionalFormatters {

RankingOrder rankingOrderOf(DOM::TopBottomConditionalFormatType type) noexcept {
  return type == DOM::TopBottomConditionalFormatType::Bottom ? RankingOrder::SmallestFirst
                                                             : RankingOrder::LargestFirst;
}

boost::optional<std::size_t> selectableRank(
    DOM::TopBottomConditionalFormatOperator const& record) noexcept {
  bool const isSelectable =
      !record.getUsePercent() && record.getValue() != 0 && record.getValue() <= largestSelectedRank;
  return boost::make_optional(isSelectable, std::size_t{record.getValue()});
}

std::size_t thresholdRank(DOM::TopBottomConditionalFormatOperator const& record,
                          std::size_t distinctCount) {
  std::uint64_t const value = record.getValue();
  std::uint64_t const count = record.getUsePercent() ? value * distinctCount / 100 : value;
  return std::min(numCast<unsigned long, double>(static_cast<double>(count)), distinctCount);
}

}  // namespace Zorv::ConditionalFormatters
