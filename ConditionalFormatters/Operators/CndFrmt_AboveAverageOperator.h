#pragma once

#include <vector>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "Utils/FloatNumber.h"

namespace Zorv::DOM {
class AboveAverageConditionalFormatOperator;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// Asks whether a cell's number lies above or below the arithmetic mean of a format's ranges.
///
/// Only numbers are judged; no other value is above, below or equal to the mean. A record that
/// measures in standard deviations gives a condition that never holds.
///
/// Ownership: keeps the mean alone. Threads: may be called from several threads.
class CNDFRMT_EXPORT AboveAverageOperator final : public Operator {
public:
  /// `values` are the numbers of the ranges; the mean is computed here, in their order, at a cost
  /// that follows their number. Without numbers there is no mean: nothing is then strictly above or
  /// below it, and every number is "equal or above" and "equal or below".
  ///
  /// A record of an unknown kind gives a condition that never holds.
  AboveAverageOperator(DOM::AboveAverageConditionalFormatOperator const& record,
                       std::vector<FloatNumber> values);

  /// Never throws, and never reads the cell's index.
  [[nodiscard]] bool operator()(FormulaValueData const& data) const override;
  ~AboveAverageOperator() override = default;

private:
  FloatNumber _average;
  bool (*_compare)(FloatNumber const& cellNumber, FloatNumber const& average);
};

}  // namespace Zorv::ConditionalFormatters
