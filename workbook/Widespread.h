#pragma once

#include <optional>
#include <string>

#include "DOM/ConditionalFormatOperator.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "workbook/Rule.h"

namespace Zorv::Workbook {

/// A rule's condition as spreadsheet programs at large understand it: a formula that is true where
/// they apply the rule.
struct WidespreadCondition {
  /// Such as `NOT(ISERROR(SEARCH("x",B2)))`, without a leading `=`. References are relative to the
  /// first row and the first column of all ranges of the rule.
  std::string formula;
  DOM::FormulaSyntaxTree::Expr expr;  ///< the same, parsed
};

/// The widespread form of a condition of a rule; `condition` is the library's form.
///
/// Nothing for a formula that must be true (see isFormula()), for a rule without ranges, and for a
/// rule of so many ranges that the formula would be longer than formulas may be.
///
/// Evaluates nothing. Cost: one parse; quadratic in the number of ranges, which is bounded.
[[nodiscard]] std::optional<WidespreadCondition> findWidespread(
    DOM::ConditionalFormatOperator const& condition, Rule const& rule);

/// The same for the condition of a rule that is resolved; nothing for any other rule.
[[nodiscard]] std::optional<WidespreadCondition> findWidespread(Rule const& rule);

/// True for a formula that must be true, which means the same everywhere.
[[nodiscard]] bool isFormula(DOM::ConditionalFormatOperator const& condition) noexcept;

}  // namespace Zorv::Workbook
