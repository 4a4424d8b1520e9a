#include "analysis/Check/OtherAnswers.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/A1Notation.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/LookupCache.h"
#include "analysis/Shared/CellFormula.h"
#include "workbook/Ranges.h"
#include "workbook/Widespread.h"
#include "workbook/WidespreadDifference.h"

namespace Zorv::Analysis {

namespace {

namespace CF = ConditionalFormatters;

/// A number of cells, and the first of them.
struct CellCount {
  std::uint64_t count = 0;
  std::optional<CellIndex> first;

  void add(CellIndex cell) {
    ++count;
    first = first ? first : cell;
  }

  /// `3 cells, first B7`
  [[nodiscard]] std::string describe() const {
    return fmt::format("{} cell{}, first {}", count, count == 1 ? "" : "s",
                       DOM::A1Notation::toAddress(*first));
  }
};

std::string messageOf(std::exception_ptr const& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (std::exception const& error) {
    return error.what();
  }
}

FormulaValue valueOf(DOM::CellInfo const& cell) {
  DOM::Cell const* const found = cell.getCell();
  return found == nullptr ? FormulaValue() : found->value;
}

/// Compares the answers of the two semantics, rule by rule.
class AnswerComparison {
public:
  AnswerComparison(CheckedSheet const& sheet,
                   CF::ConditionalFormattingPropsCalculator const& calculator,
                   Formulas::ContextProvider const& provider, WorkBudget* budget,
                   std::vector<CheckFinding>& findings)
      : _sheet(sheet),
        _resolver(calculator.prepare(sheet.getDocument().getStyles(), sheet.getTable())),
        _provider(provider),
        _budget(budget),
        _session(_lookups),
        _findings(findings) {
    _session.setBudget(budget);
  }

  void compare(std::size_t format) {
    CheckedRule const& rule = _sheet.getRules()[format];
    auto const widespread = Workbook::findWidespread(*rule.rule);
    std::optional<CellFormula> other;
    if (widespread) {
      other.emplace(_provider, _sheet.getTable(), widespread->expr,
                    Workbook::findBaseCell(rule.rule->ranges), _session);
    }
    CellCount failed;
    CellCount different;
    std::exception_ptr failure;
    _resolver.visitVerdicts(format, makePass(rule), [&](CF::CellVerdict const& verdict) {
      CellIndex const cell = verdict.cellInfo.getCellIndex();
      if (verdict.failure != nullptr) {
        failed.add(cell);
        failure = failure ? failure : verdict.failure->exception;
      } else if (other && isTrueAt(*other, cell) != verdict.holds) {
        different.add(cell);
      }
    });
    if (failed.count > 0) {
      add(rule, CheckCode::FailingFormula,
          fmt::format("{}: {}", failed.describe(), messageOf(failure)));
    }
    if (different.count > 0) {
      add(rule, CheckCode::DiffersElsewhere, describe(format, different));
    }
  }

private:
  /// The positions of a rule's ranges inside the used range, or the existing cells.
  [[nodiscard]] CF::TablePass makePass(CheckedRule const& rule) const {
    constexpr std::uint64_t mostPositions = 5'000'000;
    CF::TablePass pass{.range = _sheet.getUsedRange(),
                       .positions = CF::TablePass::Positions::Areas,
                       .onFailure = CF::TablePass::OnFailure::Skip,
                       .areas = rule.rule->ranges,
                       .budget = _budget};
    if (CF::TableResolver::countPositions(pass) > mostPositions) {
      pass.positions = CF::TablePass::Positions::Existing;
    }
    return pass;
  }

  /// A formula that meets a limit of the engine has no answer to compare with.
  [[nodiscard]] static bool isTrueAt(CellFormula& formula, CellIndex cell) {
    try {
      return formula.isTrueAt(cell);
    } catch (Formulas::EvaluationLimitError const&) {
      return false;
    }
  }

  [[nodiscard]] std::string describe(std::size_t format, CellCount const& different) const {
    CellIndex const first = *different.first;
    auto const cell = _sheet.getTable().getCellInfo(first.getRow().get(), first.getColumn().get());
    return fmt::format(
        "{}: {}", different.describe(),
        Workbook::explainDifference(_sheet.getRules()[format].getCondition(), valueOf(cell),
                                    _resolver.findOperands(format, cell)));
  }

  void add(CheckedRule const& rule, CheckCode code, std::string reason) {
    _findings.push_back({.code = code,
                         .severity = kindOf(code).severity,
                         .sheet = _sheet.getIndex(),
                         .ranges = rule.rule->ranges,
                         .rules = {rule.rule->number},
                         .reason = std::move(reason)});
  }

  CheckedSheet const& _sheet;
  CF::TableResolver _resolver;
  Formulas::ContextProvider const& _provider;
  WorkBudget* _budget;
  Formulas::LookupCache _lookups;
  Formulas::EvaluationSession _session;
  std::vector<CheckFinding>& _findings;
};

}  // namespace

void addOtherAnswers(CheckedSheet const& sheet,
                     CF::ConditionalFormattingPropsCalculator const& calculator,
                     Formulas::ContextProvider const& provider, WorkBudget* budget,
                     std::vector<CheckFinding>& findings) {
  if (sheet.getRules().empty() || sheet.getUsedRange().isEmpty()) {
    return;
  }
  AnswerComparison comparison(sheet, calculator, provider, budget, findings);
  for (std::size_t format = 0; format < sheet.getRules().size(); ++format) {
    comparison.compare(format);
  }
}

}  // namespace Zorv::Analysis
