#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "DOM/A1Notation.h"
#include "OfficeUtils/PinnedMoment.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/SheetRules.h"
#include "tool/Text/TextTable.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Tool {

namespace {

namespace CF = ConditionalFormatters;

/// Other programs format empty positions somewhat beyond the last cells, too.
constexpr unsigned long margin = 10;

void printVerdicts(Workbook::Rule const& rule, std::size_t format,
                   CF::TableResolver const& resolver, Selection const& selection, std::ostream& out,
                   Report& report) {
  auto const sheetName = toPrintable(selection.getDocument().getSheets()[rule.sheet].name);
  CF::TablePass pass{.range = selection.getBounds(rule.sheet, margin),
                     .positions = CF::TablePass::Positions::All,
                     .onFailure = CF::TablePass::OnFailure::Skip};
  if (auto const count = resolver.countFormatted(format, pass.range); count > mostPositions) {
    report.saySparse(rule.sheet, count);
    pass.positions = CF::TablePass::Positions::Existing;
  }
  resolver.visitVerdicts(format, pass, [&](CF::CellVerdict const& verdict) {
    auto const cell = verdict.cellInfo.getCellIndex();
    if (verdict.failure != nullptr) {
      report.sayFailure(rule, cell, verdict.failure->exception);
    } else {
      out << fmt::format("{}\t{}\t{}\t{}\t{}\n", sheetName, DOM::A1Notation::toAddress(cell),
                         rule.number, rule.type, verdict.holds ? 1 : 0);
    }
  });
}

/// The selected and resolved rules of a sheet.
std::vector<Workbook::Rule const*> findRules(Selection const& selection, std::size_t sheet) {
  auto rules = selection.getRules();
  std::erase_if(rules, [sheet](Workbook::Rule const* rule) {
    return rule->sheet != sheet || rule->format == nullptr;
  });
  return rules;
}

}  // namespace

ExitStatus runVerdicts(Selection const& selection, std::ostream& out, Report& report) {
  auto const& document = selection.getDocument();
  auto const& options = selection.getOptions();
  ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<Workbook::DocumentValueProvider>(document, options.localeName,
                                                        options.timeZone));
  OfficeUtils::PinnedMoment const pinned(options.now);  // one for all verdicts
  out << "sheet\tcell\trule\tkind\tholds\n";
  // Rules are numbered sheet by sheet.
  for (auto const index : selection.getSheets()) {
    auto const& table = *document.getSheets()[index].table;
    auto const rules = findRules(selection, index);
    auto const resolver = calculator.prepare(document.getStyles(), table);
    SheetRules const sheetRules(document, index, calculator.getConditionalFormatRefs(table));
    for (auto const* rule : rules) {
      printVerdicts(*rule, sheetRules.formatOf(*rule), resolver, selection, out, report);
    }
  }
  return ExitStatus::Success;
}

}  // namespace Zorv::Tool
