#include "tool/Commands/FormulaProbe.h"

#include <exception>
#include <new>

#include "DOM/Ids.h"
#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "workbook/ConditionFormulas.h"
#include "workbook/DocumentContextProvider.h"
#include "workbook/Ranges.h"

namespace Zorv::Tool {

namespace {

class FormulaProbe {
public:
  FormulaProbe(CommandContext const& context, std::uint64_t mostSteps)
      : _context(context),
        _document(context.selection.getDocument()),
        _provider(_document, context.selection.getOptions().localeName,
                  context.selection.getOptions().timeZone),
        _mostSteps(mostSteps) {}

  /// Returns false once enough has been tried.
  bool probe(Workbook::Rule const& rule) {
    for (auto const* formula : Workbook::listFormulas(rule.format->getOperator())) {
      if (_steps > _mostSteps) {
        return false;
      }
      evaluate(rule, *formula);
    }
    return true;
  }

private:
  void evaluate(Workbook::Rule const& rule, DOM::FormulaSyntaxTree::Expr const& formula) {
    CellIndex const cell = Workbook::findBaseCell(rule.ranges);
    Formulas::Context const place(
        _provider.getTableContext(*_document.getSheets()[rule.sheet].table), cell.getRow(),
        cell.getColumn(), boost::none, DOM::RowID(0), DOM::ColumnID(0));
    Formulas::RuntimeDependenciesResolver dependencies;
    Formulas::EvaluationSession session;
    session.setBudget(&_context.budget);
    try {
      static_cast<void>(
          Formulas::calcShiftedExpr(formula, 0, 0, place, _provider, dependencies, session));
    } catch (WorkEnded const&) {
      throw;
    } catch (std::exception const&) {
      _context.report.addFailure(rule, cell, std::current_exception());
    }
    _steps += session.countSteps();
  }

  CommandContext const& _context;
  Workbook::Document const& _document;
  Workbook::DocumentContextProvider _provider;
  std::uint64_t _mostSteps;
  std::uint64_t _steps = 0;
};

}  // namespace

void probeFormulas(CommandContext const& context, std::uint64_t mostSteps) {
  FormulaProbe probe(context, mostSteps);
  for (auto const sheet : context.selection.getSheets()) {
    for (auto const* rule : context.selection.getResolvedRules(sheet)) {
      if (rule->format != nullptr && !probe.probe(*rule)) {
        return;
      }
    }
  }
}

}  // namespace Zorv::Tool
