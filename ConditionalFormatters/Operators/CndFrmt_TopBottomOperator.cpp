#include "ConditionalFormatters/Operators/CndFrmt_TopBottomOperator.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "ConditionalFormatters/Operators/CndFrmt_DistinctRanking.h"
#include "ConditionalFormatters/Operators/CndFrmt_NeverHolds.h"
#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Utils/NumCast.h"

namespace Zorv::ConditionalFormatters {

namespace {

// Negations, so that the threshold itself is inside.

bool isAmongTop(FloatNumber const& cellNumber, FloatNumber const& threshold) {
  return !(threshold > cellNumber);
}

bool isAmongBottom(FloatNumber const& cellNumber, FloatNumber const& threshold) {
  return !(cellNumber > threshold);
}

std::uint64_t countRanks(DOM::TopBottomConditionalFormatOperator const& record,
                         std::size_t distinctCount) noexcept {
  std::uint64_t const value = record.getValue();
  return record.getUsePercent() ? value * distinctCount / 100 : value;
}

bool canSelect(DOM::TopBottomConditionalFormatOperator const& record) noexcept {
  return !record.getUsePercent() && record.getValue() != 0 &&
         record.getValue() <= largestSelectedRank;
}

// The last number that is inside, or nothing when none is. Requires at least one number.
boost::optional<FloatNumber> findThreshold(DOM::TopBottomConditionalFormatOperator const& record,
                                           std::vector<FloatNumber>& values, RankingOrder order) {
  if (canSelect(record)) {
    return selectRanked(values, order, record.getValue());
  }
  rankDistinct(values, order);
  auto const count = countRanks(record, values.size());
  auto const rank = numCast<unsigned long, double>(static_cast<double>(count));
  if (rank == 0) {
    return boost::none;
  }
  return values[std::min(rank, values.size()) - 1];
}

}  // namespace

TopBottomOperator::TopBottomOperator(DOM::TopBottomConditionalFormatOperator const& record,
                                     std::vector<FloatNumber> values)
    : _compare(neverHolds) {
  if (values.empty()) {
    return;
  }
  switch (record.getType()) {
    case DOM::TopBottomConditionalFormatType::Top:
      _compare = isAmongTop;
      _threshold = findThreshold(record, values, RankingOrder::LargestFirst);
      break;
    case DOM::TopBottomConditionalFormatType::Bottom:
      _compare = isAmongBottom;
      _threshold = findThreshold(record, values, RankingOrder::SmallestFirst);
      break;
  }
}

bool TopBottomOperator::operator()(FormulaValueData const& data) const {
  auto const number = FormulaModel::asFormulaNumberOpt(data.value);
  return number && _threshold && _compare(number->value, *_threshold);
}

}  // namespace Zorv::ConditionalFormatters
