#include <memory>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "analysis/Shared/SheetRules.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/CoveredAreas.h"
#include "tool/Output/ResolveOutput.h"
#include "visuals/VisualResolver.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Tool {

namespace {

namespace CF = ConditionalFormatters;

std::unique_ptr<CF::ValueContextProvider> makeProvider(Selection const& selection) {
  return std::make_unique<Workbook::DocumentValueProvider>(
      selection.getDocument(), selection.getOptions().localeName, selection.getOptions().timeZone);
}

/// Resolves a selection sheet by sheet, and passes the cells to an output.
class Resolver {
public:
  Resolver(CommandContext const& context, ResolveOutput& output, ProgressBar& progress)
      : _context(context),
        _output(output),
        _progress(progress),
        _calculator(makeProvider(context.selection)),
        _visualValues(makeProvider(context.selection)) {}

  void resolveSheet(std::size_t index) {
    auto const& document = _context.selection.getDocument();
    auto const& sheet = document.getSheets()[index];
    Analysis::SheetRules const rules(document, index,
                                     _calculator.getConditionalFormatRefs(*sheet.table));
    auto const resolver = _calculator.prepare(document.getStyles(), *sheet.table);
    Visuals::VisualResolver const visuals(
        {.table = *sheet.table,
         .formats = sheet.visualFormats,
         .provider = *_visualValues,
         .conditionalFormats = _calculator.getConditionalFormatRefs(*sheet.table),
         .resolver = resolver,
         .styles = document.getStyles()});
    auto const pass = makePass(index);

    _output.beginSheet(sheet);
    auto const usedRows = sheet.table->getUsedRows();
    _progress.begin(sheet.name, usedRows.second - usedRows.first);
    visuals.visit(pass, [&](Visuals::VisualCell const& cell) {
      auto const& cellInfo = cell.resolved.cellInfo;
      auto const row = cellInfo.getRowIndex();
      _progress.show(row < usedRows.first ? 0 : row - usedRows.first);
      // A pass over existing cells alone also visits what lies between the selected ranges.
      if (_context.selection.contains(index, cellInfo.getCellIndex())) {
        add(cell, rules);
      }
    });
    _progress.clear();
  }

private:
  CF::TablePass makePass(std::size_t sheet) {
    CoveredAreas areas(_context.selection, sheet, 0);
    auto pass = areas.makePass(_context.selection.getResolvedRules(sheet));
    areas.sayLeftOut(_context.report);
    pass.threadCount = _context.selection.getOptions().threadCount;
    pass.budget = &_context.budget;
    return pass;
  }

  void add(Visuals::VisualCell const& cell, Analysis::SheetRules const& rules) {
    auto const& resolved = cell.resolved;
    auto const position = resolved.cellInfo.getCellIndex();
    if (resolved.failure != nullptr) {
      _context.report.addFailure(rules.ruleOf(resolved.failure->format), position,
                                 resolved.failure->exception);
      return;
    }
    if (cell.failure != nullptr) {
      _context.report.addFailure(rules.ruleOfVisual(cell.failure->format), position,
                                 cell.failure->exception);
    }
    if (resolved.style || !cell.visuals.isEmpty()) {
      auto const visualRules = rules.rulesOf(cell.visuals);
      rules.listDeciding(resolved.formats, visualRules, _deciding);
      _output.add({resolved.cellInfo, resolved.style, _deciding, cell.visuals, visualRules});
    }
  }

  CommandContext const& _context;
  ResolveOutput& _output;
  ProgressBar& _progress;
  CF::ConditionalFormattingPropsCalculator _calculator;
  std::unique_ptr<CF::ValueContextProvider> _visualValues;
  std::vector<Workbook::Rule const*> _deciding;
};

std::unique_ptr<ResolveOutput> makeOutput(CommandContext const& context,
                                          OfficeUtils::LocaleContext const& locale) {
  switch (context.selection.getOptions().format) {
    case OutputFormat::Json:
      return makeResolveJson(context.selection, locale, context.report, context.out);
    case OutputFormat::JsonLines:
      return makeResolveJsonLines(context.selection, locale, context.out);
    case OutputFormat::Csv:
    case OutputFormat::Tsv:
      return makeResolveFields(context.selection, locale, context.isFirstFile, context.out);
    default:
      return makeResolveTable(locale, context.terminal, context.out);
  }
}

}  // namespace

void runResolve(CommandContext const& context, ProgressBar& progress) {
  auto const& options = context.selection.getOptions();
  OfficeUtils::LocaleContext const locale(options.localeName,
                                          context.selection.getDocument().getDateSystem());
  auto const output = makeOutput(context, locale);
  try {
    Resolver resolver(context, *output, progress);
    for (auto const sheet : context.selection.getSheets()) {
      resolver.resolveSheet(sheet);
    }
  } catch (...) {
    progress.clear();
    context.report.setIncomplete();
    output->finish();
    throw;
  }
  output->finish();
}

}  // namespace Zorv::Tool
