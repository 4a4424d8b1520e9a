#pragma once

#include <mutex>
#include <vector>

#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"
#include "ConditionalFormatters/Parallel/CndFrmt_CollectFromRanges.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_Lazy.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

/// Tests how often a value occurs in the ranges. It keeps which cells repeat a value, so that a
/// cell costs a look-up of its position and no search for its value.
class OccurrenceCondition final : public PreparedCondition {
public:
  /// Throws what the provider throws.
  OccurrenceCondition(DOM::UniquenessConditionalFormatOperator const& record,
                      CollectedRanges const& from);

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;

private:
  [[nodiscard]] bool askOperator(FormulaValueData const& data) const;

  DOM::UniquenessConditionalFormatOperator const& _record;
  ValueContextProvider const& _provider;
  DOM::Table const& _table;
  std::vector<TableRange> const& _ranges;
  CellSet _repeated;
  mutable std::recursive_mutex _creation;  ///< guards the creation of the operator
  Lazy<UniquenessOperator> _operator;      ///< for values that were not collected
};

}  // namespace Zorv::ConditionalFormatters
