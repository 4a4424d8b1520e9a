#pragma once

#include <functional>

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/CellIndex.h"

namespace Zorv::DOM {
class UnaryConditionalFormatOperator;
class Table;
}  // namespace Zorv::DOM

namespace Zorv::DOM::FormulaSyntaxTree {
class Expr;
}  // namespace Zorv::DOM::FormulaSyntaxTree

namespace Zorv::Formulas {
class ContextProvider;
}  // namespace Zorv::Formulas

namespace Zorv::ConditionalFormatters {

/// Compares a cell's value with one formula, or asks whether a formula is true.
///
/// Values of different kinds never compare: "not equal" between a number and a text does not hold
/// either. A formula without a value fails all six comparisons, and counts as false where the
/// formula itself is the condition.
///
/// Ownership: borrows the record's argument, the table and the context provider, which must outlive
/// the operator. Threads: may be called from several threads as far as the formula engine allows.
class CNDFRMT_EXPORT UnaryOperator final : public Operator {
public:
  /// `baseCell` is the cell relative to which the record's argument is written: the smallest first
  /// row and, independently, the smallest first column of the format's ranges.
  ///
  /// A record of an unknown kind is accepted; see operator()().
  UnaryOperator(DOM::UnaryConditionalFormatOperator const& record, DOM::Table const& table,
                Formulas::ContextProvider const& contextProvider, CellIndex baseCell);

  /// Evaluates the argument for the cell, then compares. The argument is evaluated on every call.
  ///
  /// Passes on what the evaluation throws; a FormulaException of the cast to a truth value makes
  /// the condition false instead. Throws std::bad_function_call, after the evaluation, when the
  /// record's kind is unknown.
  [[nodiscard]] bool operator()(FormulaValueData const& data) const override;
  ~UnaryOperator() override = default;

private:
  FormulaExprCalculator _calculator;
  DOM::FormulaSyntaxTree::Expr const& _argument;
  std::function<bool(FormulaValue const& cellValue, boost::optional<FormulaValue> const& argument)>
      _compare;
};

}  // namespace Zorv::ConditionalFormatters
