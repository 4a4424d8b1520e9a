#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "DOM/A1Notation.h"
#include "OfficeUtils/PinnedMoment.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/CoveredAreas.h"
#include "tool/Commands/SheetRules.h"
#include "tool/Text/Printable.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Tool {

namespace {

namespace CF = ConditionalFormatters;

/// Other programs format empty positions somewhat beyond the last cells, too.
constexpr unsigned long margin = 10;

/// The texts of a verdict's line that are the same for all cells.
struct LineTexts {
  std::string front;       ///< the sheet's name
  std::string endIfHolds;  ///< from behind the address on
  std::string endIfNot;
};

LineTexts makeLineTexts(Workbook::Document const& document, Workbook::Rule const& rule) {
  auto const end = fmt::format("\t{}\t{}\t", rule.number, toPrintable(rule.type));
  return {.front = toPrintable(document.getSheets()[rule.sheet].name) + '\t',
          .endIfHolds = end + "1\n",
          .endIfNot = end + "0\n"};
}

void printVerdicts(CommandContext const& context, Workbook::Rule const& rule, std::size_t format,
                   CF::TableResolver const& resolver, CF::TablePass const& pass) {
  auto const texts = makeLineTexts(context.selection.getDocument(), rule);
  resolver.visitVerdicts(format, pass, [&](CF::CellVerdict const& verdict) {
    auto const cell = verdict.cellInfo.getCellIndex();
    if (!context.selection.contains(rule.sheet, cell)) {
      return;
    }
    if (verdict.failure != nullptr) {
      context.report.addFailure(rule, cell, verdict.failure->exception);
      return;
    }
    auto& line = context.out.text();
    line += texts.front;
    line += DOM::A1Notation::toAddress(cell);
    line += verdict.holds ? texts.endIfHolds : texts.endIfNot;
    context.out.endEntry();
  });
}

void printSheet(CommandContext const& context, std::size_t sheet,
                CF::ConditionalFormattingPropsCalculator const& calculator) {
  auto const& document = context.selection.getDocument();
  auto const& table = *document.getSheets()[sheet].table;
  auto const resolver = calculator.prepare(document.getStyles(), table);
  SheetRules const rules(document, sheet, calculator.getConditionalFormatRefs(table));
  CoveredAreas areas(context.selection, sheet, margin);
  for (auto const* rule : context.selection.getResolvedRules(sheet)) {
    auto pass = areas.makePass({&rule, 1});
    pass.budget = &context.budget;
    printVerdicts(context, *rule, rules.formatOf(*rule), resolver, pass);
  }
  areas.sayLeftOut(context.report);
}

}  // namespace

void runVerdicts(CommandContext const& context) {
  auto const& options = context.selection.getOptions();
  ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<Workbook::DocumentValueProvider>(context.selection.getDocument(),
                                                        options.localeName, options.timeZone));
  OfficeUtils::PinnedMoment const pinned(options.now);  // one for all verdicts
  context.out.text() += "sheet\tcell\trule\tkind\tholds\n";
  try {
    // Rules are numbered sheet by sheet.
    for (auto const sheet : context.selection.getSheets()) {
      printSheet(context, sheet, calculator);
    }
  } catch (...) {
    context.report.setIncomplete();
    throw;
  }
}

}  // namespace Zorv::Tool
