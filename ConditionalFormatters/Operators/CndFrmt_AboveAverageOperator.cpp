#include "ConditionalFormatters/Operators/CndFrmt_AboveAverageOperator.h"

#include "ConditionalFormatters/Operands/CndFrmt_Mean.h"
#include "ConditionalFormatters/Predicates/CndFrmt_AgainstNumber.h"
#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

// The constructor takes the numbers over, as those of other operators do.
AboveAverageOperator::AboveAverageOperator(DOM::AboveAverageConditionalFormatOperator const& record,
                                           // NOLINTNEXTLINE(performance-unnecessary-value-param)
                                           std::vector<FloatNumber> values)
    : _average(0.0), _compare(findMeanTest(record)) {
  if (record.getStdDev()) {
    return;
  }
  Mean mean;
  mean.add(values);
  _average = mean.get();
}

bool AboveAverageOperator::operator()(FormulaValueData const& data) const {
  return testNumber(data.value, _compare, _average);
}

}  // namespace Zorv::ConditionalFormatters
