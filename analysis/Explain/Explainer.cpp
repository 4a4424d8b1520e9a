#include "analysis/Explain/Explainer.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "DOM/SetProperties.h"
#include "OfficeUtils/Moment.h"
#include "OfficeUtils/PinnedMoment.h"
#include "analysis/Explain/NearestRules.h"
#include "analysis/Explain/VisualExplainer.h"
#include "analysis/Shared/Rules.h"
#include "workbook/OwnStyle.h"

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

Explainer::PreparedSheet& Explainer::prepare(std::size_t sheet) {
  auto const found = _sheets.find(sheet);
  if (found != _sheets.end()) {
    return found->second;
  }
  PreparedSheet prepared{_resolver.prepare(sheet), {}, {}};
  for (auto const& rule : _document.getRulesOfSheet(sheet)) {
    prepared.byPriority.push_back(&rule);
  }
  sortByPriority(prepared.byPriority);
  return _sheets.emplace(sheet, std::move(prepared)).first->second;
}

ExplainedRule& Explainer::prepareRule(PreparedSheet& sheet, Workbook::Rule const& rule) const {
  auto const found = sheet.explained.find(&rule);
  if (found != sheet.explained.end()) {
    return found->second;
  }
  CellIndex const baseCell = sheet.resolver.getTableResolver().getFormulaBaseCell(
      sheet.resolver.getRules().formatOf(rule));
  return sheet.explained.try_emplace(&rule, rule, baseCell, _contextProvider).first->second;
}

CellAccount Explainer::explain(std::size_t sheet, CellIndex cell,
                               std::optional<std::size_t> onlyRule) {
  OfficeUtils::PinnedMoment const pinned(OfficeUtils::PinnedMoment::readMoment());
  PreparedSheet& prepared = prepare(sheet);
  OfficeUtils::Moment moment(OfficeUtils::PinnedMoment::readMoment());
  Formulas::EvaluationSession session(_lookups, moment);
  session.setBudget(_budget);
  auto const info =
      _document.getSheets()[sheet].table->getCellInfo(cell.getRow().get(), cell.getColumn().get());
  Workbook::SheetRules const& rules = prepared.resolver.getRules();
  auto const explanation = prepared.resolver.getTableResolver().explain(info, _budget);
  CellAccount account{.sheet = sheet,
                      .cell = cell,
                      .content = info.getCell(),
                      .ownStyle = Workbook::findOwnStyle(_document, sheet, info)};
  addEffectiveStyle(explanation, rules, account);
  // To find visuals resolves the cell once more.
  bool const hasVisuals = !_document.getSheets()[sheet].visualFormats.empty();
  VisualsOfCell const visuals =
      hasVisuals ? findVisuals(prepared.resolver.getVisualResolver(), info, _budget)
                 : VisualsOfCell();
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
            : explainRule(prepared, *rule, info, explanation, session));
    if (isAskedFor && entry.outcome == FormatOutcome::NotReached) {
      evaluateByItself(prepared, info, entry, session);
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

RuleAccount Explainer::explainRule(PreparedSheet& sheet, Workbook::Rule const& rule,
                                   DOM::CellInfo const& cell,
                                   CF::CellExplanation const& explanation,
                                   Formulas::EvaluationSession& session) const {
  RuleAccount account{.rule = &rule};
  if (rule.format == nullptr) {
    return account;
  }
  Workbook::SheetRules const& rules = sheet.resolver.getRules();
  auto const& format = explanation.formats[rules.formatOf(rule)];
  account.outcome = format.outcome;
  account.operands = format.operands;
  account.failure = format.failure;
  account.endedBy = format.endedBy ? &rules.ruleOf(*format.endedBy) : nullptr;
  for (CF::PropertyShare const& share : format.properties) {
    account.properties.push_back(
        {share.name, share.takenBy ? &rules.ruleOf(*share.takenBy) : nullptr});
  }
  if (isEvaluated(account.outcome)) {
    ExplainedRule& explained = prepareRule(sheet, rule);
    account.formulas = explained.traceFormulas(cell, session);
    if (!account.failure) {
      account.elsewhere = explained.findOtherAnswer(account.outcome == FormatOutcome::Holds,
                                                    account.operands, cell, session);
    }
  }
  return account;
}

void Explainer::evaluateByItself(PreparedSheet& sheet, DOM::CellInfo const& cell,
                                 RuleAccount& account, Formulas::EvaluationSession& session) const {
  try {
    std::size_t const format = sheet.resolver.getRules().formatOf(*account.rule);
    account.holdsByItself = sheet.resolver.getTableResolver().holds(format, cell);
    account.operands = sheet.resolver.getTableResolver().findOperands(format, cell);
    account.formulas = prepareRule(sheet, *account.rule).traceFormulas(cell, session);
  } catch (std::bad_alloc const&) {
    throw;
  } catch (WorkEnded const&) {
    throw;
  } catch (std::exception const&) {
    account.failure = std::current_exception();
  }
}

}  // namespace Zorv::Analysis
