#pragma once

#include <string>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "workbook/Rule.h"

namespace Zorv::Analysis {

/// A formula of a rule's condition. Borrows the rule.
struct RuleFormula {
  /// As the file has it. One that the file has in another form, such as the condition of other
  /// programs, is written from `expr`.
  std::string written;
  DOM::FormulaSyntaxTree::Expr const* expr;
};

/// The formulas that the condition of a resolved rule evaluates, in the order of its operands.
[[nodiscard]] std::vector<RuleFormula> listFormulas(Workbook::Rule const& rule);

}  // namespace Zorv::Analysis
