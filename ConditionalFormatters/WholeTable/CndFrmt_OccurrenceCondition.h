#pragma once

#include <atomic>
#include <mutex>

#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_Lazy.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceIndex.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"
#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

/// Tests how often a value occurs in the ranges. The operands know which cells repeat a value, so
/// that a cell costs a look-up of its position and no search for its value. How often it occurs is
/// counted by a walk over the ranges for the first few cells that ask, and then taken from an
/// index.
class OccurrenceCondition final : public PreparedCondition {
public:
  /// Borrows everything.
  OccurrenceCondition(DOM::UniquenessConditionalFormatOperator const& record,
                      RangeOperands const& operands) noexcept
      : _record(record), _operands(operands) {}

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;

private:
  [[nodiscard]] bool askOperator(FormulaValueData const& data) const;
  [[nodiscard]] OccurrenceOperand findOccurrences(TestedCell const& cell,
                                                  PassResources const& resources) const;

  DOM::UniquenessConditionalFormatOperator const& _record;
  RangeOperands const& _operands;
  mutable std::recursive_mutex _creation;       ///< guards the creation of what follows
  Lazy<UniquenessOperator> _operator;           ///< for values that were not collected
  Lazy<OccurrenceIndex> _index;                 ///< for operands
  mutable std::atomic<unsigned> _walkCount{0};  ///< how often values were counted without it
};

}  // namespace Zorv::ConditionalFormatters
