#include "analysis/Explain/ExplainedRule.h"

#include <exception>
#include <new>
#include <utility>

#include <boost/variant/get.hpp>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/FoldExpr.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/WriteExpr.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "Utils/WorkBudget.h"
#include "analysis/Explain/RuleFormulas.h"
#include "workbook/Widespread.h"
#include "workbook/WidespreadDifference.h"

namespace Zorv::Analysis {

namespace {

/// Calls `evaluate()`. Its failure as a formula is given to `onFailure`; others are thrown.
template <class Evaluate, class OnFailure>
void evaluateSafely(Evaluate const& evaluate, OnFailure const& onFailure) {
  try {
    evaluate();
  } catch (std::bad_alloc const&) {
    throw;
  } catch (WorkEnded const&) {
    throw;
  } catch (std::exception const&) {
    onFailure(std::current_exception());
  }
}

}  // namespace

ExplainedRule::ExplainedRule(Workbook::Rule const& rule, CellIndex baseCell,
                             Formulas::ContextProvider const& contextProvider)
    : _rule(rule), _baseCell(baseCell), _contextProvider(contextProvider) {
  for (RuleFormula& formula : listFormulas(rule)) {
    _formulas.push_back(
        {std::move(formula.written), formula.expr, {*formula.expr, contextProvider}, {}});
  }
  if (auto widespread = Workbook::findWidespread(rule)) {
    _widespread = std::move(widespread->expr);
  }
}

std::vector<FormulaAccount> ExplainedRule::traceFormulas(DOM::CellInfo const& cell,
                                                         Formulas::EvaluationSession& session) {
  std::vector<FormulaAccount> accounts;
  for (TracedRuleFormula& formula : _formulas) {
    auto traced = trace(formula, cell, session);
    if (!traced.steps.empty() || traced.failure) {
      accounts.push_back({formula.written, std::move(traced)});
    }
  }
  return accounts;
}

Formulas::ExprTrace ExplainedRule::trace(TracedRuleFormula& formula, DOM::CellInfo const& cell,
                                         Formulas::EvaluationSession& session) const {
  if (auto const reason = formula.limits.findReason()) {
    return {.text = writeAt(cell, *formula.expr), .steps = {}, .isCut = true, .failure = reason};
  }
  auto const [columns, rows] = shiftTo(cell.getCellIndex());
  auto traced = formula.tracer.trace(columns, rows, contextAt(cell), session);
  formula.limits.note(traced.failure);
  return traced;
}

std::optional<OtherAnswer> ExplainedRule::findOtherAnswer(
    bool holds, ConditionalFormatters::ConditionOperands const& operands, DOM::CellInfo const& cell,
    Formulas::EvaluationSession& session) {
  auto const elsewhere = _widespread ? holdsElsewhere(cell, session) : std::nullopt;
  if (!elsewhere || *elsewhere == holds) {
    return std::nullopt;
  }
  FormulaValue const value = cell.getCell() != nullptr ? cell.getCell()->value : FormulaValue();
  return OtherAnswer{
      .holds = *elsewhere,
      .reason = Workbook::explainDifference(_rule.format->getOperator(), value, operands),
      .formula = writeAt(cell, *_widespread)};
}

std::optional<bool> ExplainedRule::holdsElsewhere(DOM::CellInfo const& cell,
                                                  Formulas::EvaluationSession& session) {
  namespace Cast = OfficeUtils::FormulaValueCast;
  std::optional<bool> holds;
  if (_widespreadLimits.findReason()) {
    return holds;
  }
  auto const context = contextAt(cell);
  foldWidespread(context, session);
  auto const evaluate = [&] {
    auto const [columns, rows] = shiftTo(cell.getCellIndex());
    Formulas::RuntimeDependenciesResolver nothingIsFound;
    auto const result = Formulas::calcShiftedExpr(*_folded, columns, rows, context,
                                                  _contextProvider, nothingIsFound, session);
    auto const* const value = boost::get<FormulaValue>(&result);
    holds = value != nullptr && Cast::toBoolOpt(*value, _contextProvider.getLocaleContext(),
                                                Cast::CastMode::Condition, false)
                                    .value_or(false);
  };
  evaluateSafely(evaluate,
                 [&](std::exception_ptr const& failure) { _widespreadLimits.note(failure); });
  return holds;
}

void ExplainedRule::foldWidespread(Formulas::Context const& context,
                                   Formulas::EvaluationSession& session) {
  if (_folded) {
    return;
  }
  // A call that cannot be evaluated may stand in a branch that no cell takes.
  evaluateSafely(
      [&] { _folded = Formulas::foldExpr(*_widespread, context, _contextProvider, session); },
      [](std::exception_ptr const& /*failure*/) {});
  if (!_folded) {
    _folded = *_widespread;
  }
}

void ExplainedRule::MetLimits::note(std::exception_ptr const& failure) {
  if (!failure) {
    return;
  }
  try {
    std::rethrow_exception(failure);
  } catch (Formulas::EvaluationLimitError const&) {
    _first = ++_count == 1 ? failure : _first;
  } catch (std::exception const&) {
    // Failures of other kinds cost little, and depend on the cell.
  }
}

std::exception_ptr ExplainedRule::MetLimits::findReason() const noexcept {
  constexpr unsigned mostLimits = 2;
  return _count >= mostLimits ? _first : nullptr;
}

ExplainedRule::Shift ExplainedRule::shiftTo(CellIndex cell) const noexcept {
  auto const distance = [](auto to, auto from) {
    return static_cast<int>(to.get()) - static_cast<int>(from.get());
  };
  return {.columns = distance(cell.getColumn(), _baseCell.getColumn()),
          .rows = distance(cell.getRow(), _baseCell.getRow())};
}

Formulas::Context ExplainedRule::contextAt(DOM::CellInfo const& cell) const {
  CellIndex const index = cell.getCellIndex();
  return {_contextProvider.getTableContext(cell.getTable()),
          index.getRow(),
          index.getColumn(),
          boost::none,
          DOM::RowID(0),
          DOM::ColumnID(0)};
}

std::string ExplainedRule::writeAt(DOM::CellInfo const& cell,
                                   DOM::FormulaSyntaxTree::Expr const& expr) const {
  auto const [columns, rows] = shiftTo(cell.getCellIndex());
  auto const& table = *_contextProvider.getTableContext(cell.getTable());
  return Formulas::writeExpr(
      *Formulas::shiftExpr(expr, table, columns, rows, table.getDocTableIndex(), true));
}

}  // namespace Zorv::Analysis
