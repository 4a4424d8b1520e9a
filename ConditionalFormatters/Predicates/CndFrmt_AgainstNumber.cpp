#include "ConditionalFormatters/Predicates/CndFrmt_AgainstNumber.h"

#include "ConditionalFormatters/Predicates/CndFrmt_NeverHolds.h"

namespace Zorv::ConditionalFormatters {

namespace {

bool isAbove(FloatNumber const& cellNumber, FloatNumber const& mean) { return cellNumber > mean; }

bool isBelow(FloatNumber const& cellNumber, FloatNumber const& mean) { return cellNumber < mean; }

bool isEqualOrAbove(FloatNumber const& cellNumber, FloatNumber const& mean) {
  return !(cellNumber < mean);
}

bool isEqualOrBelow(FloatNumber const& cellNumber, FloatNumber const& mean) {
  return !(cellNumber > mean);
}

// Negations: a cell whose number is NaN is among the top and among the bottom.

bool isAmongTop(FloatNumber const& cellNumber, FloatNumber const& threshold) {
  return !(threshold > cellNumber);
}

bool isAmongBottom(FloatNumber const& cellNumber, FloatNumber const& threshold) {
  return !(cellNumber > threshold);
}

}  // namespace

NumberTest findMeanTest(DOM::AboveAverageConditionalFormatOperator const& record) {
  using Type = DOM::AboveAverageConditionalFormatType;
  auto const type = record.getType();
  if (record.getStdDev()) {
    return neverHolds;
  }
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

NumberTest findThresholdTest(DOM::TopBottomConditionalFormatType type) noexcept {
  switch (type) {
    case DOM::TopBottomConditionalFormatType::Top:
      return isAmongTop;
    case DOM::TopBottomConditionalFormatType::Bottom:
      return isAmongBottom;
  }
  return neverHolds;
}

}  // namespace Zorv::ConditionalFormatters
