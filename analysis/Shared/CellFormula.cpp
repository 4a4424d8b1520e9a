#include "analysis/Shared/CellFormula.h"

#include <boost/variant/get.hpp>

#include "DOM/Ids.h"
#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/Context.h"
#include "Formulas/FoldExpr.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "Utils/NumCast.h"

namespace Zorv::Analysis {

boost::optional<FormulaValue> CellFormula::evaluate(CellIndex cell) {
  Formulas::Context const context(_provider.getTableContext(_table), cell.getRow(),
                                  cell.getColumn(), boost::none, DOM::RowID(0), DOM::ColumnID(0));
  if (!_hasFolded) {
    _folded = Formulas::foldExpr(_expr, context, _provider, _session);
    _hasFolded = true;
  }
  auto const distance = [](auto to, auto from) {
    return numCast<int>(to.get()) - numCast<int>(from.get());
  };
  Formulas::RuntimeDependenciesResolver resolver;
  auto const result = Formulas::calcShiftedExpr(
      _folded ? *_folded : _expr, distance(cell.getColumn(), _base.getColumn()),
      distance(cell.getRow(), _base.getRow()), context, _provider, resolver, _session);
  auto const* const value = boost::get<FormulaValue>(&result);
  return value == nullptr ? boost::none : boost::optional<FormulaValue>(*value);
}

bool CellFormula::isTrueAt(CellIndex cell) {
  namespace Cast = OfficeUtils::FormulaValueCast;
  auto const value = evaluate(cell);
  return value &&
         Cast::toBoolOpt(*value, _provider.getLocaleContext(), Cast::CastMode::Condition, false)
             .value_or(false);
}

}  // namespace Zorv::Analysis
