#pragma once

#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Utils/FloatNumber.h"

// Tests of a cell's number against one number that stands for a whole range: a mean or a threshold.
// Only numbers are tested; every other value fails. Numbers compare exactly.
namespace Zorv::ConditionalFormatters {

using NumberTest = bool (*)(FloatNumber const& cellNumber, FloatNumber const& reference);

/// The test against the mean. Never null: false for every number where the record is of an unknown
/// kind, or measures in standard deviations.
///
/// The kinds that include equality are the negated strict ones, so that they hold for every number
/// where there is no mean.
[[nodiscard]] NumberTest findMeanTest(DOM::AboveAverageConditionalFormatOperator const& record);

/// The test against the threshold, which is inside. Never null: false for every number where the
/// kind is unknown.
[[nodiscard]] NumberTest findThresholdTest(DOM::TopBottomConditionalFormatType type) noexcept;

/// Applies a test to a cell's value; false for a value that is no number.
[[nodiscard]] inline bool testNumber(FormulaValue const& cellValue, NumberTest test,
                                     FloatNumber const& reference) {
  auto const number = FormulaModel::asFormulaNumberOpt(cellValue);
  return number && test(number->value, reference);
}

}  // namespace Zorv::ConditionalFormatters
