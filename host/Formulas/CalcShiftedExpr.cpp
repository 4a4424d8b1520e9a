#include "Formulas/CalcShiftedExpr.h"

#include "Formulas/Evaluation/EvaluateExpr.h"
#include "Formulas/Functions/BuiltinFunctions.h"

namespace Zorv::Formulas {

CalcResult calcShiftedExpr(DOM::FormulaSyntaxTree::Expr const& expr, int columnOffset,
                           int rowOffset, Context const& context,
                           ContextProvider const& contextProvider,
                           RuntimeDependenciesResolver& resolver, EvaluationSession& session) {
  Offset const offset{.rows = rowOffset, .columns = columnOffset};
  return evaluateExpr(expr, offset, context, contextProvider, resolver,
                      session.getOrCreateWorkspace(), builtinFunctions());
}

}  // namespace Zorv::Formulas
