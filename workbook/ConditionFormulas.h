#pragma once

#include <vector>

#include "DOM/ConditionalFormatOperator.h"
#include "DOM/FormulaSyntaxTree/Expr.h"

namespace Zorv::Workbook {

/// The formulas that a condition evaluates, in the order of its operands. Borrowed from the
/// condition.
[[nodiscard]] std::vector<DOM::FormulaSyntaxTree::Expr const*> listFormulas(
    DOM::ConditionalFormatOperator const& condition);

}  // namespace Zorv::Workbook
