#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"

#include <utility>

#include "ConditionalFormatters/Operators/CndFrmt_BinaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TextOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/FormulaSyntaxTree/Expr.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// The kinds of record whose conditions have formulas, by their place in the variant of records.
enum FormulaRecord : int { Unary = 1, Binary = 2, Text = 3 };

/// Whether every cell sees the same value of a formula, at every moment.
bool isSameForEveryCell(DOM::FormulaSyntaxTree::Expr const& expr) noexcept {
  auto const& traits = expr.getTraits();
  return !traits.dependsOnCell && !traits.callsVolatileFunctions && !traits.usesNames;
}

}  // namespace

bool PreparedCondition::operator()(FormulaValueData const& data,
                                   Formulas::EvaluationSession& session) const {
  Operator const& condition = *_ready.load(std::memory_order_acquire);
  switch (_formatRef.second.get().getOperator().which()) {
    case FormulaRecord::Unary:
      return judge(static_cast<UnaryOperator const&>(condition), data, session);
    case FormulaRecord::Binary:
      return judge(static_cast<BinaryOperator const&>(condition), data, session);
    case FormulaRecord::Text:
      return judge(static_cast<TextOperator const&>(condition), data, session);
    default:
      return condition(data);
  }
}

void PreparedCondition::makeOperator() const {
  std::lock_guard const lock(_mutex);
  if (!_operator) {
    std::unique_ptr<Operator const> made = _factory.create(_formatRef);
    if (!_operator) {
      _operator = std::move(made);
      _ready.store(_operator.get(), std::memory_order_release);
    }
  }
}

template <class Evaluate>
void PreparedCondition::evaluateOnce(Argument& argument, Evaluate const& evaluate) const {
  // Evaluated without the lock, since an evaluation may ask about this condition again; of two
  // threads that evaluate at once the first to finish decides.
  auto value = evaluate();
  std::lock_guard const lock(_mutex);
  if (!argument.isEvaluated.load(std::memory_order_relaxed)) {
    argument.value = std::move(value);
    argument.isEvaluated.store(true, std::memory_order_release);
  }
}

template <class FormulaOperator>
bool PreparedCondition::judge(FormulaOperator const& condition, FormulaValueData const& data,
                              Formulas::EvaluationSession& session) const {
  std::array<boost::optional<FormulaValue>, 2> ownValues;
  auto const calculate =
      [&](std::size_t number,
          DOM::FormulaSyntaxTree::Expr const& expr) -> boost::optional<FormulaValue> const& {
    FormulaExprCalculator const& calculator = condition.getCalculator();
    if (!isSameForEveryCell(expr)) {
      return ownValues[number] = calculator.calculateInPlace(expr, data.cellIndex, session);
    }
    Argument& argument = _arguments[number];
    if (!argument.isEvaluated.load(std::memory_order_acquire)) {
      evaluateOnce(argument,
                   [&] { return calculator.calculateInPlace(expr, data.cellIndex, session); });
    }
    return argument.value;
  };
  return condition.judge(data, calculate);
}

}  // namespace Zorv::ConditionalFormatters
