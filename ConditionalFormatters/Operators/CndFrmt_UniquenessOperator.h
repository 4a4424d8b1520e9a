#pragma once

#include <cstdint>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/Operators/CndFrmt_FormulaValueMultiset.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"

namespace Zorv::DOM {
struct UniquenessConditionalFormatOperator;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// Asks whether a cell's value occurs more than once, or exactly once, among the values of a
/// format's ranges. An empty cell is neither, and a record of an unknown kind never holds.
///
/// A value that is not empty and not among the collected ones stops the process: the cell lies in
/// the ranges, so its value was collected. NaN equals nothing, so it is never found.
///
/// Ownership: owns the collected values. Threads: may be called from several threads.
/// Cost of a call: one hash and one bucket search, however often the value occurs.
class CNDFRMT_EXPORT UniquenessOperator final : public Operator {
public:
  /// `values` are all values of the ranges that are not empty, one element for each visited cell.
  /// Of the record only the kind is kept.
  UniquenessOperator(DOM::UniquenessConditionalFormatOperator const& record,
                     FormulaValueMultiset values);

  [[nodiscard]] bool operator()(FormulaValueData const& data) const override;
  ~UniquenessOperator() override = default;

private:
  std::uint8_t _uniquenessType;
  FormulaValueMultiset _values;
};

}  // namespace Zorv::ConditionalFormatters
