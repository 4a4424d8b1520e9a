#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "FormulaModel/FormulaValue.h"

namespace Zorv::DOM::FormulaSyntaxTree {
class Expr;
}  // namespace Zorv::DOM::FormulaSyntaxTree

namespace Zorv::Formulas {
class EvaluationSession;
}  // namespace Zorv::Formulas

namespace Zorv::ConditionalFormatters {

class FormulaExprCalculator;

/// One format's condition, to be asked about many cells of an unchanged document: its operator is
/// made once, and arguments that are the same for every cell are evaluated once.
///
/// Ownership: borrows the factory and the format. Threads: may be asked from several threads.
class PreparedCondition {
public:
  PreparedCondition(OperatorsFactory const& factory, ConditionalFormatRef const& formatRef) noexcept
      : _factory(factory), _formatRef(formatRef) {}

  /// Makes the operator, where that has not been done; throws what making it throws, each time.
  void obtainOperator() const {
    if (_ready.load(std::memory_order_acquire) == nullptr) {
      makeOperator();
    }
  }

  /// What the operator answers. Requires obtainOperator(), and a session of the calling thread.
  [[nodiscard]] bool operator()(FormulaValueData const& data,
                                Formulas::EvaluationSession& session) const;

private:
  /// The value of an argument that is the same for every cell, once it is evaluated.
  struct Argument {
    std::atomic<bool> isEvaluated = false;
    boost::optional<FormulaValue> value;
  };

  void makeOperator() const;
  template <class Evaluate>
  void evaluateOnce(Argument& argument, Evaluate const& evaluate) const;
  template <class FormulaOperator>
  [[nodiscard]] bool judge(FormulaOperator const& condition, FormulaValueData const& data,
                           Formulas::EvaluationSession& session) const;

  OperatorsFactory const& _factory;
  ConditionalFormatRef const& _formatRef;
  /// Guards the making of what follows; recursive, because a provider may ask about the table that
  /// it is read for.
  mutable std::recursive_mutex _mutex;
  mutable std::unique_ptr<Operator const> _operator;
  mutable std::atomic<Operator const*> _ready = nullptr;
  mutable std::array<Argument, 2> _arguments;
};

}  // namespace Zorv::ConditionalFormatters
