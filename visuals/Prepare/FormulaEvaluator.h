#pragma once

#include <optional>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/LookupCache.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/Moment.h"
#include "Utils/CellIndex.h"
#include "Utils/WorkBudget.h"

namespace Zorv::Visuals {

/// Evaluates formulas at cells of a table, for one pass and one thread. Borrows its arguments.
class FormulaEvaluator {
public:
  FormulaEvaluator(DOM::Table const& table, Formulas::ContextProvider const& provider,
                   Formulas::LookupCache& lookups, OfficeUtils::Clock::TimePoint moment,
                   WorkBudget* budget);

  /// The value of a formula at a cell. References are written as seen from the base cell. Nothing
  /// where it gives a reference to several cells. Throws what the engine throws.
  [[nodiscard]] std::optional<FormulaValue> evaluate(DOM::FormulaSyntaxTree::Expr const& expr,
                                                     CellIndex baseCell, CellIndex cell);

  /// True where the value is a truth value or a number, as conditions take it.
  [[nodiscard]] bool isTrue(DOM::FormulaSyntaxTree::Expr const& expr, CellIndex baseCell,
                            CellIndex cell);

private:
  DOM::Table const& _table;
  Formulas::ContextProvider const& _provider;
  OfficeUtils::Moment _moment;
  Formulas::EvaluationSession _session;
};

}  // namespace Zorv::Visuals
