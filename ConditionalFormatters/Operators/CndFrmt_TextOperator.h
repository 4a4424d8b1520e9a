#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include <boost/optional.hpp>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/CellIndex.h"
#include "Utils/PtrUtils.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

namespace Zorv::DOM::FormulaSyntaxTree {
class Expr;
}  // namespace Zorv::DOM::FormulaSyntaxTree

namespace Zorv::Formulas {
class ContextProvider;
}  // namespace Zorv::Formulas

namespace Zorv::ConditionalFormatters {

/// Looks for a text, literal or that of a formula, inside a cell's text or at its ends.
///
/// Bytes are compared as they are: upper and lower case differ, nothing is trimmed. Values of other
/// kinds are searched in the text that general formatting gives them. Every text contains, begins
/// and ends with the empty one.
///
/// Ownership: borrows the record's argument, the table and the context provider, which must outlive
/// the operator. Threads: may be called from several threads as far as the formula engine allows.
class CNDFRMT_EXPORT TextOperator final : public Operator {
public:
  /// `baseCell` is the cell relative to which a formula argument is written: the smallest first row
  /// and, independently, the smallest first column of the format's ranges.
  ///
  /// A record of an unknown kind gives a condition that never holds.
  TextOperator(DOM::TextConditionalFormatOperator const& record, DOM::Table const& table,
               Formulas::ContextProvider const& contextProvider, CellIndex baseCell);

  /// A formula without a value makes every kind false, "does not contain" too.
  ///
  /// Passes on what the evaluation and the casts to text throw. A null formula is a broken rule of
  /// the document model and stops the process.
  [[nodiscard]] bool operator()(FormulaValueData const& data) const override;
  ~TextOperator() override = default;

  /// What operator()() answers, with the value of a formula argument from
  /// `calculate(number, expression)`, where the only argument has the number 0.
  template <class Calculate>
  [[nodiscard]] bool judge(FormulaValueData const& data, Calculate const& calculate) const {
    if (auto const* literal = boost::get<std::string>(&_argument)) {
      return testLiteral(data.value, *literal);
    }
    auto const& formula = boost::get<std::unique_ptr<DOM::FormulaSyntaxTree::Expr>>(_argument);
    boost::optional<FormulaValue> const& argument = calculate(0, PtrUtils::derefHeld(formula));
    return argument && testTextOf(data.value, *argument);
  }

  [[nodiscard]] FormulaExprCalculator const& getCalculator() const noexcept { return _calculator; }

private:
  [[nodiscard]] bool testLiteral(FormulaValue const& cellValue, std::string const& literal) const;
  [[nodiscard]] bool testTextOf(FormulaValue const& cellValue, FormulaValue const& argument) const;

  FormulaExprCalculator _calculator;
  DOM::TextConditionalFormatOperator::Argument const& _argument;
  bool (*_test)(std::string const& cellText, std::string const& pattern);
};

}  // namespace Zorv::ConditionalFormatters
