#pragma once

#include <vector>

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "Utils/FloatNumber.h"

namespace Zorv::DOM {
class TopBottomConditionalFormatOperator;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// Asks whether a cell's number is among the highest or the lowest of a format's ranges.
///
/// Ranks are counted over distinct numbers: equal ones share a rank. A percentage is taken of the
/// distinct numbers, too, and truncates: a small percentage of few numbers is none. Only numbers
/// are judged.
///
/// Ownership: keeps one threshold. Threads: may be called from several threads.
class CNDFRMT_EXPORT TopBottomOperator final : public Operator {
public:
  /// `values` are the numbers of the ranges, in any order. Cost: linear for a small count, else
  /// that of a sort.
  ///
  /// Without numbers, with a count of 0 and for a record of an unknown kind, the condition never
  /// holds.
  TopBottomOperator(DOM::TopBottomConditionalFormatOperator const& record,
                    std::vector<FloatNumber> values);

  /// Never throws, and never reads the cell's index.
  [[nodiscard]] bool operator()(FormulaValueData const& data) const override;
  ~TopBottomOperator() override = default;

private:
  boost::optional<FloatNumber> _threshold;
  bool (*_compare)(FloatNumber const& cellNumber, FloatNumber const& threshold);
};

}  // namespace Zorv::ConditionalFormatters
