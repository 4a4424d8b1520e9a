#include "ConditionalFormatters/Operators/CndFrmt_TopBottomOperator.h"

#include <cstddef>
#include <utility>

#include "ConditionalFormatters/Operators/CndFrmt_DistinctRanking.h"
#include "ConditionalFormatters/Operators/CndFrmt_NeverHolds.h"
#include "ConditionalFormatters/Operators/CndFrmt_TopBottomRank.h"
#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::ConditionalFormatters {

namespace {

using Compare = bool (*)(FloatNumber const& cellNumber, FloatNumber const& threshold);

// Negations, so that the threshold itself is inside.

bool isAmongTop(FloatNumber const& cellNumber, FloatNumber const& threshold) {
  return !(threshold > cellNumber);
}

bool isAmongBottom(FloatNumber const& cellNumber, FloatNumber const& threshold) {
  return !(cellNumber > threshold);
}

Compare chooseComparison(DOM::TopBottomConditionalFormatType type) noexcept {
  switch (type) {
    case DOM::TopBottomConditionalFormatType::Top:
      return isAmongTop;
    case DOM::TopBottomConditionalFormatType::Bottom:
      return isAmongBottom;
  }
  return neverHolds;
}

boost::optional<FloatNumber> findThreshold(DOM::TopBottomConditionalFormatOperator const& record,
                                           std::vector<FloatNumber> values) {
  if (values.empty()) {
    return boost::none;
  }
  RankingOrder const order = rankingOrderOf(record.getType());
  if (auto const rank = selectableRank(record)) {
    return selectBest(values, order, *rank).back();
  }
  rankDistinct(values, order);
  std::size_t const rank = thresholdRank(record, values.size());
  return rank == 0 ? boost::none : boost::make_optional(values[rank - 1]);
}

}  // namespace

TopBottomOperator::TopBottomOperator(DOM::TopBottomConditionalFormatOperator const& record,
                                     std::vector<FloatNumber> values)
    : _threshold(findThreshold(record, std::move(values))),
      _compare(chooseComparison(record.getType())) {}

bool TopBottomOperator::operator()(FormulaValueData const& data) const {
  auto const number = FormulaModel::asFormulaNumberOpt(data.value);
  return number && _threshold && _compare(number->value, *_threshold);
}

}  // namespace Zorv::ConditionalFormatters
