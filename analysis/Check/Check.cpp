#include "analysis/Check/Check.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <numeric>
#include <tuple>

#include <fmt/format.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "analysis/Check/CheckedSheet.h"
#include "analysis/Check/ConditionFate.h"
#include "analysis/Check/HiddenRules.h"
#include "analysis/Check/OtherAnswers.h"
#include "analysis/Check/ReferenceChecks.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Analysis {

namespace {

void addUnreadableRules(CheckedSheet const& sheet, std::vector<CheckFinding>& findings) {
  for (Workbook::Rule const* const rule : sheet.getAllRules()) {
    if (!rule->isResolved()) {
      findings.push_back({.code = CheckCode::UnreadableRule,
                          .severity = kindOf(CheckCode::UnreadableRule).severity,
                          .sheet = sheet.getIndex(),
                          .ranges = rule->ranges,
                          .rules = {rule->number},
                          .reason = rule->unresolvedReason});
    }
  }
}

void addFates(CheckedSheet const& sheet, Formulas::ContextProvider const& provider,
              StepCounter& steps, std::vector<CheckFinding>& findings) {
  for (CheckedRule const& rule : sheet.getRules()) {
    if (auto const fate = findFate(rule, sheet, provider, steps)) {
      findings.push_back({.code = fate->holds ? CheckCode::AlwaysHolds : CheckCode::NeverHolds,
                          .severity = fate->severity,
                          .sheet = sheet.getIndex(),
                          .ranges = rule.rule->ranges,
                          .rules = {rule.rule->number},
                          .reason = fate->reason});
    }
  }
}

void addUnusedStyles(Workbook::Document const& document, std::vector<CheckFinding>& findings) {
  std::size_t const count = document.getUnusedFormats().size();
  if (count > 0) {
    findings.push_back({.code = CheckCode::UnusedStyles,
                        .severity = kindOf(CheckCode::UnusedStyles).severity,
                        .reason = fmt::format("no rule, table, filter or sort order uses {} of the "
                                              "differential formats, the first of them number {}",
                                              count, document.getUnusedFormats().front())});
  }
}

/// Of a rule that never holds, or always does, it goes without saying that others differ.
void dropExplainedDifferences(std::vector<CheckFinding>& findings) {
  auto const isFate = [](CheckFinding const& finding) {
    return finding.code == CheckCode::NeverHolds || finding.code == CheckCode::AlwaysHolds;
  };
  std::vector<std::size_t> fated;
  for (CheckFinding const& finding : findings) {
    if (isFate(finding)) {
      fated.push_back(finding.rules.front());
    }
  }
  std::ranges::sort(fated);
  std::erase_if(findings, [&](CheckFinding const& finding) {
    return finding.code == CheckCode::DiffersElsewhere &&
           std::ranges::binary_search(fated, finding.rules.front());
  });
}

void sortFindings(std::vector<CheckFinding>& findings) {
  std::ranges::stable_sort(findings, {}, [](CheckFinding const& finding) {
    constexpr auto none = std::numeric_limits<std::size_t>::max();
    return std::tuple(finding.sheet.value_or(none),
                      finding.rules.empty() ? none : finding.rules.front(), finding.code);
  });
}

}  // namespace

std::vector<CheckFinding> check(Workbook::Document const& document, CheckOptions const& options) {
  std::vector<CheckFinding> findings;
  auto values = std::make_unique<Workbook::DocumentValueProvider>(document, options.localeName,
                                                                  options.timeZone);
  Formulas::ContextProvider const& provider = values->getFormulasContextProvider();
  ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(std::move(values));
  StepCounter steps(options.budget);
  std::vector<std::size_t> sheets = options.sheets;
  if (sheets.empty()) {
    sheets.resize(document.getSheets().size());
    std::iota(sheets.begin(), sheets.end(), std::size_t{0});
  }
  for (std::size_t const index : sheets) {
    CheckedSheet const sheet(document, index);
    addUnreadableRules(sheet, findings);
    addMissingReferences(sheet, findings);
    addFates(sheet, provider, steps, findings);
    addHiddenRules(sheet, provider, steps, findings);
    addRepeatedRules(sheet, steps, findings);
    addMovingReferences(sheet, steps, findings);
    addCostlyRules(sheet, steps, findings);
    addOtherAnswers(sheet, calculator, provider, options.budget, findings);
  }
  if (options.sheets.empty()) {
    addUnusedStyles(document, findings);
  }
  dropExplainedDifferences(findings);
  sortFindings(findings);
  return findings;
}

}  // namespace Zorv::Analysis
