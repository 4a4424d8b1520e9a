#include "ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h"

#include <memory>
#include <utility>

#include <boost/none.hpp>
#include <boost/variant/get.hpp>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/Ids.h"
#include "FormulaModel/FormulaArray.h"
#include "Formulas/CalcExpr.h"
#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/FoldExpr.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/TableContext.h"
#include "Utils/Assert.h"
#include "Utils/CheckedPtr.h"
#include "Utils/NumCast.h"
#include "Utils/PtrUtils.h"

namespace Zorv::ConditionalFormatters {

namespace {

constexpr char const* sourceFile =
    "/code/ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator";

/// How far relative references move.
struct Offsets {
  int column;
  int row;
};

Offsets calculateOffsets(CellIndex cell, CellIndex baseCell) {
  // One statement for each conversion: the first one that fails is the one reported.
  int const column = numCast<int>(cell.getColumn().get());
  int const baseColumn = numCast<int>(baseCell.getColumn().get());
  int const row = numCast<int>(cell.getRow().get());
  int const baseRow = numCast<int>(baseCell.getRow().get());
  return {column - baseColumn, row - baseRow};
}

Formulas::Context makeContext(Formulas::ContextProvider const& provider, DOM::Table const& table,
                              CellIndex cell) {
  return {provider.getTableContext(table),
          cell.getRow(),
          cell.getColumn(),
          boost::none,
          DOM::RowID(0),
          DOM::ColumnID(0)};
}

FormulaValue takeOnlyValue(std::shared_ptr<FormulaModel::FormulaArray const> const& result) {
  CheckedPtr<FormulaModel::FormulaArray const> const array(result);
  if (array->getHeight() != 1) {
    doFailAssert(sourceFile, 65, "array->getHeight() == 1");
  }
  if (array->getWidth() != 1) {
    doFailAssert(sourceFile, 66, "array->getWidth() == 1");
  }
  return *array->begin();
}

boost::optional<FormulaValue> reduceToValue(Formulas::CalcResult result) {
  if (auto* value = boost::get<FormulaValue>(&result)) {
    return std::move(*value);
  }
  using Array = std::shared_ptr<FormulaModel::FormulaArray const>;
  if (auto const* array = boost::get<Array>(&result)) {
    return takeOnlyValue(*array);
  }
  return boost::none;
}

}  // namespace

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

boost::optional<FormulaValue> FormulaExprCalculator::calculateInPlace(
    DOM::FormulaSyntaxTree::Expr const& expr, CellIndex cell,
    Formulas::EvaluationSession& session) const {
  Formulas::RuntimeDependenciesResolver resolver;
  Formulas::Context const context = makeContext(*_contextProvider, *_table, cell);
  auto const [columnOffset, rowOffset] = calculateOffsets(cell, _baseCell);
  return reduceToValue(Formulas::calcShiftedExpr(expr, columnOffset, rowOffset, context,
                                                 getFormulasContextProvider(), resolver, session));
}

std::optional<DOM::FormulaSyntaxTree::Expr> FormulaExprCalculator::fold(
    DOM::FormulaSyntaxTree::Expr const& expr, CellIndex cell,
    Formulas::EvaluationSession& session) const {
  return Formulas::foldExpr(expr, makeContext(*_contextProvider, *_table, cell),
                            getFormulasContextProvider(), session);
}

}  // namespace Zorv::ConditionalFormatters
