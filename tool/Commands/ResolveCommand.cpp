#include <memory>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "analysis/Shared/SheetRules.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/CoveredAreas.h"
#include "tool/Output/ResolveOutput.h"
#include "workbook/DocumentValueProvider.h"

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
        _calculator(std::make_unique<Workbook::DocumentValueProvider>(
            context.selection.getDocument(), context.selection.getOptions().localeName,
            context.selection.getOptions().timeZone)) {}

  void resolveSheet(std::size_t index) {
    auto const& document = _context.selection.getDocument();
    auto const& sheet = document.getSheets()[index];
    Analysis::SheetRules const rules(document, index,
                                     _calculator.getConditionalFormatRefs(*sheet.table));
    auto const resolver = _calculator.prepare(document.getStyles(), *sheet.table);
    auto const pass = makePass(index);

    _output.beginSheet(sheet);
    auto const usedRows = sheet.table->getUsedRows();
    _progress.begin(sheet.name, usedRows.second - usedRows.first);
    resolver.visit(pass, [&](CF::ResolvedCell const& cell) {
      auto const row = cell.cellInfo.getRowIndex();
      _progress.show(row < usedRows.first ? 0 : row - usedRows.first);
      // A pass over existing cells alone also visits what lies between the selected ranges.
      if (_context.selection.contains(index, cell.cellInfo.getCellIndex())) {
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

  void add(CF::ResolvedCell const& cell, Analysis::SheetRules const& rules) {
    if (cell.failure != nullptr) {
      _context.report.addFailure(rules.ruleOf(cell.failure->format), cell.cellInfo.getCellIndex(),
                                 cell.failure->exception);
    } else if (cell.style) {
      _deciding.clear();
      for (auto const format : cell.formats) {
        _deciding.push_back(&rules.ruleOf(format));
      }
      _output.add({cell.cellInfo, cell.style, _deciding});
    }
  }

  CommandContext const& _context;
  ResolveOutput& _output;
  ProgressBar& _progress;
  CF::ConditionalFormattingPropsCalculator _calculator;
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
