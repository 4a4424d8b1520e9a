#include "analysis/Explain/Explainer.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "DOM/SetProperties.h"
#include "Formulas/EvaluationSession.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "OfficeUtils/Moment.h"
#include "OfficeUtils/PinnedMoment.h"
#include "analysis/Explain/NearestRules.h"
#include "analysis/Explain/RuleFormulas.h"
#include "analysis/Explain/VisualExplainer.h"
#include "analysis/Shared/Rules.h"
#include "workbook/OwnStyle.h"
#include "workbook/Widespread.h"
#include "workbook/WidespreadDifference.h"

namespace Zorv::Analysis {

namespace {

namespace CF = ConditionalFormatters;

bool isEvaluated(std::optional<FormatOutcome> outcome) noexcept {
  return outcome == FormatOutcome::Holds || outcome == FormatOutcome::DoesNotHold ||
         outcome == FormatOutcome::Failed;
}

/// The rule that decides a property; null if no rule sets it.
Workbook::Rule const* findDecider(std::string_view property, CF::CellExplanation const& explanation,
                                  Workbook::SheetRules const& rules) {
  for (CF::FormatIndex format = 0; format < explanation.formats.size(); ++format) {
    for (CF::PropertyShare const& share : explanation.formats[format].properties) {
      if (share.name == property && !share.takenBy) {
        return &rules.ruleOf(format);
      }
    }
  }
  return nullptr;
}

void addEffectiveStyle(CF::CellExplanation const& explanation, Workbook::SheetRules const& rules,
                       CellAccount& account) {
  account.conditionalStyle = explanation.style;
  account.effectiveStyle = account.ownStyle;
  if (explanation.style) {
    override(account.effectiveStyle, explanation.style->get());
  }
  DOM::forEachSetProperty(
      account.effectiveStyle, [&](std::string_view name, auto const& /*value*/) {
        account.properties.push_back({name, findDecider(name, explanation, rules)});
      });
}

}  // namespace

Explainer::Explainer(Workbook::Document const& document, std::string const& localeName,
                     DOM::TimeZone const& timeZone, WorkBudget* budget)
    : _document(document),
      _budget(budget),
      _resolver(document, localeName, timeZone),
      _contextProvider(_resolver.getValueProvider().getFormulasContextProvider()) {}

Explainer::PreparedSheet const& Explainer::prepare(std::size_t sheet) {
  auto const found = _sheets.find(sheet);
  if (found != _sheets.end()) {
    return found->second;
  }
  PreparedSheet prepared{_resolver.prepare(sheet), {}};
  for (auto const& rule : _document.getRulesOfSheet(sheet)) {
    prepared.byPriority.push_back(&rule);
  }
  sortByPriority(prepared.byPriority);
  return _sheets.emplace(sheet, std::move(prepared)).first->second;
}

CellAccount Explainer::explain(std::size_t sheet, CellIndex cell,
                               std::optional<std::size_t> onlyRule) {
  OfficeUtils::PinnedMoment const pinned(OfficeUtils::PinnedMoment::readMoment());
  PreparedSheet const& prepared = prepare(sheet);
  auto const info =
      _document.getSheets()[sheet].table->getCellInfo(cell.getRow().get(), cell.getColumn().get());
  Workbook::SheetRules const& rules = prepared.resolver.getRules();
  auto const explanation = prepared.resolver.getTableResolver().explain(info, _budget);
  CellAccount account{.sheet = sheet,
                      .cell = cell,
                      .content = info.getCell(),
                      .ownStyle = Workbook::findOwnStyle(_document, sheet, info)};
  addEffectiveStyle(explanation, rules, account);
  VisualsOfCell const visuals = findVisuals(prepared.resolver.getVisualResolver(), info, _budget);
  account.visuals = visuals.drawn;
  account.visualRules = rules.rulesOf(visuals.drawn);
  for (auto const* rule : prepared.byPriority) {
    bool const isOnCell = isOn(*rule, cell);
    account.rulesElsewhere += isOnCell ? 0 : 1;
    bool const isAskedFor = onlyRule && rule->number == *onlyRule;
    if (onlyRule ? !isAskedFor : !isOnCell) {
      continue;
    }
    auto& entry = account.rules.emplace_back(
        rule->visual != nullptr
            ? VisualExplainer(rules, explanation, visuals, account).explain(*rule)
            : explainRule(prepared, *rule, info, explanation));
    if (isAskedFor && entry.outcome == FormatOutcome::NotReached) {
      evaluateByItself(prepared, info, entry);
    }
    if (!isOnCell) {
      account.nearest = findNearestRules({&rule, 1}, cell, 1);
    }
  }
  if (account.rules.empty()) {
    constexpr std::size_t fewRules = 3;
    account.nearest = findNearestRules(prepared.byPriority, cell, fewRules);
  }
  return account;
}

RuleAccount Explainer::explainRule(PreparedSheet const& sheet, Workbook::Rule const& rule,
                                   DOM::CellInfo const& cell,
                                   CF::CellExplanation const& explanation) const {
  RuleAccount account{.rule = &rule};
  if (rule.format == nullptr) {
    return account;
  }
  auto const& format = explanation.formats[sheet.resolver.getRules().formatOf(rule)];
  account.outcome = format.outcome;
  account.operands = format.operands;
  account.failure = format.failure;
  account.endedBy = format.endedBy ? &sheet.resolver.getRules().ruleOf(*format.endedBy) : nullptr;
  for (CF::PropertyShare const& share : format.properties) {
    account.properties.push_back(
        {share.name, share.takenBy ? &sheet.resolver.getRules().ruleOf(*share.takenBy) : nullptr});
  }
  if (isEvaluated(account.outcome)) {
    addFormulas(sheet, cell, account);
  }
  if (isEvaluated(account.outcome) && !account.failure) {
    addOtherAnswer(sheet, cell, account);
  }
  return account;
}

void Explainer::evaluateByItself(PreparedSheet const& sheet, DOM::CellInfo const& cell,
                                 RuleAccount& account) const {
  try {
    std::size_t const format = sheet.resolver.getRules().formatOf(*account.rule);
    account.holdsByItself = sheet.resolver.getTableResolver().holds(format, cell);
    account.operands = sheet.resolver.getTableResolver().findOperands(format, cell);
    addFormulas(sheet, cell, account);
  } catch (std::bad_alloc const&) {
    throw;
  } catch (WorkEnded const&) {
    throw;
  } catch (std::exception const&) {
    account.failure = std::current_exception();
  }
}

void Explainer::addFormulas(PreparedSheet const& sheet, DOM::CellInfo const& cell,
                            RuleAccount& account) const {
  for (RuleFormula const& formula : listFormulas(*account.rule)) {
    auto traced = trace(sheet, *account.rule, *formula.expr, cell);
    if (!traced.steps.empty() || traced.failure) {
      account.formulas.push_back({formula.written, std::move(traced)});
    }
  }
}

void Explainer::addOtherAnswer(PreparedSheet const& sheet, DOM::CellInfo const& cell,
                               RuleAccount& account) const {
  auto const widespread = Workbook::findWidespread(*account.rule);
  if (!widespread) {
    return;
  }
  auto traced = trace(sheet, *account.rule, widespread->expr, cell);
  if (traced.failure || traced.steps.empty()) {
    return;
  }
  namespace Cast = OfficeUtils::FormulaValueCast;
  bool const holds =
      Cast::toBoolOpt(traced.steps.back().value.value, _contextProvider.getLocaleContext(),
                      Cast::CastMode::Condition, false)
          .value_or(false);
  if (holds != (account.outcome == FormatOutcome::Holds)) {
    FormulaValue const value = cell.getCell() != nullptr ? cell.getCell()->value : FormulaValue();
    account.elsewhere = {
        holds,
        Workbook::explainDifference(account.rule->format->getOperator(), value, account.operands),
        std::move(traced.text)};
  }
}

Formulas::ExprTrace Explainer::trace(PreparedSheet const& sheet, Workbook::Rule const& rule,
                                     DOM::FormulaSyntaxTree::Expr const& expr,
                                     DOM::CellInfo const& cell) const {
  CellIndex const index = cell.getCellIndex();
  CellIndex const base = sheet.resolver.getTableResolver().getFormulaBaseCell(
      sheet.resolver.getRules().formatOf(rule));
  auto const distance = [](auto to, auto from) {
    return static_cast<int>(to.get()) - static_cast<int>(from.get());
  };
  Formulas::Context const context(_contextProvider.getTableContext(cell.getTable()), index.getRow(),
                                  index.getColumn(), boost::none, DOM::RowID(0), DOM::ColumnID(0));
  OfficeUtils::Moment moment(OfficeUtils::PinnedMoment::readMoment());
  Formulas::EvaluationSession session(_lookups, moment);
  session.setBudget(_budget);
  return Formulas::traceExpr(expr, distance(index.getColumn(), base.getColumn()),
                             distance(index.getRow(), base.getRow()), context, _contextProvider,
                             session);
}

}  // namespace Zorv::Analysis
