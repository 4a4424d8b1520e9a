#pragma once

#include <string>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Utils/CellIndex.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

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

private:
  FormulaExprCalculator _calculator;
  DOM::TextConditionalFormatOperator::Argument const& _argument;
  bool (*_test)(std::string const& cellText, std::string const& pattern);
};

}  // namespace Zorv::ConditionalFormatters
