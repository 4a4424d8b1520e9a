#include <algorithm>

#include "analysis/Check/Check.h"
#include "tool/Commands/Commands.h"
#include "tool/Output/CheckOutput.h"

namespace Zorv::Tool {

namespace {

using Analysis::CheckFinding;
using Analysis::Severity;

/// The findings about rules that the options select; those about the workbook as a whole if they
/// select all of it.
std::vector<CheckFinding> findSelected(CommandContext const& context) {
  Selection const& selection = context.selection;
  Options const& options = selection.getOptions();
  bool const isAll = options.sheets.empty() && options.ranges.empty();
  auto findings =
      Analysis::check(selection.getDocument(),
                      {.localeName = options.localeName,
                       .timeZone = options.timeZone,
                       .budget = &context.budget,
                       .sheets = isAll ? std::vector<std::size_t>() : selection.getSheets()});
  std::vector<std::size_t> numbers;
  for (Workbook::Rule const* const rule : selection.getRules()) {
    numbers.push_back(rule->number);
  }
  std::erase_if(findings, [&](CheckFinding const& finding) {
    return !finding.rules.empty() && std::ranges::none_of(finding.rules, [&](std::size_t number) {
      return std::ranges::binary_search(numbers, number);
    });
  });
  return findings;
}

}  // namespace

void runCheck(CommandContext const& context) {
  auto const findings = findSelected(context);
  switch (context.selection.getOptions().format) {
    case OutputFormat::Json:
      printCheckJson(context.selection, context.report, findings, context.out);
      break;
    case OutputFormat::JsonLines:
      printCheckJsonLines(context.selection, findings, context.out);
      break;
    case OutputFormat::Sarif:
      printCheckSarif(context.selection, context.report, findings, context.out);
      break;
    default:
      printCheckText(context.selection, findings, context.terminal, context.out);
  }
  context.report.setChecked({.errors = countFindings(findings, Severity::Error),
                             .warnings = countFindings(findings, Severity::Warning),
                             .notes = countFindings(findings, Severity::Note)});
}

}  // namespace Zorv::Tool
