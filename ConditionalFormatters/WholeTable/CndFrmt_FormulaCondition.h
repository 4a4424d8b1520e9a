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
      auto const evaluate = [&](DOM::FormulaSyntaxTree::Expr const& what) {
        return calculator.calculateInPlace(what, data.cellIndex, session);
      };
      bool const isSame = isSameForEveryCell(expr);
      Known const& known = obtainKnown(_arguments[number], [&] {
        return isSame ? Known{evaluate(expr), nullptr}
                      : Known{boost::none, fold(calculator, expr, data.cellIndex, session)};
      });
      if (isSame) {
        return known.value;
      }
      return ownValues[number] = evaluate(known.folded ? *known.folded : expr);
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

  template <class Find>
  Known const& obtainKnown(Argument& argument, Find const& find) const {
    if (!argument.isKnown.load(std::memory_order_acquire)) {
      // Found without the lock, since an evaluation may ask about this condition again; of two
      // threads that do so at once the first to finish decides.
      Known found = find();
      std::lock_guard const lock(_mutex);
      if (!argument.isKnown.load(std::memory_order_relaxed)) {
        argument.known = std::move(found);
        argument.isKnown.store(true, std::memory_order_release);
      }
    }
    return argument.known;
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
  mutable std::array<Argument, 2> _arguments;
};

}  // namespace Zorv::ConditionalFormatters
