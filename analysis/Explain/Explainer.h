#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Formulas/EvaluationSession.h"
#include "Formulas/LookupCache.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/CellIndex.h"
#include "Utils/WorkBudget.h"
#include "analysis/Explain/CellAccount.h"
#include "analysis/Explain/ExplainedRule.h"
#include "workbook/Document.h"
#include "workbook/DocumentResolver.h"

namespace Zorv::Analysis {

/// Explains cells of a document, one after the other.
///
/// Prepares what the rules of a sheet need when the first cell of the sheet asks for it, and keeps
/// it. So one cell costs the conditions on it: a top rule collects the values of its ranges, and no
/// other cell is resolved. Further cells of a sheet share this, and what is the same for every cell
/// in the formulas of rules.
///
/// Ownership: borrows the document, which must outlive it and stay unchanged, and the budget.
/// Threads: one at a time.
class Explainer {
public:
  /// Throws BaseRuntimeError for an unknown locale. `budget`: what the work may cost; null for no
  /// limits.
  Explainer(Workbook::Document const& document, std::string const& localeName,
            DOM::TimeZone const& timeZone, WorkBudget* budget = nullptr);

  /// The account of a position of a sheet, with or without a cell.
  ///
  /// `onlyRule`: the number of a rule of that sheet that is asked for. The others are then left out
  /// of the account, though they still count; and the condition of one that is on the cell but is
  /// not reached is evaluated by itself.
  /// Throws what the budget throws, and for a lack of memory; other failures are in the account.
  [[nodiscard]] CellAccount explain(std::size_t sheet, CellIndex cell,
                                    std::optional<std::size_t> onlyRule = std::nullopt);

private:
  struct PreparedSheet {
    Workbook::SheetResolver resolver;
    std::vector<Workbook::Rule const*> byPriority;
    std::map<Workbook::Rule const*, ExplainedRule> explained;  ///< those that some cell has needed
  };

  PreparedSheet& prepare(std::size_t sheet);
  [[nodiscard]] ExplainedRule& prepareRule(PreparedSheet& sheet, Workbook::Rule const& rule) const;
  [[nodiscard]] RuleAccount explainRule(PreparedSheet& sheet, Workbook::Rule const& rule,
                                        DOM::CellInfo const& cell,
                                        ConditionalFormatters::CellExplanation const& explanation,
                                        Formulas::EvaluationSession& session) const;
  void evaluateByItself(PreparedSheet& sheet, DOM::CellInfo const& cell, RuleAccount& account,
                        Formulas::EvaluationSession& session) const;

  Workbook::Document const& _document;
  WorkBudget* _budget;
  Workbook::DocumentResolver _resolver;
  Formulas::ContextProvider const& _contextProvider;
  std::map<std::size_t, PreparedSheet> _sheets;
  Formulas::LookupCache _lookups;
};

}  // namespace Zorv::Analysis
