#pragma once

#include <optional>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/EvaluationSession.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Puts the values of function calls in their places, where these read ranges or have calls inside,
/// and are the same for every cell, and then the results of operators between constants: of
/// `A1>2*AVERAGE($A$1:$A$9)` twice the average. Nothing where there is no such call.
///
/// As long as the document does not change, the result evaluates to what the expression does, at
/// any cell of the table of `context`, and neither reads those ranges again nor
/// costs more.
/// Calls that give references or arrays stay as they are, and so do those whose value depends on
/// the cell, on the moment, on chance or on a defined name. Evaluates each such call once, also in
/// the branches of an IF.
///
/// Requires that `context` is none of an array formula. Throws what calcExpr() throws. Threads: as
/// calcShiftedExpr().
[[nodiscard]] ZORV_HOST_EXPORT std::optional<DOM::FormulaSyntaxTree::Expr> foldExpr(
    DOM::FormulaSyntaxTree::Expr const& expr, Context const& context,
    ContextProvider const& contextProvider, EvaluationSession& session);

}  // namespace Zorv::Formulas
