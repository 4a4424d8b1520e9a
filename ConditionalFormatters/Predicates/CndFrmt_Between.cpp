#include "ConditionalFormatters/Predicates/CndFrmt_Between.h"

#include "ConditionalFormatters/Predicates/CndFrmt_Comparison.h"
#include "ConditionalFormatters/Predicates/CndFrmt_NeverHolds.h"

namespace Zorv::ConditionalFormatters {

namespace {

bool isBetween(FormulaValue const& cellValue, boost::optional<FormulaValue> const& lower,
               boost::optional<FormulaValue> const& upper) {
  return (!lower || IsGreaterOrEqual()(cellValue, *lower)) &&
         (!upper || IsLessOrEqual()(cellValue, *upper));
}

// Not the negation of isBetween(): values of different kinds fail both.
bool isNotBetween(FormulaValue const& cellValue, boost::optional<FormulaValue> const& lower,
                  boost::optional<FormulaValue> const& upper) {
  return !lower || IsLess()(cellValue, *lower) || !upper || IsGreater()(cellValue, *upper);
}

}  // namespace

BoundsTest findBoundsTest(DOM::BinaryConditionalFormatType type) noexcept {
  switch (type) {
    case DOM::BinaryConditionalFormatType::Between:
      return isBetween;
    case DOM::BinaryConditionalFormatType::NotBetween:
      return isNotBetween;
  }
  return neverHolds;
}

}  // namespace Zorv::ConditionalFormatters
