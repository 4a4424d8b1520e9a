#pragma once

#include <memory>

#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"

namespace Zorv::ConditionalFormatters {

/// A condition that judges a cell by its value alone.
class ValueCondition : public PreparedCondition {
public:
  ValueCondition(ConditionSources const& sources, ConditionalFormatRef const& formatRef) noexcept
      : _sources(sources), _formatRef(formatRef) {}

  [[nodiscard]] bool holdsFor(DOM::CellInfo const& cellInfo, FormulaValueData const& data,
                              Formulas::EvaluationSession& session) const override;

protected:
  void make(unsigned threadCount) const override;

  ConditionSources const& _sources;
  ConditionalFormatRef const& _formatRef;
  mutable std::unique_ptr<Operator const> _operator;
};

}  // namespace Zorv::ConditionalFormatters
