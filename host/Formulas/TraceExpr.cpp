#include "Formulas/TraceExpr.h"

#include <new>

#include "Formulas/Evaluation/EvaluateExpr.h"
#include "Formulas/Evaluation/ValueObserver.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/Tracing/ObservingFunctions.h"
#include "Formulas/Tracing/TraceWriter.h"
#include "Formulas/Tracing/TracingProvider.h"
#include "Utils/WorkBudget.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Expr;

/// Sets the observer of a workspace as long as it lives.
class ObserverScope {
public:
  ObserverScope(Workspace& workspace, ValueObserver& observer) noexcept : _workspace(workspace) {
    _workspace.observer = &observer;
  }
  ObserverScope(ObserverScope const&) = delete;
  ObserverScope& operator=(ObserverScope const&) = delete;
  ~ObserverScope() { _workspace.observer = nullptr; }

private:
  Workspace& _workspace;
};

}  // namespace

ExprTrace traceExpr(Expr const& expr, int columnOffset, int rowOffset, Context const& context,
                    ContextProvider const& contextProvider, EvaluationSession& session,
                    TraceLimits const& limits) {
  ExprTrace trace;
  if (expr.getParts().nodes.empty()) {
    return trace;
  }
  auto const& table = *context.getTableContext();
  auto const shifted =
      shiftExpr(expr, table, columnOffset, rowOffset, table.getDocTableIndex(), true);
  TraceWriter writer(table, CellIndex(context.getRow(), context.getColumn()), limits, trace);
  Expr const observed = writer.addRoot(*shifted);
  TracingProvider const provider(contextProvider, writer);
  Workspace& workspace = session.getOrCreateWorkspace();
  ObserverScope const scope(workspace, writer);
  try {
    RuntimeDependenciesResolver nothingIsFound;
    static_cast<void>(evaluateExpr(observed, Offset{}, context, provider, nothingIsFound, workspace,
                                   observingFunctions()));
  } catch (std::bad_alloc const&) {
    throw;
  } catch (WorkEnded const&) {
    throw;
  } catch (std::exception const&) {
    trace.failure = std::current_exception();
  }
  return trace;
}

}  // namespace Zorv::Formulas
