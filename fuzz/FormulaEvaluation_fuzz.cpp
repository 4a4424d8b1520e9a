// Evaluates a formula over a random table in each way that the engine has, which must agree.
#include <optional>
#include <string>

#include "DOM/Table.h"
#include "FormulaModel/FormulaException.h"
#include "Formulas/CalcExpr.h"
#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/FoldExpr.h"
#include "Formulas/LookupCache.h"
#include "Formulas/OneTableDocument.h"
#include "Formulas/ParseExpr.h"
#include "Formulas/TraceExpr.h"
#include "OfficeUtils/PinnedMoment.h"
#include "Utils/WorkBudget.h"
#include "fuzz/Fuzzing.h"

namespace {

using namespace Zorv;
using DOM::FormulaSyntaxTree::Expr;
using Formulas::EvaluationSession;

/// One formula, one table, one cell.
class Case {
public:
  Case(Formulas::OneTableDocument const& document, DOM::Table const& table, Expr const& expr)
      : _document(document), _table(table), _expr(expr) {}

  /// Without a session, and so without a budget.
  std::string calculate() const {
    Formulas::RuntimeDependenciesResolver resolver;
    return Fuzzing::describe(Formulas::calcExpr(_expr, contextAt(false), _document, resolver));
  }

  std::string calculate(Expr const& expr, EvaluationSession& session, bool asArray = false) const {
    Formulas::RuntimeDependenciesResolver resolver;
    return Fuzzing::describe(
        Formulas::calcShiftedExpr(expr, 0, 0, contextAt(asArray), _document, resolver, session));
  }

  std::optional<Expr> fold(EvaluationSession& session) const {
    return Formulas::foldExpr(_expr, contextAt(false), _document, session);
  }

  Formulas::ExprTrace trace(EvaluationSession& session) const {
    return Formulas::traceExpr(_expr, 0, 0, contextAt(false), _document, session);
  }

  Expr const& getExpr() const noexcept { return _expr; }

private:
  Formulas::Context contextAt(bool asArray) const {
    boost::optional<FormulaModel::ArrayFormulaIndices> indices;
    if (asArray) {
      indices.emplace();
    }
    return {_document.getTableContext(_table),
            RowIndex(2),
            ColumnIndex(1),
            indices,
            DOM::RowID(0),
            DOM::ColumnID(0)};
  }

  Formulas::OneTableDocument const& _document;
  DOM::Table const& _table;
  Expr const& _expr;
};

/// The last step of a trace is the whole formula, unless that is a constant.
void checkTrace(Formulas::ExprTrace const& trace, std::string const& expected) {
  if (trace.failure || trace.steps.empty() || trace.steps.back().depth != 0) {
    return;
  }
  auto const& value = trace.steps.back().value;
  if (value.kind == Formulas::TracedValue::Kind::Single) {
    Fuzzing::requireEqual(Fuzzing::describe(value.value), expected, "tracing changes no result");
  }
}

void evaluateWithLookups(Case const& formula, bool isRepeatable, std::string const& expected,
                         WorkBudget& budget) {
  Formulas::LookupCache lookups;
  EvaluationSession session(lookups);
  session.setBudget(&budget);
  for (int time = 0; time < 2; ++time) {
    auto const actual = formula.calculate(formula.getExpr(), session);
    if (isRepeatable) {
      Fuzzing::requireEqual(actual, expected, "look-up indexes change no result");
    }
  }
  auto const trace = formula.trace(session);
  if (isRepeatable) {
    checkTrace(trace, expected);
  }
  if (auto const folded = formula.fold(session)) {
    Fuzzing::requireEqual(formula.calculate(*folded, session), expected,
                          "folding changes no result");
  }
}

void evaluate(Case const& formula, bool isRepeatable) {
  WorkBudget budget(Fuzzing::formulaLimits);
  EvaluationSession session;
  session.setBudget(&budget);
  std::string const expected = formula.calculate(formula.getExpr(), session);
  // What the budget allowed once is cheap enough without one.
  auto const alone = formula.calculate();
  if (isRepeatable) {
    Fuzzing::requireEqual(alone, expected, "a session changes no result");
  }
  static_cast<void>(formula.calculate(formula.getExpr(), session, true));
  evaluateWithLookups(formula, isRepeatable, expected, budget);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Fuzzing::FuzzInput input(data, size);
  DOM::Table table;
  input.fillTable(table);
  OfficeUtils::PinnedMoment const moment(Fuzzing::getFixedMoment());
  Formulas::OneTableDocument const document(table);
  try {
    std::string const text = input.takeRest();
    auto const expr = Formulas::parseExpr(text);
    evaluate(Case(document, table, expr), !Fuzzing::mayCallChance(text));
  } catch (Formulas::FormulaParseError const&) {
  } catch (FormulaModel::FormulaException const&) {
  } catch (Formulas::EvaluationLimitError const&) {
  } catch (WorkEnded const&) {
  }
  return 0;
}
