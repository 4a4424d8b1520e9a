#include "Formulas/FormulaTracer.h"

#include <new>
#include <optional>

#include "Formulas/Evaluation/EvaluateExpr.h"
#include "Formulas/Evaluation/ValueObserver.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/Tracing/ObservedFormula.h"
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

/// State that the traces of a formula share.
struct TracedFormula {
  TracedFormula(Expr const& formula, ContextProvider const& provider, TraceLimits const& most)
      : expr(formula), contextProvider(provider), limits(most) {
    if (!expr.getParts().nodes.empty()) {
      observed.emplace(expr.getParts(), limits, 0);
      known.emplace(expr.getParts());
    }
  }

  Expr const& expr;
  ContextProvider const& contextProvider;
  TraceLimits limits;
  std::optional<ObservedFormula> observed;  ///< nothing for an empty formula
  std::optional<KnownParts> known;          ///< the same
};

FormulaTracer::FormulaTracer(Expr const& expr, ContextProvider const& contextProvider,
                             TraceLimits const& limits)
    : _formula(std::make_unique<TracedFormula>(expr, contextProvider, limits)) {}
FormulaTracer::FormulaTracer(FormulaTracer&& other) noexcept = default;
FormulaTracer& FormulaTracer::operator=(FormulaTracer&& other) noexcept = default;
FormulaTracer::~FormulaTracer() = default;

ExprTrace FormulaTracer::trace(int columnOffset, int rowOffset, Context const& context,
                               EvaluationSession& session) {
  ExprTrace trace;
  TracedFormula& formula = *_formula;
  if (!formula.observed) {
    return trace;
  }
  auto const& table = *context.getTableContext();
  auto const shifted =
      shiftExpr(formula.expr, table, columnOffset, rowOffset, table.getDocTableIndex(), true);
  TraceWriter writer(table, CellIndex(context.getRow(), context.getColumn()), formula.limits,
                     trace);
  writer.addRoot(*formula.observed, *formula.known, *shifted);
  TracingProvider const provider(formula.contextProvider, writer);
  Workspace& workspace = session.getOrCreateWorkspace();
  ObserverScope const scope(workspace, writer);
  try {
    RuntimeDependenciesResolver nothingIsFound;
    static_cast<void>(evaluateExpr(formula.observed->getObserved(),
                                   Offset{.rows = rowOffset, .columns = columnOffset}, context,
                                   provider, nothingIsFound, workspace, observingFunctions()));
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
