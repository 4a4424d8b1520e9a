#pragma once

#include <memory>

#include <boost/optional.hpp>

#include "ConditionalFormatters/Parallel/CndFrmt_CollectFromRanges.h"
#include "ConditionalFormatters/Predicates/CndFrmt_AgainstNumber.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

/// Tests against one number that stands for the ranges: their mean, or a threshold. The number is
/// found by several threads without keeping all numbers of the ranges.
class NumberCondition final : public PreparedCondition {
public:
  /// Both throw what the provider throws.
  [[nodiscard]] static std::unique_ptr<NumberCondition const> againstMean(
      DOM::AboveAverageConditionalFormatOperator const& record, CollectedRanges const& from);
  [[nodiscard]] static std::unique_ptr<NumberCondition const> againstThreshold(
      DOM::TopBottomConditionalFormatOperator const& record, CollectedRanges const& from);

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
