#pragma once

#include <cstdint>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"

namespace Zorv::Formulas {

/// What is known of a formula without evaluating it. Where it cannot tell, the answer is yes.
[[nodiscard]] DOM::FormulaSyntaxTree::ExprTraits analyse(
    DOM::FormulaSyntaxTree::ExprParts const& parts);

/// A function call within a formula.
struct InnerCall {
  std::uint32_t node = 0;
  bool isByElement = false;  ///< whether it is evaluated element by element
};

/// The calls that read ranges and whose values are the same for every cell: without relative
/// references, volatile functions, defined names, the names that LET gives, or anything that asks
/// where the formula stands. Of calls within each other the outermost alone.
/// Where it cannot tell, a call is left out.
[[nodiscard]] std::vector<InnerCall> findInvariantCalls(
    DOM::FormulaSyntaxTree::ExprParts const& parts);

}  // namespace Zorv::Formulas
