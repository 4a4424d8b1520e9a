#include <memory>
#include <numeric>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "tool/Commands.h"
#include "tool/PositionUnion.h"
#include "tool/ResolveOutput.h"
#include "tool/SheetConditions.h"
#include "tool/SheetPass.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Tool {

namespace {

/// Hands the cells of one selection, sheet by sheet, to an output.
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
    auto const& sheet = _selection.getDocument().getSheets()[index];
    auto const& formatRefs = _calculator.getConditionalFormatRefs(*sheet.table);
    auto const styles = _calculator.prepare(_selection.getDocument().getStyles(), *sheet.table);
    SheetConditions const conditions(
        styles, formatRefs, rulesOf(index),
        [this](Workbook::Rule const& rule, DOM::CellInfo const& cell, char const* problem) {
          _progress.clear();
          _report.sayFailure(rule, cell.getCellIndex(), problem);
        });
    SheetPass pass(*sheet.table, styles, conditions, _output, _progress);

    _output.beginSheet(sheet);
    auto const positions = positionsOf(formatRefs, index);
    if (positions.size() <= mostPositions) {
      resolveRanges(sheet, positions.cover(), SheetPass::Positions::All, pass);
    } else {
      _report.saySparse(index, positions.size());
      resolveRanges(sheet, {_selection.getBounds(index)}, SheetPass::Positions::Existing, pass);
    }
  }

private:
  void resolveRanges(Workbook::Sheet const& sheet, std::vector<TableRange> const& ranges,
                     SheetPass::Positions positions, SheetPass& pass) {
    _progress.begin(sheet.name, std::accumulate(ranges.begin(), ranges.end(), std::uint64_t{0},
                                                [](std::uint64_t rows, TableRange const& range) {
                                                  return rows + range.endRow - range.firstRow;
                                                }));
    for (auto const& range : ranges) {
      pass.resolve(range, positions, _selection.getOptions().threadCount);
    }
    _progress.clear();
  }

  PositionUnion positionsOf(ConditionalFormatters::ConditionalFormatRefs const& formatRefs,
                            std::size_t sheet) const {
    std::vector<TableRange> ranges;
    for (auto const& formatRef : formatRefs) {
      ranges.insert(ranges.end(), formatRef.first.begin(), formatRef.first.end());
    }
    return {ranges, _selection.getBounds(sheet)};
  }

  /// All rules of a sheet: those that the selection leaves out are still those of the calculator.
  std::vector<Workbook::Rule const*> rulesOf(std::size_t sheet) const {
    std::vector<Workbook::Rule const*> rules;
    for (auto const& rule : _selection.getDocument().getRules()) {
      if (rule.sheet == sheet) {
        rules.push_back(&rule);
      }
    }
    return rules;
  }

  Selection const& _selection;
  Report& _report;
  ResolveOutput& _output;
  ProgressBar& _progress;
  ConditionalFormatters::ConditionalFormattingPropsCalculator _calculator;
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
