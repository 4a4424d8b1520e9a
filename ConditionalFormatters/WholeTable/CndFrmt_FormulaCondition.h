#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>

#include <boost/optional.hpp>

#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "FormulaModel/FormulaValue.h"

namespace Zorv::ConditionalFormatters {

/// A condition with formulas: arguments that are the same for every cell are evaluated once, for
/// the first one; the others without a shifted copy.
template <class FormulaOperator>
class FormulaCondition final : public PreparedCondition {
public:
  FormulaCondition(ConditionSources const& sources, ConditionalFormatRef const& formatRef) noexcept
      : _sources(sources), _formatRef(formatRef) {}

  [[nodiscard]] bool holdsFor(DOM::CellInfo const& /*cellInfo*/, FormulaValueData const& data,
                              Formulas::EvaluationSession& session) const override {
    auto const& condition = static_cast<FormulaOperator const&>(*_operator);
    FormulaExprCalculator const& calculator = condition.getCalculator();
    std::array<boost::optional<FormulaValue>, 2> ownValues;
    auto const calculate =
        [&](std::size_t number,
            DOM::FormulaSyntaxTree::Expr const& expr) -> boost::optional<FormulaValue> const& {
      auto const evaluate = [&] {
        return calculator.calculateInPlace(expr, data.cellIndex, session);
      };
      return isSameForEveryCell(expr) ? evaluateOnce(_arguments[number], evaluate)
                                      : ownValues[number] = evaluate();
    };
    return condition.judge(data, calculate);
  }

private:
  /// The value of an argument that is the same for every cell, once it is evaluated.
  struct Argument {
    std::atomic<bool> isEvaluated = false;
    boost::optional<FormulaValue> value;
  };

  static bool isSameForEveryCell(DOM::FormulaSyntaxTree::Expr const& expr) noexcept {
    auto const& traits = expr.getTraits();
    return !traits.dependsOnCell && !traits.callsVolatileFunctions && !traits.usesNames;
  }

  void make(unsigned /*threadCount*/) const override {
    _operator = _sources.factory.create(_formatRef);
  }

  template <class Evaluate>
  boost::optional<FormulaValue> const& evaluateOnce(Argument& argument,
                                                    Evaluate const& evaluate) const {
    if (!argument.isEvaluated.load(std::memory_order_acquire)) {
      // Evaluated without the lock, since an evaluation may ask about this condition again; of two
      // threads that evaluate at once the first to finish decides.
      auto value = evaluate();
      std::lock_guard const lock(_mutex);
      if (!argument.isEvaluated.load(std::memory_order_relaxed)) {
        argument.value = std::move(value);
        argument.isEvaluated.store(true, std::memory_order_release);
      }
    }
    return argument.value;
  }

  ConditionSources const& _sources;
  ConditionalFormatRef const& _formatRef;
  mutable std::unique_ptr<Operator const> _operator;
  mutable std::array<Argument, 2> _arguments;
};

}  // namespace Zorv::ConditionalFormatters
