#include "Formulas/CalcExpr.h"

#include <string>
#include <utility>

#include "Formulas/Evaluation/EvaluateExpr.h"
#include "Formulas/Functions/BuiltinFunctions.h"

namespace Zorv::Formulas {

CalcResult calcExpr(DOM::FormulaSyntaxTree::Expr const& expr, Context const& context,
                    ContextProvider const& contextProvider, RuntimeDependenciesResolver& resolver) {
  Workspace workspace;
  return evaluateExpr(expr, Offset{}, context, contextProvider, resolver, workspace,
                      builtinFunctions());
}

}  // namespace Zorv::Formulas
