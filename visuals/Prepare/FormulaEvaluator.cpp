#include "visuals/Prepare/FormulaEvaluator.h"

#include <memory>

#include <boost/none.hpp>
#include <boost/variant/get.hpp>

#include "DOM/Ids.h"
#include "FormulaModel/FormulaArray.h"
#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/Context.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "OfficeUtils/FormulaValueCast.h"

namespace Zorv::Visuals {

namespace {

namespace Cast = OfficeUtils::FormulaValueCast;

std::optional<FormulaValue> takeValue(Formulas::CalcResult const& result) {
  if (auto const* const value = boost::get<FormulaValue>(&result)) {
    return *value;
  }
  using Array = std::shared_ptr<FormulaModel::FormulaArray const>;
  auto const* const array = boost::get<Array>(&result);
  return array != nullptr ? std::optional(*(*array)->begin()) : std::nullopt;
}

}  // namespace

FormulaEvaluator::FormulaEvaluator(DOM::Table const& table,
                                   Formulas::ContextProvider const& provider,
                                   Formulas::LookupCache& lookups,
                                   OfficeUtils::Clock::TimePoint moment, WorkBudget* budget)
    : _table(table), _provider(provider), _moment(moment), _session(lookups, _moment) {
  _session.setBudget(budget);
}

std::optional<FormulaValue> FormulaEvaluator::evaluate(DOM::FormulaSyntaxTree::Expr const& expr,
                                                       CellIndex baseCell, CellIndex cell) {
  auto const offset = [](unsigned long to, unsigned long from) {
    return static_cast<int>(static_cast<long>(to) - static_cast<long>(from));
  };
  Formulas::Context const context(_provider.getTableContext(_table), cell.getRow(),
                                  cell.getColumn(), boost::none, DOM::RowID(0), DOM::ColumnID(0));
  Formulas::RuntimeDependenciesResolver resolver;
  return takeValue(
      Formulas::calcShiftedExpr(expr, offset(cell.getColumn().get(), baseCell.getColumn().get()),
                                offset(cell.getRow().get(), baseCell.getRow().get()), context,
                                _provider, resolver, _session));
}

bool FormulaEvaluator::isTrue(DOM::FormulaSyntaxTree::Expr const& expr, CellIndex baseCell,
                              CellIndex cell) {
  auto const value = evaluate(expr, baseCell, cell);
  return value &&
         Cast::toBoolOpt(*value, _provider.getLocaleContext(), Cast::CastMode::Condition, false)
             .value_or(false);
}

}  // namespace Zorv::Visuals
