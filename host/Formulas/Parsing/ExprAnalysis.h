#pragma once

#include "DOM/FormulaSyntaxTree/Expr.h"

namespace Zorv::Formulas {

/// What is known of a formula without evaluating it. Where it cannot tell, the answer is yes.
[[nodiscard]] DOM::FormulaSyntaxTree::ExprTraits analyse(
    DOM::FormulaSyntaxTree::ExprParts const& parts);

}  // namespace Zorv::Formulas
