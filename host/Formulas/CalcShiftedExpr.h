#pragma once

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/CalcExpr.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Evaluates an expression with its relative references moved, around the sheet's edges: the result
/// of calcExpr() on what shiftExpr() makes, without making it. Throws what calcExpr() throws.
///
/// For one expression and many cells of an unchanged document, which the session makes fast.
/// Ordinary formulas whose result is a number or a truth value allocate nothing, but for the first
/// one of a session. Threads: may be called from several threads at once while the document stays
/// unchanged, each with a session of its own.
[[nodiscard]] ZORV_HOST_EXPORT CalcResult calcShiftedExpr(DOM::FormulaSyntaxTree::Expr const& expr,
                                                          int columnOffset, int rowOffset,
                                                          Context const& context,
                                                          ContextProvider const& contextProvider,
                                                          RuntimeDependenciesResolver& resolver,
                                                          EvaluationSession& session);

}  // namespace Zorv::Formulas
