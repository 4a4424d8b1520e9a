#pragma once

#include <cstdint>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/Operators/CndFrmt_FormulaValueMultiset.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"

namespace Zorv::DOM {
struct UniquenessConditionalFormatOperator;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// Holds for a cell whose value stands more than once, or exactly once, among the values of the
/// format's ranges, as the record's kind says. An empty cell is neither, and a record of another
/// kind never holds.
///
/// Asking about a value that is not empty and not among the collected ones stops the process: a
/// judged cell lies in the ranges, so its value was collected. Nothing equals a NaN, so a NaN never
/// is among them.
/// Cost of a call: one hash and one bucket search, however often the value stands in the ranges.
class CNDFRMT_EXPORT UniquenessOperator : public Operator {
public:
  /// `values` holds every value of the ranges that is not empty, one element for each visited cell.
  /// Nothing of the record is kept but its kind.
  UniquenessOperator(DOM::UniquenessConditionalFormatOperator const& record,
                     FormulaValueMultiset values);

  [[nodiscard]] bool operator()(FormulaValueData const& data) const override;

private:
  std::uint8_t _uniquenessType;
  FormulaValueMultiset _values;
};

}  // namespace Zorv::ConditionalFormatters
