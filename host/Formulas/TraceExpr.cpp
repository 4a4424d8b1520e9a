#include "Formulas/TraceExpr.h"

#include "Formulas/FormulaTracer.h"

namespace Zorv::Formulas {

ExprTrace traceExpr(DOM::FormulaSyntaxTree::Expr const& expr, int columnOffset, int rowOffset,
                    Context const& context, ContextProvider const& contextProvider,
                    EvaluationSession& session, TraceLimits const& limits) {
  return FormulaTracer(expr, contextProvider, limits)
      .trace(columnOffset, rowOffset, context, session);
}

}  // namespace Zorv::Formulas
