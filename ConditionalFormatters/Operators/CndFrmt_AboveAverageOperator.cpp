#include "ConditionalFormatters/Operators/CndFrmt_AboveAverageOperator.h"

#include <numeric>

#include "ConditionalFormatters/Operators/CndFrmt_NeverHolds.h"
#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::ConditionalFormatters {

namespace {

using Compare = bool (*)(FloatNumber const& cellNumber, FloatNumber const& average);

bool isAbove(FloatNumber const& cellNumber, FloatNumber const& average) {
  return cellNumber > average;
}

bool isBelow(FloatNumber const& cellNumber, FloatNumber const& average) {
  return cellNumber < average;
}

// The kinds that include equality are negations, so that they hold for every number when there is
// no mean.

bool isEqualOrAbove(FloatNumber const& cellNumber, FloatNumber const& average) {
  return !(cellNumber < average);
}

bool isEqualOrBelow(FloatNumber const& cellNumber, FloatNumber const& average) {
  return !(cellNumber > average);
}

Compare chooseComparison(DOM::AboveAverageConditionalFormatOperator const& record) noexcept {
  using Type = DOM::AboveAverageConditionalFormatType;
  if (record.getStdDev()) {
    return neverHolds;
  }
  switch (record.getType()) {
    case Type::Above:
      return isAbove;
    case Type::EqualOrAbove:
      return isEqualOrAbove;
    case Type::Below:
      return isBelow;
    case Type::EqualOrBelow:
      return isEqualOrBelow;
  }
  return neverHolds;
}

}  // namespace

AboveAverageOperator::AboveAverageOperator(DOM::AboveAverageConditionalFormatOperator const& record,
                                           std::vector<FloatNumber> values)
    : AboveAverageOperator(record, std::accumulate(values.begin(), values.end(), FloatNumber(0.0)),
                           values.size()) {}

AboveAverageOperator::AboveAverageOperator(DOM::AboveAverageConditionalFormatOperator const& record,
                                           FloatNumber sum, std::size_t count) noexcept
    : _average(sum / FloatNumber(static_cast<double>(count))), _compare(chooseComparison(record)) {}

bool AboveAverageOperator::operator()(FormulaValueData const& data) const {
  auto const number = FormulaModel::asFormulaNumberOpt(data.value);
  return number && _compare(number->value, _average);
}

}  // namespace Zorv::ConditionalFormatters
