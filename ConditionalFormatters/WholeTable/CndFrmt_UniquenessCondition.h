#pragma once

#include <cstdint>
#include <memory>

#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

/// A uniqueness condition: it knows which cells of its ranges repeat a value, so that a cell costs
/// a look at its position and not a search for its value among all others.
class UniquenessCondition final : public PreparedCondition {
public:
  UniquenessCondition(ConditionSources const& sources, ConditionalFormatRef const& formatRef,
                      DOM::UniquenessType type) noexcept
      : _sources(sources), _formatRef(formatRef), _type(type) {}

  [[nodiscard]] bool holdsFor(DOM::CellInfo const& cellInfo, FormulaValueData const& data,
                              Formulas::EvaluationSession& session) const override;

private:
  void make(unsigned threadCount) const override;
  [[nodiscard]] bool askOperator(FormulaValueData const& data) const;

  ConditionSources const& _sources;
  ConditionalFormatRef const& _formatRef;
  DOM::UniquenessType _type;
  mutable CellSet _repeated;
  mutable std::unique_ptr<Operator const> _operator;  ///< for values that were not collected
};

}  // namespace Zorv::ConditionalFormatters
