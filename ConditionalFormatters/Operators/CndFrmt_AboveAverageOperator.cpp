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

Compare chooseComparison(DOM::AboveAverageConditionalFormatType type) noexcept {
  using Type = DOM::AboveAverageConditionalFormatType;
  switch (type) {
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
    : _average(0.0), _compare(chooseComparison(record.getType())) {
  if (record.getStdDev()) {
    _compare = neverHolds;
    return;
  }
  auto const sum = std::accumulate(values.begin(), values.end(), FloatNumber(0.0));
  _average = sum / FloatNumber(static_cast<double>(values.size()));
}

bool AboveAverageOperator::operator()(FormulaValueData const& data) const {
  auto const number = FormulaModel::asFormulaNumberOpt(data.value);
  return number && _compare(number->value, _average);
}

}  // namespace Zorv::ConditionalFormatters
