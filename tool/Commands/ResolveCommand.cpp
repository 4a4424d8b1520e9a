#include <exception>
#include <memory>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/SheetRules.h"
#include "tool/Output/ResolveOutput.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Tool {

namespace {

namespace CF = ConditionalFormatters;

/// Resolves a selection sheet by sheet, and passes the cells to an output.
class Resolver {
public:
  Resolver(Selection const& selection, Report& report, ResolveOutput& output, ProgressBar& progress)
      : _selection(selection),
        _report(report),
        _output(output),
        _progress(progress),
        _calculator(std::make_unique<Workbook::DocumentValueProvider>(
            selection.getDocument(), selection.getOptions().localeName,
            selection.getOptions().timeZone)) {}

  void resolveSheet(std::size_t index) {
    auto const& document = _selection.getDocument();
    auto const& sheet = document.getSheets()[index];
    SheetRules const rules(document, index, _calculator.getConditionalFormatRefs(*sheet.table));
    auto const resolver = _calculator.prepare(document.getStyles(), *sheet.table);
    CF::TablePass pass{.range = _selection.getBounds(index),
                       .positions = CF::TablePass::Positions::Formatted,
                       .threadCount = _selection.getOptions().threadCount,
                       .onFailure = CF::TablePass::OnFailure::Skip};
    if (auto const count = resolver.countFormatted(pass.range); count > mostPositions) {
      _report.saySparse(index, count);
      pass.positions = CF::TablePass::Positions::Existing;
    }

    _output.beginSheet(sheet);
    _progress.begin(sheet.name, pass.range.endRow - pass.range.firstRow);
    resolver.visit(pass, [&](CF::ResolvedCell const& cell) {
      _progress.show(cell.cellInfo.getRowIndex() - pass.range.firstRow);
      add(cell, rules);
    });
    _progress.clear();
  }

private:
  void add(CF::ResolvedCell const& cell, SheetRules const& rules) {
    if (cell.failure != nullptr) {
      _progress.clear();
      _report.sayFailure(rules.ruleOf(cell.failure->format), cell.cellInfo.getCellIndex(),
                         cell.failure->exception);
    } else if (cell.style) {
      std::vector<Workbook::Rule const*> deciding;
      deciding.reserve(cell.formats.size());
      for (auto const format : cell.formats) {
        deciding.push_back(&rules.ruleOf(format));
      }
      _output.add({cell.cellInfo, cell.style, std::move(deciding)});
    }
  }

  Selection const& _selection;
  Report& _report;
  ResolveOutput& _output;
  ProgressBar& _progress;
  CF::ConditionalFormattingPropsCalculator _calculator;
};

}  // namespace

ExitStatus runResolve(Selection const& selection, std::ostream& out, Report& report,
                      ProgressBar& progress) {
  auto const& options = selection.getOptions();
  OfficeUtils::LocaleContext const locale(options.localeName,
                                          selection.getDocument().getDateSystem());
  auto const output = options.format == OutputFormat::Json ? makeResolveJson(selection, out)
                                                           : makeResolveTable(locale, out);
  Resolver resolver(selection, report, *output, progress);
  for (auto const sheet : selection.getSheets()) {
    resolver.resolveSheet(sheet);
  }
  output->finish();
  return report.getFailureCount() == 0 ? ExitStatus::Success : ExitStatus::BadFile;
}

}  // namespace Zorv::Tool
