#include "ConditionalFormatters/Operands/CndFrmt_Threshold.h"

#include <algorithm>
#include <cstdint>

#include "Utils/NumCast.h"

namespace Zorv::ConditionalFormatters {

RankingOrder rankingOrderOf(DOM::TopBottomConditionalFormatType type) noexcept {
  return type == DOM::TopBottomConditionalFormatType::Bottom ? RankingOrder::SmallestFirst
                                                             : RankingOrder::LargestFirst;
}

boost::optional<std::size_t> selectableRank(DOM::TopBottomConditionalFormatOperator const& record) {
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

boost::optional<FloatNumber> findThreshold(DOM::TopBottomConditionalFormatOperator const& record,
                                           std::vector<FloatNumber> numbers) {
  if (numbers.empty()) {
    return boost::none;
  }
  RankingOrder const order = rankingOrderOf(record.getType());
  if (auto const rank = selectableRank(record)) {
    return selectBest(numbers, order, *rank).back();
  }
  rankDistinct(numbers, order);
  std::size_t const rank = thresholdRank(record, numbers.size());
  return rank == 0 ? boost::none : boost::make_optional(numbers[rank - 1]);
}

}  // namespace Zorv::ConditionalFormatters
