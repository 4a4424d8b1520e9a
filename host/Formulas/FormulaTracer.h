#pragma once

#include <memory>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/TraceExpr.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

struct TracedFormula;

/// Traces of one formula at many cells of a table, each as traceExpr() gives it.
///
/// The formula is prepared once. Function calls that read ranges or have calls inside, and are the
/// same at every cell, are evaluated by the first trace that needs them, if they give a single
/// value or a reference: of `A1>AVERAGE($A$1:$A$9)` the average. Those that depend on the cell, on
/// the moment, on chance or on a defined name are evaluated for each cell. A call that was
/// evaluated takes no steps of later evaluations, so a formula that meets a limit of the engine at
/// one cell may not meet it at the next.
///
/// Ownership: borrows the expression and the document, which must stay unchanged. Threads: one at a
/// time.
class ZORV_HOST_EXPORT FormulaTracer {
public:
  /// For cells of one table. Linear in the formula; evaluates nothing.
  FormulaTracer(DOM::FormulaSyntaxTree::Expr const& expr, ContextProvider const& contextProvider,
                TraceLimits const& limits = {});
  FormulaTracer(FormulaTracer&& other) noexcept;
  FormulaTracer& operator=(FormulaTracer&& other) noexcept;
  FormulaTracer(FormulaTracer const&) = delete;
  FormulaTracer& operator=(FormulaTracer const&) = delete;
  ~FormulaTracer();

  /// The trace at a cell; see traceExpr().
  [[nodiscard]] ExprTrace trace(int columnOffset, int rowOffset, Context const& context,
                                EvaluationSession& session);

private:
  std::unique_ptr<TracedFormula> _formula;
};

}  // namespace Zorv::Formulas
