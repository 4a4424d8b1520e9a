#pragma once

#include "Formulas/CalcResult.h"
#include "Formulas/Evaluation/Evaluator.h"

namespace Zorv::Formulas {

/// Evaluates a formula whose relative references are first moved by an offset, around the edges of
/// the sheet: the result of calcExpr() on what shiftExpr() makes, without making it. `functions` is
/// the table by which the formula was parsed.
///
/// Ordinary formulas with a number or a truth value as their result take nothing from the heap.
/// Throws EvaluationLimitError where the evaluation meets a limit.
[[nodiscard]] CalcResult evaluateExpr(DOM::FormulaSyntaxTree::Expr const& expr, Offset offset,
                                      Context const& context,
                                      ContextProvider const& contextProvider,
                                      RuntimeDependenciesResolver& resolver, Workspace& workspace,
                                      FunctionTable const& functions);

}  // namespace Zorv::Formulas
