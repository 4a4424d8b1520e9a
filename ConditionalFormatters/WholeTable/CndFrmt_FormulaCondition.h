#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <utility>

#include <boost/optional.hpp>

#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "FormulaModel/FormulaValue.h"

namespace Zorv::ConditionalFormatters {

/// A condition with formulas: arguments, and calls in them, that are the same for every cell are
/// evaluated once, for the first one; the rest without a shifted copy.
template <class FormulaOperator, std::size_t argumentCount>
class FormulaCondition final : public PreparedCondition {
public:
  FormulaCondition(ConditionSources const& sources, ConditionalFormatRef const& formatRef) noexcept
      : _sources(sources), _formatRef(formatRef) {}

  [[nodiscard]] bool holdsFor(DOM::CellInfo const& /*cellInfo*/, FormulaValueData const& data,
                              Formulas::EvaluationSession& session) const override {
    auto const& condition = static_cast<FormulaOperator const&>(*_operator);
    FormulaExprCalculator const& calculator = condition.getCalculator();
    std::array<boost::optional<FormulaValue>, argumentCount> ownValues;
    auto const calculate =
        [&](std::size_t number,
            DOM::FormulaSyntaxTree::Expr const& expr) -> boost::optional<FormulaValue> const& {
      Argument& argument = _arguments[number];
      if (!argument.isKnown.load(std::memory_order_acquire)) {
        learn(argument, expr, data.cellIndex, session);
      }
      if (isSameForEveryCell(expr)) {
        return argument.known.value;
      }
      return ownValues[number] = calculator.calculateInPlace(
                 argument.known.folded ? *argument.known.folded : expr, data.cellIndex, session);
    };
    return condition.judge(data, calculate);
  }

private:
  /// What an argument comes to for every cell.
  struct Known {
    boost::optional<FormulaValue> value;                         ///< where all of it is the same
    std::unique_ptr<DOM::FormulaSyntaxTree::Expr const> folded;  ///< where a part of it is
  };

  struct Argument {
    std::atomic<bool> isKnown = false;
    Known known;
  };

  static bool isSameForEveryCell(DOM::FormulaSyntaxTree::Expr const& expr) noexcept {
    auto const& traits = expr.getTraits();
    return !traits.dependsOnCell && !traits.callsVolatileFunctions && !traits.usesNames;
  }

  void make(unsigned /*threadCount*/) const override {
    _operator = _sources.factory.create(_formatRef);
  }

  void learn(Argument& argument, DOM::FormulaSyntaxTree::Expr const& expr, CellIndex cell,
             Formulas::EvaluationSession& session) const {
    // Found without the lock, since an evaluation may ask about this condition again; of two
    // threads that do so at once the first to finish decides.
    FormulaExprCalculator const& calculator =
        static_cast<FormulaOperator const&>(*_operator).getCalculator();
    Known found;
    if (isSameForEveryCell(expr)) {
      found.value = calculator.calculateInPlace(expr, cell, session);
    } else {
      found.folded = fold(calculator, expr, cell, session);
    }
    std::lock_guard const lock(_mutex);
    if (!argument.isKnown.load(std::memory_order_relaxed)) {
      argument.known = std::move(found);
      argument.isKnown.store(true, std::memory_order_release);
    }
  }

  static std::unique_ptr<DOM::FormulaSyntaxTree::Expr const> fold(
      FormulaExprCalculator const& calculator, DOM::FormulaSyntaxTree::Expr const& expr,
      CellIndex cell, Formulas::EvaluationSession& session) {
    try {
      auto folded = calculator.fold(expr, cell, session);
      return folded ? std::make_unique<DOM::FormulaSyntaxTree::Expr const>(std::move(*folded))
                    : nullptr;
    } catch (...) {
      // A call may stand where no cell asks for it: only then does what it throws matter.
      return nullptr;
    }
  }

  ConditionSources const& _sources;
  ConditionalFormatRef const& _formatRef;
  mutable std::unique_ptr<Operator const> _operator;
  mutable std::array<Argument, argumentCount> _arguments;
};

}  // namespace Zorv::ConditionalFormatters
