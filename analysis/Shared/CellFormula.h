#pragma once

#include <optional>

#include <boost/optional.hpp>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/EvaluationSession.h"
#include "Utils/CellIndex.h"

namespace Zorv::Analysis {

/// Evaluates one formula of a rule at many cells of a table, as the library does.
///
/// What the formula computes from fixed ranges is computed at the first cell.
///
/// Ownership: borrows everything, which must outlive it and not change. Threads: one at a time.
/// Cost: as Formulas::calcShiftedExpr().
class CellFormula {
public:
  /// The formula's relative references are relative to `base`.
  CellFormula(Formulas::ContextProvider const& provider, DOM::Table const& table,
              DOM::FormulaSyntaxTree::Expr const& expr, CellIndex base,
              Formulas::EvaluationSession& session)
      : _provider(provider), _table(table), _expr(expr), _base(base), _session(session) {}

  /// The value at a cell; nothing if it is a reference to several cells. Throws what the engine
  /// throws.
  [[nodiscard]] boost::optional<FormulaValue> evaluate(CellIndex cell);

  /// True if the value at a cell is a true condition. Throws what the engine throws.
  [[nodiscard]] bool isTrueAt(CellIndex cell);

private:
  Formulas::ContextProvider const& _provider;
  DOM::Table const& _table;
  DOM::FormulaSyntaxTree::Expr const& _expr;
  CellIndex _base;
  Formulas::EvaluationSession& _session;
  std::optional<DOM::FormulaSyntaxTree::Expr> _folded;
  bool _hasFolded = false;
};

}  // namespace Zorv::Analysis
