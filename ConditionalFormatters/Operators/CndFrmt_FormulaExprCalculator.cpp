#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"

#include "ConditionalFormatters/Operands/CndFrmt_FormulaEvaluation.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/TableContext.h"
#include "Utils/PtrUtils.h"

namespace Zorv::ConditionalFormatters {

FormulaExprCalculator::FormulaExprCalculator(DOM::Table const& table,
                                             Formulas::ContextProvider const& contextProvider,
                                             CellIndex baseCell) noexcept
    : _table(&table), _contextProvider(&contextProvider), _baseCell(baseCell) {}

Formulas::ContextProvider const& FormulaExprCalculator::getFormulasContextProvider()
    const noexcept {
  return *_contextProvider;
}

boost::optional<FormulaValue> FormulaExprCalculator::calculate(
    DOM::FormulaSyntaxTree::Expr const& expr, CellIndex cell) const {
  Formulas::RuntimeDependenciesResolver resolver;
  Formulas::Context const context = makeContext(*_contextProvider, *_table, cell);

  auto const [columnOffset, rowOffset] = calculateOffsets(cell, _baseCell);
  if (columnOffset == 0 && rowOffset == 0) {
    return reduceToValue(Formulas::calcExpr(expr, context, getFormulasContextProvider(), resolver));
  }
  Formulas::TableContext const* const tableContext = context.getTableContext();
  auto const shifted = Formulas::shiftExpr(expr, *tableContext, columnOffset, rowOffset,
                                           tableContext->getDocTableIndex(), true);
  return reduceToValue(Formulas::calcExpr(PtrUtils::derefObtained(shifted), context,
                                          getFormulasContextProvider(), resolver));
}

}  // namespace Zorv::ConditionalFormatters
