#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedFormula.h"

#include <exception>
#include <new>
#include <utility>

#include "ConditionalFormatters/Operands/CndFrmt_FormulaEvaluation.h"
#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/FoldExpr.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "Formulas/TableContext.h"
#include "Utils/WorkBudget.h"

namespace Zorv::ConditionalFormatters {

namespace {

using DOM::FormulaSyntaxTree::Expr;

bool isSameForEveryCell(Expr const& expr) {
  auto const& traits = expr.getTraits();
  return !traits.dependsOnCell && !traits.callsVolatileFunctions && !traits.usesNames;
}

}  // namespace

PreparedFormula::PreparedFormula(FormulaOrigin const& origin, Expr const& expr)
    : _origin(origin), _expr(expr), _isSameForEveryCell(isSameForEveryCell(expr)) {}

std::optional<PreparedFormula::Common> PreparedFormula::findCommon() const noexcept {
  Shared const* const shared = _shared.find();
  if (shared == nullptr) {
    return std::nullopt;
  }
  return Common{_isSameForEveryCell ? &shared->value : nullptr,
                shared->folded ? shared->folded.get() : &_expr};
}

void PreparedFormula::prepareFor(CellIndex cell, Formulas::EvaluationSession& session) const {
  _shared.getOrCreate([&] { return prepare(cell, session); });
}

boost::optional<FormulaValue> const& PreparedFormula::evaluateOwn(
    CellIndex cell, Formulas::EvaluationSession& session,
    boost::optional<FormulaValue>& ownValue) const {
  // An evaluation may ask about this condition again, so no lock is held during one.
  Shared const& shared = _shared.getOrCreate([&] { return prepare(cell, session); });
  if (_isSameForEveryCell && isShiftable(cell)) {
    return shared.value;
  }
  evaluateAt(shared.folded ? *shared.folded : _expr, cell, session, ownValue);
  return ownValue;
}

std::unique_ptr<PreparedFormula::Shared const> PreparedFormula::prepare(
    CellIndex cell, Formulas::EvaluationSession& session) const {
  auto shared = std::make_unique<Shared>();
  if (_isSameForEveryCell) {
    evaluateAt(_expr, cell, session, shared->value);
  } else {
    fold(*shared, cell, session);
  }
  return shared;
}

void PreparedFormula::fold(Shared& shared, CellIndex cell,
                           Formulas::EvaluationSession& session) const {
  try {
    auto const context = makeContext(_origin.contextProvider, _origin.table, cell);
    if (auto folded = Formulas::foldExpr(_expr, context, _origin.contextProvider, session)) {
      shared.folded = std::make_unique<Expr const>(std::move(*folded));
    }
    shared.comparison = findComparison(shared.folded ? *shared.folded : _expr);
  } catch (std::bad_alloc const&) {
    throw;
  } catch (WorkEnded const&) {
    throw;
  } catch (std::exception const&) {
    // The call may stand in a branch that no cell takes: the formula is kept unfolded, and throws
    // for the cells that do take it.
  }
}

std::optional<Formulas::NumberComparison> PreparedFormula::findComparison(Expr const& expr) const {
  auto comparison = Formulas::NumberComparison::find(expr);
  if (!comparison) {
    return std::nullopt;
  }
  auto const& reference = comparison->getCell();
  bool const isOwnCell = reference.firstRowIsRelative && reference.firstColumnIsRelative &&
                         reference.firstRow == _origin.baseCell.getRow().get() &&
                         reference.firstColumn == _origin.baseCell.getColumn().get();
  auto const* const context = _origin.contextProvider.getTableContext(_origin.table);
  bool const isOwnTable = context != nullptr && &context->getTable() == &_origin.table;
  return isOwnCell && isOwnTable ? comparison : std::nullopt;
}

void PreparedFormula::evaluateAt(Expr const& expr, CellIndex cell,
                                 Formulas::EvaluationSession& session,
                                 boost::optional<FormulaValue>& value) const {
  if (hasGivenUp()) {
    std::rethrow_exception(*_limit.find());
  }
  try {
    Formulas::RuntimeDependenciesResolver resolver;
    auto const context = makeContext(_origin.contextProvider, _origin.table, cell);
    auto const [columnOffset, rowOffset] = calculateOffsets(cell, _origin.baseCell);
    reduceInto(value, Formulas::calcShiftedExpr(expr, columnOffset, rowOffset, context,
                                                _origin.contextProvider, resolver, session));
  } catch (Formulas::EvaluationLimitError const&) {
    _limit.getOrCreate(
        [] { return std::make_unique<std::exception_ptr const>(std::current_exception()); });
    _limitCount.fetch_add(1, std::memory_order_release);
    throw;
  }
}

}  // namespace Zorv::ConditionalFormatters
