#pragma once

#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "DOM/CellInfo.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/FormulaTracer.h"
#include "Utils/CellIndex.h"
#include "analysis/Explain/CellAccount.h"
#include "workbook/Rule.h"

namespace Zorv::Analysis {

/// The formulas of a resolved rule for cells of its sheet: what does not depend on the cell is
/// prepared once.
///
/// A formula that has met limits of the engine at two cells is not evaluated again: each time may
/// take seconds. Its account then tells that limit for every other cell.
///
/// Borrows its arguments. Threads: one at a time.
class ExplainedRule {
public:
  /// `baseCell`: the cell relative to which the rule's formulas are written.
  ExplainedRule(Workbook::Rule const& rule, CellIndex baseCell,
                Formulas::ContextProvider const& contextProvider);

  /// The accounts of the formulas that the condition evaluates. Throws what the session's budget
  /// throws.
  [[nodiscard]] std::vector<FormulaAccount> traceFormulas(DOM::CellInfo const& cell,
                                                          Formulas::EvaluationSession& session);

  /// The answer of spreadsheet programs at large, if it is another one than `holds`. `operands` are
  /// those of the condition at the cell. Throws what the session's budget throws.
  [[nodiscard]] std::optional<OtherAnswer> findOtherAnswer(
      bool holds, ConditionalFormatters::ConditionOperands const& operands,
      DOM::CellInfo const& cell, Formulas::EvaluationSession& session);

private:
  /// The limits of the engine that a formula has met.
  class MetLimits {
  public:
    /// Notes an exception if it tells such a limit.
    void note(std::exception_ptr const& failure);
    /// The first one, once it is time to give up; null before.
    [[nodiscard]] std::exception_ptr findReason() const noexcept;

  private:
    unsigned _count = 0;
    std::exception_ptr _first;
  };
  struct TracedRuleFormula {
    std::string written;
    DOM::FormulaSyntaxTree::Expr const* expr;
    Formulas::FormulaTracer tracer;
    MetLimits limits = {};
  };
  struct Shift {
    int columns;
    int rows;
  };

  [[nodiscard]] Shift shiftTo(CellIndex cell) const noexcept;
  [[nodiscard]] Formulas::Context contextAt(DOM::CellInfo const& cell) const;
  /// The text of a formula of the rule as it reads at a cell.
  [[nodiscard]] std::string writeAt(DOM::CellInfo const& cell,
                                    DOM::FormulaSyntaxTree::Expr const& expr) const;
  [[nodiscard]] Formulas::ExprTrace trace(TracedRuleFormula& formula, DOM::CellInfo const& cell,
                                          Formulas::EvaluationSession& session) const;
  void foldWidespread(Formulas::Context const& context, Formulas::EvaluationSession& session);
  /// Nothing if it cannot be evaluated.
  [[nodiscard]] std::optional<bool> holdsElsewhere(DOM::CellInfo const& cell,
                                                   Formulas::EvaluationSession& session);

  Workbook::Rule const& _rule;
  CellIndex _baseCell;
  Formulas::ContextProvider const& _contextProvider;
  std::vector<TracedRuleFormula> _formulas;
  /// The condition of other programs; nothing if it is the same.
  std::optional<DOM::FormulaSyntaxTree::Expr> _widespread;
  /// The same for evaluations; made for the first cell.
  std::optional<DOM::FormulaSyntaxTree::Expr> _folded;
  MetLimits _widespreadLimits;
};

}  // namespace Zorv::Analysis
