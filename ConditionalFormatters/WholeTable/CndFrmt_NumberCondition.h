#pragma once

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/Predicates/CndFrmt_AgainstNumber.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

/// Tests against one number that stands for the ranges: their mean, or a threshold.
class NumberCondition final : public PreparedCondition {
public:
  NumberCondition(NumberTest test, MeanOperand const& operand)
      : _test(test), _reference(operand.mean), _operand(operand) {}
  NumberCondition(NumberTest test, ThresholdOperand const& operand)
      : _test(test), _reference(operand.threshold), _operand(operand) {}

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;

private:
  NumberTest _test;
  boost::optional<FloatNumber> _reference;  ///< none: the condition holds for no cell
  ConditionOperands _operand;
};

}  // namespace Zorv::ConditionalFormatters
