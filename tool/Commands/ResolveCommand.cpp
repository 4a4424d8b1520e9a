#include <memory>
#include <span>
#include <vector>

#include "tool/Commands/Commands.h"
#include "tool/Commands/CoveredAreas.h"
#include "tool/Output/ResolveOutput.h"
#include "workbook/DocumentResolver.h"

namespace Zorv::Tool {

namespace {

namespace CF = ConditionalFormatters;

/// Resolves a selection sheet by sheet, and passes the cells to an output.
class Resolver {
public:
  Resolver(CommandContext const& context, ResolveOutput& output, ProgressBar& progress)
      : _context(context),
        _output(output),
        _progress(progress),
        _resolver(context.selection.getDocument(), context.selection.getOptions().localeName,
                  context.selection.getOptions().timeZone) {}

  void resolveSheet(std::size_t index) {
    auto const& sheet = _context.selection.getDocument().getSheets()[index];
    auto const resolver = _resolver.prepare(index);
    auto const pass = makePass(index);

    _output.beginSheet(sheet);
    auto const usedRows = sheet.table->getUsedRows();
    _progress.begin(sheet.name, usedRows.second - usedRows.first);
    resolver.getVisualResolver().visit(pass, [&](Visuals::VisualCell const& cell) {
      auto const& cellInfo = cell.resolved.cellInfo;
      auto const row = cellInfo.getRowIndex();
      _progress.show(row < usedRows.first ? 0 : row - usedRows.first);
      // A pass over existing cells alone also visits what lies between the selected ranges.
      if (_context.selection.contains(index, cellInfo.getCellIndex())) {
        add(cell, resolver.getRules());
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

  void add(Visuals::VisualCell const& cell, Workbook::SheetRules const& rules) {
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
  Workbook::DocumentResolver _resolver;
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
