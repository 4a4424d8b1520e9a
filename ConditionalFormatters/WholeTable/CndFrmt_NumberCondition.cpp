#include "ConditionalFormatters/WholeTable/CndFrmt_NumberCondition.h"

namespace Zorv::ConditionalFormatters {

// Flattened: GCC leaves boost::get as a call.
[[gnu::flatten]] bool NumberCondition::holds(TestedCell const& cell, PassContext& /*pass*/) const {
  return _reference && testNumber(cell.data.value, _test, *_reference);
}

ConditionOperands NumberCondition::findOperands(TestedCell const& /*cell*/,
                                                PassContext& /*pass*/) const {
  return _operand;
}

}  // namespace Zorv::ConditionalFormatters
