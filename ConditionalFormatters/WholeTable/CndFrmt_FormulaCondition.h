#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include <boost/optional.hpp>

#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "FormulaModel/FormulaValue.h"

namespace Zorv::ConditionalFormatters {

/// A condition with formulas: arguments, and calls in them, that are the same for every cell are
/// evaluated once, for the first one; the rest without a shifted copy.
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
      Argument& argument = _arguments[number];
      auto& ownValue = ownValues[number];
      if (!argument.isKnown.load(std::memory_order_acquire)) {
        ownValue = calculator.calculateInPlace(expr, data.cellIndex, session);
        learn(argument, expr, ownValue,
              [&] { return calculator.fold(expr, data.cellIndex, session); });
        return ownValue;
      }
      if (isSameForEveryCell(expr)) {
        return argument.value;
      }
      return ownValue = calculator.calculateInPlace(argument.folded ? *argument.folded : expr,
                                                    data.cellIndex, session);
    };
    return condition.judge(data, calculate);
  }

private:
  /// What an argument comes to for every cell, known once it was evaluated for one.
  struct Argument {
    std::atomic<bool> isKnown = false;
    boost::optional<FormulaValue> value;                 ///< where all of it is the same
    std::optional<DOM::FormulaSyntaxTree::Expr> folded;  ///< where a part of it is
  };

  static bool isSameForEveryCell(DOM::FormulaSyntaxTree::Expr const& expr) noexcept {
    auto const& traits = expr.getTraits();
    return !traits.dependsOnCell && !traits.callsVolatileFunctions && !traits.usesNames;
  }

  void make(unsigned /*threadCount*/) const override {
    _operator = _sources.factory.create(_formatRef);
  }

  /// Evaluates and folds without the lock, since an evaluation may ask about this condition again;
  /// of two threads that do so at once the first to finish decides.
  template <class Fold>
  void learn(Argument& argument, DOM::FormulaSyntaxTree::Expr const& expr,
             boost::optional<FormulaValue> const& value, Fold const& fold) const {
    bool const isSame = isSameForEveryCell(expr);
    auto folded = isSame ? std::nullopt : foldIfPossible(fold);
    std::lock_guard const lock(_mutex);
    if (!argument.isKnown.load(std::memory_order_relaxed)) {
      if (isSame) {
        argument.value = value;
      }
      argument.folded = std::move(folded);
      argument.isKnown.store(true, std::memory_order_release);
    }
  }

  template <class Fold>
  static std::optional<DOM::FormulaSyntaxTree::Expr> foldIfPossible(Fold const& fold) {
    try {
      return fold();
    } catch (...) {
      // A call may stand where no cell asks for it: only then does what it throws matter.
      return std::nullopt;
    }
  }

  ConditionSources const& _sources;
  ConditionalFormatRef const& _formatRef;
  mutable std::unique_ptr<Operator const> _operator;
  mutable std::array<Argument, 2> _arguments;
};

}  // namespace Zorv::ConditionalFormatters
