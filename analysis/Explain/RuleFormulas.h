#pragma once

#include <string_view>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "workbook/Rule.h"

namespace Zorv::Analysis {

/// A formula of a rule's condition. Borrows the rule.
struct RuleFormula {
  std::string_view written;  ///< as the file has it
  DOM::FormulaSyntaxTree::Expr const* expr;
};

/// The formulas that the condition of a resolved rule evaluates, in the order of its operands.
[[nodiscard]] std::vector<RuleFormula> listFormulas(Workbook::Rule const& rule);

}  // namespace Zorv::Analysis
