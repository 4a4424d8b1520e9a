#pragma once

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/CellIndex.h"

namespace Zorv::DOM {
class BinaryConditionalFormatOperator;
class Table;
}  // namespace Zorv::DOM

namespace Zorv::DOM::FormulaSyntaxTree {
class Expr;
}  // namespace Zorv::DOM::FormulaSyntaxTree

namespace Zorv::Formulas {
class ContextProvider;
}  // namespace Zorv::Formulas

namespace Zorv::ConditionalFormatters {

/// Asks whether a cell's value lies between two formulas, both included, or outside them.
///
/// The bounds are used as they stand: when the lower one is the greater, nothing lies between. A
/// value of another kind than a bound is neither between nor outside. A bound without a value
/// counts as kept by "between" and as overstepped by "not between".
///
/// Ownership: borrows the record's arguments, the table and the context provider, which must
/// outlive the operator. Threads: may be called from several threads as far as the formula engine
/// allows.
class CNDFRMT_EXPORT BinaryOperator final : public Operator {
public:
  /// `baseCell` is the cell relative to which the record's arguments are written: the smallest
  /// first row and, independently, the smallest first column of the format's ranges.
  ///
  /// A record of an unknown kind gives a condition that never holds.
  BinaryOperator(DOM::BinaryConditionalFormatOperator const& record, DOM::Table const& table,
                 Formulas::ContextProvider const& contextProvider, CellIndex baseCell);

  /// Evaluates the upper bound, then the lower one, always both, then compares. Passes on what the
  /// evaluation throws.
  [[nodiscard]] bool operator()(FormulaValueData const& data) const override;
  ~BinaryOperator() override = default;

private:
  FormulaExprCalculator _calculator;
  DOM::FormulaSyntaxTree::Expr const& _firstArgument;
  DOM::FormulaSyntaxTree::Expr const& _secondArgument;
  bool (*_test)(FormulaValue const& cellValue, boost::optional<FormulaValue> const& first,
                boost::optional<FormulaValue> const& second);
};

}  // namespace Zorv::ConditionalFormatters
