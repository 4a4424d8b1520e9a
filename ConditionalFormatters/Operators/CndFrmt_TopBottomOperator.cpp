#include "ConditionalFormatters/Operators/CndFrmt_TopBottomOperator.h"

#include <utility>

#include "ConditionalFormatters/Operands/CndFrmt_Threshold.h"
#include "ConditionalFormatters/Predicates/CndFrmt_AgainstNumber.h"
#include "ConditionalFormatters/Predicates/CndFrmt_NeverHolds.h"
#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

TopBottomOperator::TopBottomOperator(DOM::TopBottomConditionalFormatOperator const& record,
                                     std::vector<FloatNumber> values)
    : _compare(neverHolds) {
  // Without numbers the record is not read.
  if (!values.empty()) {
    _compare = findThresholdTest(record.getType());
    _threshold = findThreshold(record, std::move(values));
  }
}

bool TopBottomOperator::operator()(FormulaValueData const& data) const {
  return _threshold && testNumber(data.value, _compare, *_threshold);
}

}  // namespace Zorv::ConditionalFormatters
